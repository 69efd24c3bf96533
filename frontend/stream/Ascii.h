#pragma once

/// Letters and digits as the language means them: 7-bit, whatever the locale of the process.

constexpr bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

constexpr bool IsAsciiDigit(char c) { return c >= '0' && c <= '9'; }

constexpr char ToAsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

constexpr char32_t ToAsciiUpper(char32_t c) { return c >= U'a' && c <= U'z' ? c - U'a' + U'A' : c; }
