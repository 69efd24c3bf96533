#include "Barcode/Encoder/RetailEncoders.h"

#include <array>

#include "Barcode/Algorithm/MODX.h"
#include "printengine/src/barcode/Elements.h"

namespace Barcode::Encoder {

using Algorithm::MODX::GenerateUPCCheckDigit;

namespace {

/// ISO/IEC 15420, number set A: seven modules from a space on, a set bit is dark. Set C is its inverse, set B is set C
/// from right to left.
constexpr std::array<unsigned, 10> SetA{0b0001101, 0b0011001, 0b0010011, 0b0111101, 0b0100011,
                                        0b0110001, 0b0101111, 0b0111011, 0b0110111, 0b0001011};
constexpr int Modules = 7;

/// Which digits of the left half are of set B, the first one in the highest bit, by the first digit of an EAN-13.
constexpr std::array<unsigned, 10> Ean13Parity{0b000000, 0b001011, 0b001101, 0b001110, 0b010011,
                                               0b011001, 0b011100, 0b010101, 0b010110, 0b011010};
/// The same by the check digit of a UPC-E of system 0; system 1 has the inverse.
constexpr std::array<unsigned, 10> UpcEParity{0b111000, 0b110100, 0b110010, 0b110001, 0b101100,
                                              0b100110, 0b100011, 0b101010, 0b101001, 0b100101};
/// The same by the check value of a supplement of five digits.
constexpr std::array<unsigned, 10> Ext5Parity{0b11000, 0b10100, 0b10010, 0b10001, 0b01100,
                                              0b00110, 0b00011, 0b01010, 0b01001, 0b00101};

constexpr unsigned PatternB(unsigned digit) {
    unsigned reversed = 0;
    for (int i = 0; i < Modules; ++i) reversed |= (~SetA[digit] >> i & 1) << (Modules - 1 - i);
    return reversed;
}

/// Guard patterns. The normal one begins with a bar, the others with a space.
constexpr unsigned NormalGuard = 0b101, CentreGuard = 0b01010, SpecialGuard = 0b010101;
constexpr int NormalModules = 3, CentreModules = 5, SpecialModules = 6;

unsigned ValueOf(char digit) { return static_cast<unsigned>(digit - '0'); }

void AppendLeft(std::string_view digits, unsigned parity, Blocks& blocks) {
    for (std::size_t i = 0; i < digits.size(); ++i) {
        unsigned const digit = ValueOf(digits[i]);
        bool const isSetB = (parity >> (digits.size() - 1 - i) & 1) != 0;
        AppendModules(isSetB ? PatternB(digit) : SetA[digit], Modules, blocks);
    }
}

void AppendRight(std::string_view digits, Blocks& blocks) {
    for (char const digit : digits) AppendModules(~SetA[ValueOf(digit)], Modules, blocks);
}

ValidationStatus ValidateDigits(std::string_view text, std::size_t length) {
    return ValidateAlphabet(text, Digits, length, length);
}

LinearModel MakeModel(std::string text, Blocks blocks, char check) {
    return std::make_unique<Model::LinearBarcodeModel>(std::move(text), std::move(blocks), std::string(1, check));
}

/// A symbol of two halves between guard bars.
LinearModel EncodeHalves(std::string const& text, std::string_view left, unsigned parity, std::string_view right,
                         char check) {
    Blocks blocks;
    blocks.reserve((left.size() + right.size()) * Modules + 11);
    AppendModules(NormalGuard, NormalModules, blocks);
    AppendLeft(left, parity, blocks);
    AppendModules(CentreGuard, CentreModules, blocks);
    AppendRight(right, blocks);
    AppendModules(NormalGuard, NormalModules, blocks);
    return MakeModel(text, std::move(blocks), check);
}

/// The digits of a supplement, parted by a space and a bar.
LinearModel EncodeSupplement(std::string const& text, unsigned parity) {
    Blocks blocks;
    AppendModules(0b1011, 4, blocks);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i != 0) AppendModules(0b01, 2, blocks);
        AppendLeft(std::string_view(text).substr(i, 1), parity >> (text.size() - 1 - i), blocks);
    }
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks));
}

/// The system digit and six digits.
std::string WithSystemDigit(std::string_view text) { return (text.size() == 6 ? "0" : "") + std::string(text); }

}  // namespace

