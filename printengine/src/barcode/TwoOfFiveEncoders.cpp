#include <array>

#include "Barcode/Algorithm/MODX.h"
#include "Barcode/Encoder/LinearEncoders.h"
#include "printengine/src/barcode/Elements.h"

namespace Barcode::Encoder {

namespace {

/// Two of the five elements of a digit are wide; a set bit is wide.
constexpr std::array<unsigned, 10> Patterns{0b00110, 0b10001, 0b01001, 0b11000, 0b00101,
                                            0b10100, 0b01100, 0b00011, 0b10010, 0b01010};
constexpr int Elements = 5;

ValidationStatus ValidateDigits(std::string_view text) { return ValidateAlphabet(text, Digits, 1, MaxLinearLength); }

/// A digit with its data in the bars alone, and the space behind it.
void AppendBarDigit(unsigned digit, Blocks& blocks) {
    for (int i = Elements - 1; i >= 0; --i) {
        blocks.emplace_back((Patterns[digit] >> i & 1) != 0, true);
        blocks.push_back(Model::Block::NarrowSpace());
    }
}

struct Guard {
    unsigned pattern;
    int elements;
};

LinearModel EncodeInBars(std::string const& text, Guard start, Guard stop) {
    auto const digits = ValuesOf(text, Digits);
    if (digits.empty()) return nullptr;
    Blocks blocks;
    blocks.reserve(digits.size() * 2 * Elements + 12);
    AppendElements(start.pattern, start.elements, blocks);
    for (unsigned const digit : digits) AppendBarDigit(digit, blocks);
    AppendElements(stop.pattern, stop.elements, blocks);
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks));
}

}  // namespace

ValidationStatus Interleaved2of5Encoder::Validate(std::string_view text) { return ValidateDigits(text); }

LinearModel Interleaved2of5Encoder::Encode(std::string const& text, bool withCheckDigit) {
    auto digits = ValuesOf(text, Digits);
    if (digits.empty()) return nullptr;
    std::string check;
    if (withCheckDigit) {
        std::string kept;
        for (unsigned const digit : digits) kept += Digits[digit];
        check = Algorithm::MODX::GenerateUPCCheckDigit(kept);
        digits.push_back(static_cast<unsigned>(check[0] - '0'));
    }
    if (digits.size() % 2 != 0) digits.insert(digits.begin(), 0);
    Blocks blocks;
    blocks.reserve(digits.size() * Elements + 7);
    AppendElements(0b0000, 4, blocks);
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        for (int element = Elements - 1; element >= 0; --element) {
            blocks.emplace_back((Patterns[digits[i]] >> element & 1) != 0, true);
            blocks.emplace_back((Patterns[digits[i + 1]] >> element & 1) != 0, false);
        }
    }
    AppendElements(0b100, 3, blocks);
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks), std::move(check));
}

ValidationStatus Standard2of5Encoder::Validate(std::string_view text) { return ValidateDigits(text); }

LinearModel Standard2of5Encoder::Encode(std::string const& text) { return EncodeInBars(text, {0b0000, 4}, {0b100, 3}); }

ValidationStatus Industrial2of5Encoder::Validate(std::string_view text) { return ValidateDigits(text); }

LinearModel Industrial2of5Encoder::Encode(std::string const& text) {
    return EncodeInBars(text, {0b101000, 6}, {0b10001, 5});
}

}  // namespace Barcode::Encoder
