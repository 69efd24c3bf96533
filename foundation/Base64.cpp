#include "foundation/Base64.h"

#include <array>
#include <cstdint>

namespace {

constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t Outside = 0xFF;
constexpr std::uint8_t Space = 0xFE;

constexpr std::array<std::uint8_t, 256> Values = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(Outside);
    for (std::size_t i = 0; i < Alphabet.size(); ++i)
        values[static_cast<std::uint8_t>(Alphabet[i])] = static_cast<std::uint8_t>(i);
    for (char const space : {' ', '\t', '\r', '\n'}) values[static_cast<std::uint8_t>(space)] = Space;
    return values;
}();

}  // namespace

std::string DecodeBase64(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (char const character : text) {
        std::uint8_t const value = Values[static_cast<std::uint8_t>(character)];
        if (value == Space) continue;
        if (value == Outside) break;
        bits = bits << 6 | value;
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes += static_cast<char>(bits >> count);
    }
    return bytes;
}

std::string EncodeBase64(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t bits = 0;
        std::size_t const count = bytes.size() - i < 3 ? bytes.size() - i : 3;
        for (std::size_t k = 0; k < 3; ++k)
            bits = bits << 8 | (k < count ? static_cast<std::uint8_t>(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k) text += k <= count ? Alphabet[bits >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}
