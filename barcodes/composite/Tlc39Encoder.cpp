#include "barcodes/composite/Tlc39Encoder.h"

#include <algorithm>

#include "Barcode/Encoder/LinearEncoders.h"
#include "Barcode/Encoder/MicroPDF417Encoder.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

using namespace Barcode::Encoder;

namespace {

constexpr std::size_t CodeLength = 6;

/// What follows the equipment code; empty if that stands alone.
std::string LinkedText(std::string const& text) {
    return text.size() > CodeLength && text[CodeLength] == ',' ? text.substr(CodeLength + 1) : std::string();
}

}  // namespace

BarcodeStatus Tlc39Encoder::Validate(std::string const& text) {
    constexpr std::size_t MaxLength = 150;
    constexpr std::size_t MaxSerial = 25;
    auto const code = std::string_view(text).substr(0, CodeLength);
    if (!std::all_of(code.begin(), code.end(), IsAsciiDigit)) return BarcodeStatus::InvalidCharacter;
    if (code.size() < CodeLength) return BarcodeStatus::TooShort;
    std::string const linked = LinkedText(text);
    bool const isTooLong = text.size() > MaxLength || std::min(linked.find(','), linked.size()) > MaxSerial;
    return isTooLong ? BarcodeStatus::TooLong : BarcodeStatus::Valid;
}

Barcode::Model::Tlc39BarcodeModel Tlc39Encoder::Encode(std::string const& text) {
    constexpr MicroPDF417Shape FourColumns{4, 0};
    return {*Code39Encoder::Encode(text.substr(0, CodeLength), false),
            MicroPDF417Encoder::Encode(LinkedText(text), FourColumns, MicroPDF417Linkage::LinearComponent)};
}

}  // namespace ZplCore
