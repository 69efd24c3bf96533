#include <array>

#include "Barcode/Encoder/LinearEncoders.h"
#include "printengine/src/barcode/Elements.h"

namespace Barcode::Encoder {

namespace {

constexpr std::string_view Alphabet = "0123456789-";

/// Five elements from a bar on, a set bit is wide.
constexpr std::array<unsigned, 11> Patterns{0b00001, 0b10001, 0b01001, 0b11000, 0b00101, 0b10100,
                                            0b01100, 0b00011, 0b10010, 0b10000, 0b00100};
constexpr unsigned StartStop = 0b00110;
constexpr int Elements = 5;

}  // namespace

ValidationStatus Code11Encoder::Validate(std::string_view text) {
    return ValidateAlphabet(text, Alphabet, 1, MaxLinearLength);
}

LinearModel Code11Encoder::Encode(std::string const& text, unsigned checkDigits) {
    auto values = ValuesOf(text, Alphabet);
    if (values.empty()) return nullptr;
    std::string check;
    // C, and K over the data and C.
    for (unsigned const lastWeight : {10U, 9U}) {
        if (check.size() == checkDigits) break;
        values.push_back(WeightedSum(values, 1, lastWeight) % 11);
        check += Alphabet[values.back()];
    }
    Blocks blocks = PartedPatterns(values, Patterns, StartStop, StartStop, Elements);
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks), check);
}

}  // namespace Barcode::Encoder
