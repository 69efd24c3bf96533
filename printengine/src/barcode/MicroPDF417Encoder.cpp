#include "Barcode/Encoder/MicroPDF417Encoder.h"

#include <algorithm>
#include <iterator>

#include "printengine/src/barcode/Elements.h"
#include "printengine/src/barcode/PDF417Compaction.h"
#include "printengine/src/barcode/PDF417Patterns.h"

namespace Barcode::Encoder {

namespace {

/// ISO/IEC 24728, table 1 and annex B: a shape, its error correction, and where its row address patterns and clusters
/// begin.
struct Variant {
    unsigned columns;
    unsigned rows;
    unsigned corrections;  ///< codewords of error correction
    unsigned left;         ///< first row address pattern of each side, from 1
    unsigned centre;       ///< 0 where there is none
    unsigned right;
    unsigned cluster;  ///< of the first row: 0 to 2 for the clusters 0, 3 and 6

    unsigned DataCodewords() const { return columns * rows - corrections; }
};

/// In the order of the modes 0 to 33 of the print language, which has the smallest shape of four columns last.
constexpr Variant Variants[MicroPDF417Encoder::ModeCount] = {
    {1, 11, 7, 1, 0, 9, 0},     {1, 14, 7, 8, 0, 8, 1},     {1, 17, 7, 36, 0, 36, 2},   {1, 20, 8, 19, 0, 19, 0},
    {1, 24, 8, 9, 0, 17, 2},    {1, 28, 8, 25, 0, 33, 0},   {2, 8, 8, 1, 0, 1, 0},      {2, 11, 9, 1, 0, 9, 0},
    {2, 14, 9, 8, 0, 8, 1},     {2, 17, 10, 36, 0, 36, 2},  {2, 20, 11, 19, 0, 19, 0},  {2, 23, 13, 9, 0, 17, 2},
    {2, 26, 15, 27, 0, 35, 2},  {3, 6, 12, 1, 1, 1, 0},     {3, 8, 14, 7, 7, 7, 0},     {3, 10, 16, 15, 15, 15, 2},
    {3, 12, 18, 25, 25, 25, 0}, {3, 15, 21, 37, 37, 37, 0}, {3, 20, 26, 1, 17, 33, 0},  {3, 26, 32, 1, 9, 17, 0},
    {3, 32, 38, 21, 29, 37, 2}, {3, 38, 44, 15, 31, 47, 2}, {3, 44, 50, 1, 25, 49, 0},  {4, 6, 12, 1, 1, 1, 0},
    {4, 8, 14, 7, 7, 7, 0},     {4, 10, 16, 15, 15, 15, 2}, {4, 12, 18, 25, 25, 25, 0}, {4, 15, 21, 37, 37, 37, 0},
    {4, 20, 26, 1, 17, 33, 0},  {4, 26, 32, 1, 9, 17, 0},   {4, 32, 38, 21, 29, 37, 2}, {4, 38, 44, 15, 31, 47, 2},
    {4, 44, 50, 1, 25, 49, 0},  {4, 4, 8, 47, 19, 43, 1},
};

constexpr unsigned AddressPatterns = 52;
constexpr int AddressModules = 10;
constexpr unsigned CodewordModules = 17;

/// ISO/IEC 24728, annex A: row address patterns 1 to 52 of the left and right sides, and of the centre.
constexpr unsigned SidePatterns[AddressPatterns] = {
    0x322, 0x3A2, 0x3B2, 0x332, 0x372, 0x37A, 0x33A, 0x3BA, 0x39A, 0x3DA, 0x3CA, 0x38A, 0x30A,
    0x31A, 0x312, 0x392, 0x3D2, 0x3D6, 0x3D4, 0x394, 0x3B4, 0x3A4, 0x3A6, 0x3AE, 0x3AC, 0x3A8,
    0x328, 0x32C, 0x32E, 0x326, 0x336, 0x3B6, 0x396, 0x316, 0x314, 0x334, 0x374, 0x364, 0x366,
    0x36E, 0x36C, 0x368, 0x348, 0x358, 0x35C, 0x35E, 0x34E, 0x34C, 0x344, 0x346, 0x342, 0x362};
constexpr unsigned CentrePatterns[AddressPatterns] = {
    0x2CE, 0x24E, 0x26E, 0x22E, 0x226, 0x236, 0x216, 0x212, 0x21A, 0x23A, 0x232, 0x222, 0x262,
    0x272, 0x27A, 0x2FA, 0x2F2, 0x2F6, 0x276, 0x274, 0x264, 0x266, 0x246, 0x242, 0x2C2, 0x2E2,
    0x2E6, 0x2E4, 0x2EC, 0x26C, 0x22C, 0x228, 0x268, 0x2E8, 0x2C8, 0x2CC, 0x2C4, 0x2C6, 0x286,
    0x28E, 0x28C, 0x29C, 0x298, 0x2B8, 0x2B0, 0x290, 0x2D0, 0x250, 0x258, 0x25C, 0x2DC, 0x2DE};

using Codewords = std::vector<unsigned>;

constexpr unsigned Pad = 900;
constexpr unsigned LinearLinkage = 918;
/// No symbol holds more digits than this.
constexpr std::size_t MaxLength = 366;

void AppendAddress(unsigned const (&patterns)[AddressPatterns], unsigned number, Blocks& row) {
    AppendModules(patterns[(number - 1) % AddressPatterns], AddressModules, row);
}

Model::StackedBarcodeModel Draw(Variant const& variant, Codewords const& codewords) {
    auto const width = variant.columns * CodewordModules + (variant.columns >= 3 ? 3U : 2U) * AddressModules + 1;
    Model::StackedBarcodeModel model(variant.rows, width);
    auto codeword = codewords.begin();
    for (unsigned r = 0; r < variant.rows; ++r) {
        auto& row = model.GetBlocks()[r];
        AppendAddress(SidePatterns, variant.left + r, row);
        for (unsigned c = 0; c < variant.columns; ++c) {
            if (variant.columns >= 3 && c == variant.columns - 2)
                AppendAddress(CentrePatterns, variant.centre + r, row);
            row.push_back(Model::Block::NarrowBar());
            AppendModules(PDF417Patterns[(variant.cluster + r) % 3][*codeword++], CodewordModules - 1, row);
        }
        AppendAddress(SidePatterns, variant.right + r, row);
        row.push_back(Model::Block::NarrowBar());
    }
    return model;
}

bool IsOfShape(Variant const& variant, MicroPDF417Shape shape) {
    return variant.columns == shape.columns && (shape.rows == 0 || variant.rows == shape.rows);
}

}  // namespace

MicroPDF417Shape MicroPDF417Encoder::ShapeOf(unsigned mode) { return {Variants[mode].columns, Variants[mode].rows}; }

ValidationStatus MicroPDF417Encoder::Validate(std::string const& text, MicroPDF417Shape shape) {
    if (std::none_of(std::begin(Variants), std::end(Variants),
                     [&](Variant const& variant) { return IsOfShape(variant, shape); }))
        return ValidationStatus::InvalidParameter;
    return text.empty() ? ValidationStatus::TooShort : ValidationStatus::Valid;
}

Model::StackedBarcodeModel MicroPDF417Encoder::Encode(std::string const& text, MicroPDF417Shape shape,
                                                      MicroPDF417Linkage linkage) {
    if (text.empty() || text.size() > MaxLength) return {0, 0};
    auto codewords = CompactPDF417(text, PDF417Start::Latched);
    if (linkage == MicroPDF417Linkage::LinearComponent) codewords.insert(codewords.begin(), LinearLinkage);
    Variant const* best = nullptr;
    for (Variant const& variant : Variants) {
        if (IsOfShape(variant, shape) && variant.DataCodewords() >= codewords.size() &&
            (best == nullptr || variant.rows < best->rows))
            best = &variant;
    }
    if (best == nullptr) return {0, 0};
    codewords.resize(best->DataCodewords(), Pad);
    auto const corrections = PDF417Corrections(codewords, best->corrections);
    codewords.insert(codewords.end(), corrections.begin(), corrections.end());
    return Draw(*best, codewords);
}

}  // namespace Barcode::Encoder
