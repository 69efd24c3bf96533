#include "frontend/context/Utf8Text.h"

#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace {

/// How many bytes a sequence with this first byte should have.
std::ptrdiff_t SequenceLength(char first) {
    auto const byte = static_cast<std::uint8_t>(first);
    if (byte >= 0xF0 && byte <= 0xF7) return 4;
    if (byte >= 0xE0 && byte <= 0xEF) return 3;
    if (byte >= 0xC0 && byte <= 0xDF) return 2;
    return 1;
}

}  // namespace

std::string HandleInvalidUTF8(std::string_view text, bool leaveOut) {
    constexpr std::string_view Replacement = "\xEF\xBF\xBD";
    std::string valid;
    valid.reserve(text.size());
    for (auto position = text.begin();;) {
        auto const invalid = utf8::find_invalid(position, text.end());
        valid.append(position, invalid);
        if (invalid == text.end()) return valid;
        if (!leaveOut) valid += Replacement;
        position = invalid + std::min(SequenceLength(*invalid), text.end() - invalid);
    }
}

std::size_t CountCodePoints(std::string_view text) {
    constexpr auto isFirstByte = [](char c) { return (static_cast<std::uint8_t>(c) & 0xC0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isFirstByte));
}

std::u32string ToCodePoints(std::string_view text) {
    std::string const valid = HandleInvalidUTF8(text);
    std::u32string codePoints;
    codePoints.reserve(valid.size());
    for (auto position = valid.begin(); position != valid.end();) {
        codePoints += static_cast<char32_t>(utf8::unchecked::next(position));
    }
    return codePoints;
}

std::string FromCodePoints(std::u32string_view codePoints) {
    std::string text;
    text.reserve(codePoints.size());
    for (char32_t const codePoint : codePoints) utf8::unchecked::append(codePoint, std::back_inserter(text));
    return text;
}
