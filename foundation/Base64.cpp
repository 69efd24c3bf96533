#include "foundation/Base64.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t NoDigit = 0xFF;
constexpr std::uint8_t Space = 0xFE;

constexpr auto DigitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(NoDigit);
    for (char const space : {' ', '\t', '\r', '\n'}) values[static_cast<std::uint8_t>(space)] = Space;
    for (std::size_t i = 0; i < Alphabet.size(); ++i) {
        values[static_cast<std::uint8_t>(Alphabet[i])] = static_cast<std::uint8_t>(i);
    }
    return values;
}();

/// Decodes up to the first character that is no digit; `read` counts the characters taken.
std::string DecodeDigits(std::string_view text, bool skipSpace, std::size_t& read) {
    std::string bytes(text.size() / 4 * 3 + 3, '\0');
    auto const valueAt = [text](std::size_t index) -> std::uint32_t {
        return DigitValues[static_cast<std::uint8_t>(text[index])];
    };
    std::size_t size = 0;
    std::uint32_t group = 0;
    std::size_t digits = 0;
    for (read = 0; read < text.size(); ++read) {
        // Most text comes in whole groups of four digits, which have no bit above the sixth.
        for (; digits % 4 == 0 && text.size() - read > 4; read += 4) {
            std::uint32_t const a = valueAt(read), b = valueAt(read + 1), c = valueAt(read + 2), d = valueAt(read + 3);
            if ((a | b | c | d) >= Alphabet.size()) break;
            bytes[size++] = static_cast<char>(a << 2 | b >> 4);
            bytes[size++] = static_cast<char>(b << 4 | c >> 2);
            bytes[size++] = static_cast<char>(c << 6 | d);
        }
        std::uint32_t const value = valueAt(read);
        if (value == Space && skipSpace) continue;
        if (value >= Space) break;
        group = (group << 6) | value;
        // The first digit of four completes no byte, each other one completes one.
        if (std::size_t const place = digits++ % 4; place != 0)
            bytes[size++] = static_cast<char>(group >> (6 - 2 * place));
    }
    bytes.resize(size);
    return bytes;
}

}  // namespace

std::optional<std::string> Base64::Decode(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    for (int padding = 0; padding < 2 && text.ends_with('='); ++padding) text.remove_suffix(1);
    std::size_t read = 0;
    std::string bytes = DecodeDigits(text, false, read);
    if (read != text.size()) return std::nullopt;
    return bytes;
}

std::string Base64::DecodeLeniently(std::string_view text) {
    std::size_t read = 0;
    return DecodeDigits(text, true, read);
}

std::string Base64::Encode(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::size_t const count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = (group << 8) | (k < count ? static_cast<std::uint8_t>(bytes[i + k]) : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) text += k <= count ? Alphabet[(group >> (18 - 6 * k)) & 63] : '=';
    }
    return text;
}
