#include "barcodes/postal/PostalEncoders.h"

#include <algorithm>
#include <array>

#include "Barcode/Encoder/ModuleEncoder.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

using namespace Barcode::Encoder;

namespace {

/// Two of the five bars of a digit are tall.
constexpr std::array<unsigned, 10> PostnetPatterns{0b11000, 0b00011, 0b00101, 0b00110, 0b01001,
                                                   0b01010, 0b01100, 0b10001, 0b10010, 0b10100};

/// `lengths` ascend.
BarcodeStatus ValidateLengths(std::string const& text, std::initializer_list<std::size_t> lengths) {
    if (!std::all_of(text.begin(), text.end(), IsAsciiDigit)) return BarcodeStatus::InvalidCharacter;
    if (std::find(lengths.begin(), lengths.end(), text.size()) != lengths.end()) return BarcodeStatus::Valid;
    return text.size() > *(lengths.end() - 1) ? BarcodeStatus::TooLong : BarcodeStatus::TooShort;
}

void AppendDigit(unsigned digit, std::vector<bool>& bars) {
    for (int bar = 4; bar >= 0; --bar) bars.push_back((PostnetPatterns[digit] >> bar & 1) != 0);
}

}  // namespace

BarcodeStatus PostnetEncoder::Validate(std::string const& text) { return ValidateLengths(text, {5, 9, 11}); }

Barcode::Model::USPS2StateBarcodeModel PostnetEncoder::Encode(std::string const& text) {
    std::vector<bool> bars{true};
    unsigned sum = 0;
    for (char const c : text) {
        auto const digit = static_cast<unsigned>(c - '0');
        AppendDigit(digit, bars);
        sum += digit;
    }
    AppendDigit((10 - sum % 10) % 10, bars);
    bars.push_back(true);
    return Barcode::Model::USPS2StateBarcodeModel(std::move(bars));
}

BarcodeStatus IntelligentMailEncoder::Validate(std::string const& text) {
    auto const status = ValidateLengths(text, {20, 25, 29, 31});
    // The second digit of the identifier counts to 4.
    if (status == BarcodeStatus::Valid && text[1] > '4') return BarcodeStatus::InvalidCharacter;
    return status;
}

std::string_view IntelligentMailEncoder::Reason(std::string const& text) {
    if (!std::all_of(text.begin(), text.end(), IsAsciiDigit)) return {};
    return Validate(text) == BarcodeStatus::InvalidCharacter ? "the second digit of Intelligent Mail is 0 to 4"
                                                             : "Intelligent Mail has 20, 25, 29 or 31 digits";
}

Barcode::Model::IntelligentMailBarcodeModel IntelligentMailEncoder::Encode(std::string const& text) {
    ModuleRequest request;
    request.symbology = ModuleSymbology::IntelligentMail;
    constexpr std::size_t TrackingLength = 20;
    request.data = text.substr(0, TrackingLength);
    if (text.size() > TrackingLength) {
        request.data += '-';
        request.data += text.substr(TrackingLength);
    }
    auto const rows = EncodeModules(request).rows;
    std::vector<Barcode::Model::IntelligentMailBar> bars;
    for (std::size_t c = 0; rows.size() == 3 && c < rows[0].size(); c += 2)
        bars.push_back({.descender = rows[2][c], .ascender = rows[0][c]});
    return Barcode::Model::IntelligentMailBarcodeModel(std::move(bars));
}

}  // namespace ZplCore
