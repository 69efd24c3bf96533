#include <array>

#include "Barcode/Encoder/LinearEncoders.h"
#include "printengine/src/barcode/Elements.h"

namespace Barcode::Encoder {

namespace {

constexpr std::string_view Alphabet = "0123456789-$:/.+";
constexpr std::string_view Guards = "ABCD";

/// Seven elements from a bar on, a set bit is wide: the alphabet, then the guards.
constexpr std::array<unsigned, 20> Patterns{0x03, 0x06, 0x09, 0x60, 0x12, 0x42, 0x21, 0x24, 0x30, 0x48,
                                            0x0C, 0x18, 0x45, 0x51, 0x54, 0x15, 0x1A, 0x29, 0x0B, 0x0E};
constexpr int Elements = 7;

unsigned GuardPattern(char letter) {
    auto const place = Guards.find(letter);
    return Patterns[Alphabet.size() + (place == std::string_view::npos ? 0 : place)];
}

}  // namespace

ValidationStatus CodabarEncoder::Validate(std::string_view text) {
    return ValidateAlphabet(text, Alphabet, 1, MaxLinearLength);
}

LinearModel CodabarEncoder::Encode(std::string const& text, char start, char stop) {
    auto const values = ValuesOf(text, Alphabet);
    if (values.empty()) return nullptr;
    Blocks blocks = PartedPatterns(values, Patterns, GuardPattern(start), GuardPattern(stop), Elements);
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks));
}

}  // namespace Barcode::Encoder
