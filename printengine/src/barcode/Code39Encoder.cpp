#include <array>
#include <numeric>

#include "Barcode/Encoder/LinearEncoders.h"
#include "printengine/src/barcode/Elements.h"

namespace Barcode::Encoder {

namespace {

constexpr std::string_view Alphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";

/// ISO/IEC 16388, table 1: nine elements from a bar on, a set bit is wide.
constexpr std::array<unsigned, 43> Patterns{0x034, 0x121, 0x061, 0x160, 0x031, 0x130, 0x070, 0x025, 0x124, 0x064, 0x109,
                                            0x049, 0x148, 0x019, 0x118, 0x058, 0x00D, 0x10C, 0x04C, 0x01C, 0x103, 0x043,
                                            0x142, 0x013, 0x112, 0x052, 0x007, 0x106, 0x046, 0x016, 0x181, 0x0C1, 0x1C0,
                                            0x091, 0x190, 0x0D0, 0x085, 0x184, 0x0C4, 0x0A8, 0x0A2, 0x08A, 0x02A};
constexpr unsigned StartStop = 0x094;
constexpr int Elements = 9;

}  // namespace

ValidationStatus Code39Encoder::Validate(std::string_view text) {
    return ValidateAlphabet(text, Alphabet, 1, MaxLinearLength);
}

LinearModel Code39Encoder::Encode(std::string const& text, bool withCheckDigit) {
    auto values = ValuesOf(text, Alphabet);
    if (values.empty()) return nullptr;
    std::string check;
    if (withCheckDigit) {
        values.push_back(std::accumulate(values.begin(), values.end(), 0U) % 43);
        check = Alphabet[values.back()];
    }
    Blocks blocks = PartedPatterns(values, Patterns, StartStop, StartStop, Elements);
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks), std::move(check));
}

}  // namespace Barcode::Encoder
