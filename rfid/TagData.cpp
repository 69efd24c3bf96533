#include "rfid/TagData.h"

#include <algorithm>
#include <charconv>

#include "frontend/stream/Ascii.h"

namespace {

constexpr std::string_view Digits = "0123456789ABCDEF";

/// What a tag answers is not checked: any character counts as some digit.
unsigned NibbleOf(char c) { return static_cast<unsigned>(HexDigit(c)) & 0xF; }

/// Gathers bits, the most significant first, as hexadecimal digits; the last digit is filled up with zeros.
class BitWriter {
public:
    void Write(std::uint64_t value, unsigned bits) {
        while (bits-- > 0) {
            digit_ = digit_ << 1 | (value >> bits & 1);
            if (++count_ % 4 == 0) Flush();
        }
    }

    std::string Take() {
        while (count_ % 4 != 0) Write(0, 1);
        return std::move(hex_);
    }

private:
    void Flush() {
        hex_ += Digits[digit_];
        digit_ = 0;
    }

    std::string hex_;
    std::size_t digit_ = 0;
    unsigned count_ = 0;
};

std::optional<std::string> EpcToHex(std::string_view data, std::vector<std::uint8_t> const& partitions) {
    BitWriter bits;
    for (std::size_t i = 0; i < partitions.size(); ++i) {
        std::uint64_t value = 0;
        auto const [end, error] = std::from_chars(data.data(), data.data() + data.size(), value);
        unsigned const size = partitions[i];
        if (error != std::errc() || (size < 64 && value >> size != 0)) return std::nullopt;
        data.remove_prefix(static_cast<std::size_t>(end - data.data()));
        bits.Write(value, size);
        bool const isLast = i + 1 == partitions.size();
        if (isLast != data.empty()) return std::nullopt;
        if (!isLast && data.front() != ',' && data.front() != '.') return std::nullopt;
        if (!isLast) data.remove_prefix(1);
    }
    return bits.Take();
}

std::string EpcFromHex(std::string_view hex, std::vector<std::uint8_t> const& partitions) {
    std::string text;
    std::size_t bit = 0;
    for (unsigned const size : partitions) {
        std::uint64_t value = 0;
        for (unsigned i = 0; i < size; ++i, ++bit) {
            unsigned const digit = bit / 4 < hex.size() ? NibbleOf(hex[bit / 4]) : 0;
            value = value << 1 | (digit >> (3 - bit % 4) & 1);
        }
        if (!text.empty()) text += ',';
        text += std::to_string(value);
    }
    return text;
}

}  // namespace

std::optional<std::string> ToTagHex(TagFormat format, std::string_view data,
                                    std::vector<std::uint8_t> const& partitions) {
    if (format == TagFormat::Epc) return EpcToHex(data, partitions);
    std::string hex;
    for (char const c : data) {
        if (format == TagFormat::Ascii) {
            auto const byte = static_cast<unsigned char>(c);
            hex += {Digits[byte >> 4], Digits[byte & 0xF]};
        } else {
            if (HexDigit(c) < 0) return std::nullopt;
            hex += ToAsciiUpper(c);
        }
    }
    return hex;
}

std::string FromTagHex(TagFormat format, std::string_view hex, std::vector<std::uint8_t> const& partitions) {
    if (format == TagFormat::Epc) return EpcFromHex(hex, partitions);
    if (format == TagFormat::Hex) return std::string(hex);
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(NibbleOf(hex[i]) << 4 | NibbleOf(hex[i + 1]));
    return bytes;
}

std::string FitTagHex(std::string hex, unsigned bytes) {
    constexpr std::size_t DigitsOfAWord = 4;
    std::size_t const digits =
        bytes != 0 ? std::size_t{bytes} * 2 : (hex.size() + DigitsOfAWord - 1) / DigitsOfAWord * DigitsOfAWord;
    hex.resize(digits, '0');
    return hex;
}
