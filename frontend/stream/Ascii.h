#pragma once

#include <string>
#include <string_view>

/// Letters and digits as the language means them: 7-bit, whatever the locale of the process.

constexpr bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

constexpr bool IsAsciiText(std::string_view text) {
    for (char const c : text) {
        if (!IsAscii(c)) return false;
    }
    return true;
}

constexpr bool IsAsciiDigit(char c) { return c >= '0' && c <= '9'; }

constexpr char ToAsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

constexpr char32_t ToAsciiUpper(char32_t c) { return c >= U'a' && c <= U'z' ? c - U'a' + U'A' : c; }

inline std::string ToAsciiUpper(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) c = ToAsciiUpper(c);
    return upper;
}

/// The value of a hexadecimal digit; -1 for any other character.
constexpr int HexDigit(char c) {
    char const upper = ToAsciiUpper(c);
    if (IsAsciiDigit(c)) return c - '0';
    return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : -1;
}
