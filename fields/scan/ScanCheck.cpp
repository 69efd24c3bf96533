#include "fields/scan/ScanCheck.h"

#include <utility>

#include "fields/scan/SymbolCheck.h"
#include "fields/scan/Symbologies.h"
#include "foundation/Log.h"

namespace ZplCore {

namespace {

LogTopic TopicOf(ScanVerdict const& verdict, bool isCut) {
    if (isCut) return LogTopic::BarcodeCut;
    return verdict.isFault ? LogTopic::BarcodeUnreadable : LogTopic::BarcodeDoubtful;
}

}  // namespace

void JudgeBarcodes(FieldMap& map, ScannedLabel const& label) {
    auto const before = Log::Place();
    for (std::size_t i = 0; i < map.Fields().size(); ++i) {
        auto const& field = map.Fields()[i];
        if (!field.symbol || !RuleOf(field.symbol->symbology)) continue;
        SymbolCheck check(map, i, label.pageDpi);
        auto verdict = check.Judge();
        if (!verdict) continue;
        if (!label.isToldBlank && (label.isFirstCopy || !map.StandsAsBefore(i))) {
            Log::SetPlace(field.place);
            Log::Report(TopicOf(*verdict, check.IsCut()), verdict->text);
        }
        map.Judge(i, std::move(*verdict));
    }
    Log::SetPlace(before);
}

}  // namespace ZplCore
