#pragma once

#include <string_view>

namespace PrintEngine::Text {

/// Takes the first character off a non-empty UTF-8 text. A byte that begins no well-formed character is taken alone and
/// reads as U+FFFD.
inline char32_t TakeCharacter(std::string_view& text) {
    auto const byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    unsigned const lead = byte(0);
    if (lead < 0x80) {
        text.remove_prefix(1);
        return lead;
    }
    std::size_t const length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    char32_t character = lead & (0x7Fu >> length);
    bool isValid = lead >= 0xC2 && lead < 0xF5 && text.size() >= length;
    for (std::size_t i = 1; isValid && i < length; ++i) {
        isValid = (byte(i) & 0xC0) == 0x80;
        character = character << 6 | (byte(i) & 0x3F);
    }
    constexpr char32_t Smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    isValid =
        isValid && character >= Smallest[length] && character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
    text.remove_prefix(isValid ? length : 1);
    return isValid ? character : 0xFFFD;
}

}  // namespace PrintEngine::Text
