#include "fields/scan/ScanCheck.h"

#include <string>
#include <utility>

#include "fields/scan/SymbolCheck.h"
#include "foundation/Log.h"

namespace ZplCore {

namespace {

LogTopic TopicOf(ScanVerdict const& verdict, bool isCut) {
    if (isCut) return LogTopic::BarcodeCut;
    return verdict.isFault ? LogTopic::BarcodeUnreadable : LogTopic::BarcodeDoubtful;
}

}  // namespace

void JudgeBarcodes(FieldMap& map, ScannedLabel const& label, SymbolBoxes& boxes) {
    // Each verdict looks for who stands in the way among all fields.
    constexpr unsigned MostVerdicts = 250;
    auto const place = Log::Place();
    unsigned verdicts = 0;
    SymbolBoxes const before = std::exchange(boxes, {});
    for (std::size_t i = 0; i < map.Fields().size(); ++i) {
        auto const& field = map.Fields()[i];
        if (!field.symbol) continue;
        bool const stands = boxes.size() < before.size() && before[boxes.size()] == field.ink.image;
        boxes.push_back(field.ink.image);
        bool const isNew = !label.isToldBlank && (label.isFirstCopy || !stands);
        SymbolCheck check(map, i, label.pageDpi, isNew ? map.Reader() : nullptr);
        auto verdict = check.Judge();
        Log::SetPlace(field.place);
        if (check.IsUnknownToReader())
            Log::Report(LogTopic::BarcodeNotRead, "a symbol of " + std::string(field.symbol->symbology) +
                                                      " is not read back: no reader knows it");
        if (!verdict) continue;
        if (++verdicts > MostVerdicts) {
            Log::Report(LogTopic::Limit, "more than " + std::to_string(MostVerdicts) +
                                             " barcodes of the label may not scan; the rest is not looked at");
            break;
        }
        if (isNew) Log::Report(TopicOf(*verdict, check.IsCut()), verdict->text);
        map.Judge(i, std::move(*verdict));
    }
    Log::SetPlace(place);
}

std::string MarksOfBarcodes(FieldMap const& map) {
    std::string marks;
    for (auto const& field : map.Fields()) {
        if (!field.verdict) continue;
        auto const box = map.Gauge().OnPage(field.ink.image);
        marks += field.verdict->isFault ? "fault" : "doubt";
        for (int const number : {box.left, box.top, box.Width(), box.Height()}) marks += ' ' + std::to_string(number);
        marks += ';';
    }
    return marks;
}

}  // namespace ZplCore
