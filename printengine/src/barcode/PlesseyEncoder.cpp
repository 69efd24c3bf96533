#include "Barcode/Encoder/LinearEncoders.h"
#include "printengine/src/barcode/Elements.h"

namespace Barcode::Encoder {

namespace {

constexpr std::string_view Alphabet = "0123456789ABCDEF";
constexpr int CheckBits = 8;
/// x^8 + x^7 + x^6 + x^5 + x^3 + 1, highest power first.
constexpr bool Polynomial[CheckBits + 1] = {true, true, true, true, false, true, false, false, true};

/// Divides the bits by the polynomial; the remainder is appended to them.
void AppendCheck(std::vector<bool>& bits) {
    std::vector<bool> rest = bits;
    rest.resize(bits.size() + CheckBits);
    for (std::size_t i = 0; i < bits.size(); ++i) {
        if (!rest[i]) continue;
        for (std::size_t j = 0; j <= CheckBits; ++j) rest[i + j] = rest[i + j] != Polynomial[j];
    }
    bits.insert(bits.end(), rest.end() - CheckBits, rest.end());
}

}  // namespace

ValidationStatus PlesseyEncoder::Validate(std::string_view text) {
    return ValidateAlphabet(text, Alphabet, 1, MaxLinearLength);
}

LinearModel PlesseyEncoder::Encode(std::string const& text) {
    auto const values = ValuesOf(text, Alphabet);
    if (values.empty()) return nullptr;
    std::vector<bool> bits;
    for (unsigned const value : values) {
        for (int bit = 0; bit < 4; ++bit) bits.push_back((value >> bit & 1) != 0);
    }
    AppendCheck(bits);
    std::string check;
    for (std::size_t i = bits.size() - CheckBits; i < bits.size(); i += 4) {
        std::size_t value = 0;
        for (std::size_t bit = 0; bit < 4; ++bit) value |= std::size_t{bits[i + bit]} << bit;
        check += Alphabet[value];
    }
    Blocks blocks;
    blocks.reserve(bits.size() * 2 + 17);
    AppendElements(0b10'10'01'10, 8, blocks);
    for (bool const bit : bits) AppendElements(bit ? 0b10 : 0b01, 2, blocks);
    AppendElements(0b110100101, 9, blocks);
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks), std::move(check));
}

}  // namespace Barcode::Encoder
