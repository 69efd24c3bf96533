#include "frontend/context/ZplCodePageConverter.h"

#include <numeric>

#include "frontend/context/CharacterSets.h"
#include "frontend/context/Utf8Text.h"

bool ZplCodePageConverter::ReadsSingleBytes() const {
    return encoding_ == Encoding::SingleByte && !FindCharacterSet(codePage_)->isMultiByte && remap_.empty();
}

Encoding ZplCodePageConverter::EncodingOfCodePage() const { return FindCharacterSet(codePage_)->encoding; }

bool ZplCodePageConverter::ReadsByteSequences() const {
    return encoding_ == Encoding::SingleByte && FindCharacterSet(codePage_)->isMultiByte;
}

bool ZplCodePageConverter::ReadsBytePairs() const {
    constexpr unsigned BytePairs = 17;
    return encoding_ == Encoding::SingleByte && codePage_ == BytePairs;
}

bool ZplCodePageConverter::SelectCodePage(unsigned codePage) {
    auto const* const set = FindCharacterSet(codePage);
    if (!set) return false;
    codePage_ = codePage;
    encoding_ = set->encoding;
    return true;
}

void ZplCodePageConverter::Remap(std::uint8_t source, std::uint8_t target) {
    if (source == ' ' || target == ' ') return;
    if (remap_.empty()) {
        remap_.resize(256);
        std::iota(remap_.begin(), remap_.end(), '\0');
    }
    remap_[target] = static_cast<char>(source);
}

std::string ZplCodePageConverter::ConvertThroughCodePage(std::string_view data) const {
    auto const* const set = FindCharacterSet(codePage_);
    // A byte order mark may have changed the encoding of a stream without a change of the set.
    if (encoding_ != Encoding::SingleByte || set->encoding != Encoding::SingleByte) return HandleInvalidUTF8(data);
    if (set->isMultiByte) return ConvertMultiByte(*set, data);

    auto const& table = TableOf(*set);
    std::string text;
    text.reserve(data.size());
    for (char const byte : data) {
        auto const position = static_cast<std::uint8_t>(byte);
        text += table[remap_.empty() ? position : static_cast<std::uint8_t>(remap_[position])];
    }
    return text;
}
