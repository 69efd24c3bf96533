#include "fields/Utf8.h"

#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace ZplCore::TextProcessing {

namespace {

/// How many bytes a sequence with this first byte should have.
std::ptrdiff_t SequenceLength(std::uint8_t first) {
    if (first >= 0xF0 && first <= 0xF7) return 4;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xC0 && first <= 0xDF) return 2;
    return 1;
}

}  // namespace

std::string HandleInvalidUTF8(std::string_view text) {
    constexpr std::string_view Replacement = "\xEF\xBF\xBD";
    std::string valid;
    valid.reserve(text.size());
    auto position = text.begin();
    while (position != text.end()) {
        auto const invalid = utf8::find_invalid(position, text.end());
        valid.append(position, invalid);
        position = invalid;
        if (position == text.end()) break;
        valid += Replacement;
        position += std::min(SequenceLength(static_cast<std::uint8_t>(*position)), text.end() - position);
    }
    return valid;
}

std::u32string ToCodePoints(std::string_view text) {
    std::u32string codePoints;
    codePoints.reserve(text.size());
    for (auto position = text.begin(); position != text.end();)
        codePoints += static_cast<char32_t>(utf8::unchecked::next(position));
    return codePoints;
}

std::string FromCodePoints(std::u32string_view codePoints) {
    std::string text;
    text.reserve(codePoints.size());
    for (char32_t const c : codePoints) utf8::unchecked::append(c, std::back_inserter(text));
    return text;
}

std::size_t CountCodePoints(std::string_view text) {
    constexpr auto isFirstByte = [](char c) { return (static_cast<std::uint8_t>(c) & 0xC0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isFirstByte));
}

}  // namespace ZplCore::TextProcessing
