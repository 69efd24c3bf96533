#include "Barcode/Encoder/LinearEncoders.h"
#include "printengine/src/barcode/Elements.h"

namespace Barcode::Encoder {

namespace {

constexpr std::size_t MostDigits = 14;

/// Every second digit, from the last one on, is doubled; the digits of the products are added up.
unsigned Mod10(std::vector<unsigned> const& digits) {
    unsigned sum = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        unsigned const value = digits[digits.size() - 1 - i] * (i % 2 == 0 ? 2 : 1);
        sum += value / 10 + value % 10;
    }
    return (10 - sum % 10) % 10;
}

/// Weights 2 to 7 from the last digit on. A remainder of one leaves 10, which takes two digits.
unsigned Mod11(std::vector<unsigned> const& digits) { return (11 - WeightedSum(digits, 2, 7) % 11) % 11; }

std::string AppendCheckDigits(std::vector<unsigned>& digits, MSICheckDigit checkDigits) {
    std::size_t const data = digits.size();
    if (checkDigits == MSICheckDigit::Mod11Mod10) {
        unsigned const check = Mod11(digits);
        if (check >= 10) digits.push_back(1);
        digits.push_back(check % 10);
    }
    if (checkDigits != MSICheckDigit::None) digits.push_back(Mod10(digits));
    if (checkDigits == MSICheckDigit::TwoMod10) digits.push_back(Mod10(digits));
    std::string text;
    for (std::size_t i = data; i < digits.size(); ++i) text += Digits[digits[i]];
    return text;
}

}  // namespace

ValidationStatus MSIEncoder::Validate(std::string_view text, MSICheckDigit checkDigits) {
    return ValidateAlphabet(text, Digits, 1, checkDigits == MSICheckDigit::None ? MostDigits : MostDigits - 1);
}

LinearModel MSIEncoder::Encode(std::string const& text, MSICheckDigit checkDigits) {
    auto digits = ValuesOf(text, Digits);
    if (digits.empty()) return nullptr;
    std::string check = AppendCheckDigits(digits, checkDigits);
    Blocks blocks;
    blocks.reserve(digits.size() * 8 + 5);
    AppendElements(0b10, 2, blocks);
    for (unsigned const digit : digits) {
        // A set bit is a wide bar and a narrow space, a clear one a narrow bar and a wide space.
        for (int bit = 3; bit >= 0; --bit) AppendElements((digit >> bit & 1) != 0 ? 0b10 : 0b01, 2, blocks);
    }
    AppendElements(0b010, 3, blocks);
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks), std::move(check));
}

}  // namespace Barcode::Encoder
