#include "fields/ink/FieldMap.h"

#include <algorithm>

#include "fields/text/FieldText.h"
#include "foundation/Log.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

namespace {

FieldKind KindOf(Scripting::FieldInk const& ink, bool isBarcode) {
    if (!ink.image.IsEmpty()) return isBarcode ? FieldKind::Barcode : FieldKind::Picture;
    return ink.shape.IsEmpty() ? FieldKind::Text : FieldKind::Shape;
}

}  // namespace

std::string BeginningOfData(ContextProcessor const& processor) {
    constexpr std::size_t Longest = 40;  // bytes
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    bool const isLong = data.size() > Longest;
    std::string text = data.substr(0, Longest);
    if (!std::all_of(text.begin(), text.end(), IsAscii)) {
        // A character that is cut in two goes as a whole.
        auto const isRest = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; };
        text = FieldText(data, processor).substr(0, Longest + 1);
        while (text.size() > Longest || (!text.empty() && isLong && isRest(text.back()))) text.pop_back();
    }
    // How senders end the lines of a block.
    for (auto at = text.find("\\&"); at != text.npos; at = text.find("\\&", at)) {
        text[at] = ' ';
        text.erase(at + 1, 1);
    }
    while (!isLong && text.ends_with(' ')) text.pop_back();
    return isLong ? text + "..." : text;
}

void FieldMap::StartField() {
    isBarcode_ = false;
    gauge_.StartField();
}

void FieldMap::EndField(ContextProcessor const& processor, bool isReversed) {
    auto const ink = gauge_.EndField();
    if (ink.All().IsEmpty() || fields_.size() == MostFields) return;
    fields_.push_back({KindOf(ink, isBarcode_), Log::Place(), BeginningOfData(processor), ink, isReversed});
}

}  // namespace ZplCore