ValidationStatus EAN13Encoder::Validate(std::string_view text) { return ValidateDigits(text, 12); }

LinearModel EAN13Encoder::Encode(std::string const& text) {
    if (Validate(text) != ValidationStatus::Valid) return nullptr;
    std::string const full = text + GenerateUPCCheckDigit(text);
    std::string_view const digits = full;
    return EncodeHalves(text, digits.substr(1, 6), Ean13Parity[ValueOf(full[0])], digits.substr(7), full.back());
}

ValidationStatus EAN8Encoder::Validate(std::string_view text) { return ValidateDigits(text, 7); }

LinearModel EAN8Encoder::Encode(std::string const& text) {
    if (Validate(text) != ValidationStatus::Valid) return nullptr;
    std::string const full = text + GenerateUPCCheckDigit(text);
    return EncodeHalves(text, std::string_view(full).substr(0, 4), 0, std::string_view(full).substr(4), full.back());
}

ValidationStatus UPCAEncoder::Validate(std::string_view text) { return ValidateDigits(text, 11); }

LinearModel UPCAEncoder::Encode(std::string const& text) {
    if (Validate(text) != ValidationStatus::Valid) return nullptr;
    std::string const full = text + GenerateUPCCheckDigit(text);
    return EncodeHalves(text, std::string_view(full).substr(0, 6), 0, std::string_view(full).substr(6), full.back());
}

ValidationStatus UPCEEncoder::Validate(std::string_view text) {
    auto const status = ValidateAlphabet(text, Digits, 6, 7);
    if (status != ValidationStatus::Valid || text.size() == 6) return status;
    return text[0] <= '1' ? ValidationStatus::Valid : ValidationStatus::InvalidCharacter;
}

std::string UPCEEncoder::Expand(std::string_view text) {
    std::string const full = WithSystemDigit(text);
    std::string const digits = full.substr(1);
    std::string const system = full.substr(0, 1);
    // The last digit tells which zeros were left out of the number, and is itself one of its digits up to 2 and from 5.
    switch (digits[5]) {
        case '0':
        case '1':
        case '2': return system + digits.substr(0, 2) + digits[5] + "0000" + digits.substr(2, 3);
        case '3': return system + digits.substr(0, 3) + "00000" + digits.substr(3, 2);
        case '4': return system + digits.substr(0, 4) + "00000" + digits[4];
        default: return system + digits.substr(0, 5) + "0000" + digits[5];
    }
}

char UPCEEncoder::CalculateUPCECheckDigit(std::string_view text) {
    return Validate(text) == ValidationStatus::Valid ? GenerateUPCCheckDigit(Expand(text)) : '0';
}

LinearModel UPCEEncoder::Encode(std::string_view text) {
    if (Validate(text) != ValidationStatus::Valid) return nullptr;
    std::string const full = WithSystemDigit(text);
    char const check = CalculateUPCECheckDigit(text);
    unsigned const parity = UpcEParity[ValueOf(check)] ^ (full[0] == '1' ? 0b111111U : 0U);
    Blocks blocks;
    AppendModules(NormalGuard, NormalModules, blocks);
    AppendLeft(std::string_view(full).substr(1), parity, blocks);
    AppendModules(SpecialGuard, SpecialModules, blocks);
    return MakeModel(std::string(text), std::move(blocks), check);
}

ValidationStatus Ext2Encoder::Validate(std::string_view text) { return ValidateDigits(text, 2); }

LinearModel Ext2Encoder::Encode(std::string const& text) {
    if (Validate(text) != ValidationStatus::Valid) return nullptr;
    return EncodeSupplement(text, (ValueOf(text[0]) * 10 + ValueOf(text[1])) % 4);
}

ValidationStatus Ext5Encoder::Validate(std::string_view text) { return ValidateDigits(text, 5); }

LinearModel Ext5Encoder::Encode(std::string const& text) {
    if (Validate(text) != ValidationStatus::Valid) return nullptr;
    unsigned const threefold = ValueOf(text[0]) + ValueOf(text[2]) + ValueOf(text[4]);
    unsigned const ninefold = ValueOf(text[1]) + ValueOf(text[3]);
    return EncodeSupplement(text, Ext5Parity[(threefold * 3 + ninefold * 9) % 10]);
}

}  // namespace Barcode::Encoder
