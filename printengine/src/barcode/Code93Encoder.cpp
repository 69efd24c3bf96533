#include <array>

#include "Barcode/Encoder/LinearEncoders.h"
#include "printengine/src/barcode/Elements.h"

namespace Barcode::Encoder {

namespace {

/// The last four stand for the shift characters.
constexpr std::string_view Alphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%&'()";

/// AIM BC5, table 2: nine modules, a set bit is dark.
constexpr std::array<unsigned, 47> Patterns{
    0x114, 0x148, 0x144, 0x142, 0x128, 0x124, 0x122, 0x150, 0x112, 0x10A, 0x1A8, 0x1A4, 0x1A2, 0x194, 0x192, 0x18A,
    0x168, 0x164, 0x162, 0x134, 0x11A, 0x158, 0x14C, 0x146, 0x12C, 0x116, 0x1B4, 0x1B2, 0x1AC, 0x1A6, 0x196, 0x19A,
    0x16C, 0x166, 0x136, 0x13A, 0x12E, 0x1D4, 0x1D2, 0x1CA, 0x16E, 0x176, 0x1AE, 0x126, 0x1DA, 0x1D6, 0x132};
constexpr unsigned StartStop = 0x15E;
constexpr int Modules = 9;

}  // namespace

ValidationStatus Code93Encoder::Validate(std::string_view text) {
    return ValidateAlphabet(text, Alphabet, 1, MaxLinearLength);
}

LinearModel Code93Encoder::Encode(std::string const& text) {
    auto values = ValuesOf(text, Alphabet);
    if (values.empty()) return nullptr;
    // C, and K over the data and C.
    unsigned const c = WeightedSum(values, 1, 20) % 47;
    values.push_back(c);
    unsigned const k = WeightedSum(values, 1, 15) % 47;
    values.push_back(k);
    Blocks blocks;
    blocks.reserve((values.size() + 2) * Modules + 1);
    AppendModules(StartStop, Modules, blocks);
    for (unsigned const value : values) AppendModules(Patterns[value], Modules, blocks);
    AppendModules(StartStop, Modules, blocks);
    blocks.push_back(Model::Block::NarrowBar());
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks), std::string{Alphabet[c], Alphabet[k]});
}

}  // namespace Barcode::Encoder
