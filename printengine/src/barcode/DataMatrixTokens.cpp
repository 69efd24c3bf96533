#include "printengine/src/barcode/DataMatrixTokens.h"

#include <optional>

namespace Barcode::Encoder {

namespace {

constexpr std::uint8_t StructuredAppend = 233, ReaderProgramming = 234, Macro05 = 236, Macro06 = 237,
                       ExtendedChannel = 241;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// The number of exactly `count` digits at the start of `text`.
std::optional<unsigned> TakeNumber(std::string_view text, std::size_t count) {
    if (text.size() < count) return std::nullopt;
    unsigned number = 0;
    for (char const c : text.substr(0, count)) {
        if (!IsDigit(c)) return std::nullopt;
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    return number;
}

std::uint8_t Byte(unsigned value) { return static_cast<std::uint8_t>(value); }

/// ISO/IEC 16022, 5.4.1: one to three codewords by the size of the number.
std::vector<std::uint8_t> ExtendedChannelCodewords(unsigned number) {
    if (number <= 126) return {ExtendedChannel, Byte(number + 1)};
    if (number <= 16382) return {ExtendedChannel, Byte((number - 127) / 254 + 128), Byte((number - 127) % 254 + 1)};
    unsigned const rest = number - 16383;
    return {ExtendedChannel, Byte(rest / 64516 + 192), Byte(rest / 254 % 254 + 1), Byte(rest % 254 + 1)};
}

/// A token of an escape sequence, and how much text it takes behind the escape character.
struct Escape {
    DataMatrixToken token;
    std::size_t length;
};

std::optional<Escape> ReadEscape(std::string_view text, char escape, bool isFirst) {
    if (text.empty()) return std::nullopt;
    char const c = text[0];
    std::string_view const rest = text.substr(1);
    if (c == escape) return Escape{{static_cast<unsigned char>(c), {}}, 1};
    if (c >= '@' && c <= '_') return Escape{{static_cast<unsigned>(c - '@'), {}}, 1};
    if (c == '1') return Escape{{DataMatrixToken::Fnc1, {}}, 1};
    if (c == 'd') {
        if (auto const value = TakeNumber(rest, 3); value && *value < 256) return Escape{{*value, {}}, 4};
    }
    if (c == '7') {
        if (auto const number = TakeNumber(rest, 6)) return Escape{{0, ExtendedChannelCodewords(*number)}, 7};
    }
    if (!isFirst) return std::nullopt;
    switch (c) {
        case '2': {
            auto const sequence = TakeNumber(rest, 3);
            auto const high = sequence ? TakeNumber(rest.substr(3), 3) : std::nullopt;
            auto const low = high ? TakeNumber(rest.substr(6), 3) : std::nullopt;
            if (!low || *sequence > 255 || *high > 255 || *low > 255) return std::nullopt;
            return Escape{{0, {StructuredAppend, Byte(*sequence), Byte(*high), Byte(*low)}}, 10};
        }
        case '3': return Escape{{0, {ReaderProgramming}}, 1};
        case '5': return Escape{{0, {Macro05}}, 1};
        case '6': return Escape{{0, {Macro06}}, 1};
        default: return std::nullopt;
    }
}

}  // namespace

std::vector<DataMatrixToken> ReadDataMatrixTokens(std::string_view text, char escape) {
    std::vector<DataMatrixToken> tokens;
    tokens.reserve(text.size());
    while (!text.empty()) {
        auto read = text[0] == escape ? ReadEscape(text.substr(1), escape, tokens.empty()) : std::nullopt;
        if (read) {
            tokens.push_back(std::move(read->token));
            text.remove_prefix(1 + read->length);
        } else {
            tokens.push_back({static_cast<unsigned char>(text[0]), {}});
            text.remove_prefix(1);
        }
    }
    return tokens;
}

}  // namespace Barcode::Encoder
