#include "Barcode/Encoder/PlanetEncoder.h"

#include <array>
#include <numeric>

#include "printengine/src/barcode/Elements.h"

namespace Barcode::Encoder {

namespace {

/// Three of the five bars of a digit are tall.
constexpr std::array<unsigned, 10> Patterns{0b00111, 0b11100, 0b11010, 0b11001, 0b10110,
                                            0b10101, 0b10011, 0b01110, 0b01101, 0b01011};

}  // namespace

ValidationStatus PlanetEncoder::Validate(std::string_view text) {
    auto const status = ValidateAlphabet(text, Digits, 11, 13);
    return status == ValidationStatus::Valid && text.size() == 12 ? ValidationStatus::TooShort : status;
}

Model::USPS2StateBarcodeModel PlanetEncoder::Encode(std::string const& text) {
    auto digits = ValuesOf(text, Digits);
    digits.push_back((10 - std::accumulate(digits.begin(), digits.end(), 0U) % 10) % 10);
    Model::USPS2StateBarcodeModel model({true});
    for (unsigned const digit : digits) {
        for (int bar = 4; bar >= 0; --bar) model.GetBars().push_back((Patterns[digit] >> bar & 1) != 0);
    }
    model.GetBars().push_back(true);
    return model;
}

}  // namespace Barcode::Encoder
