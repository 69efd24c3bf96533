#include "Barcode/Encoder/DataMatrix200Encoder.h"

#include <algorithm>
#include <array>
#include <span>

#include "printengine/src/barcode/Cells.h"
#include "printengine/src/barcode/DataMatrixCodewords.h"
#include "printengine/src/barcode/DataMatrixPlacement.h"
#include "printengine/src/barcode/ReedSolomon.h"

namespace Barcode::Encoder {

namespace {

/// ISO/IEC 16022, table 7.
struct Size {
    unsigned rows;
    unsigned columns;
    unsigned regionsDown;
    unsigned regionsAcross;
    unsigned data;             ///< codewords
    unsigned errorCorrection;  ///< codewords
    unsigned blocks;           ///< of interleaved error correction
};

// clang-format off
constexpr Size Sizes[] = {
    {10, 10, 1, 1, 3, 5, 1}, {12, 12, 1, 1, 5, 7, 1}, {14, 14, 1, 1, 8, 10, 1}, {16, 16, 1, 1, 12, 12, 1},
    {18, 18, 1, 1, 18, 14, 1}, {20, 20, 1, 1, 22, 18, 1}, {22, 22, 1, 1, 30, 20, 1}, {24, 24, 1, 1, 36, 24, 1},
    {26, 26, 1, 1, 44, 28, 1}, {32, 32, 2, 2, 62, 36, 1}, {36, 36, 2, 2, 86, 42, 1}, {40, 40, 2, 2, 114, 48, 1},
    {44, 44, 2, 2, 144, 56, 1}, {48, 48, 2, 2, 174, 68, 1}, {52, 52, 2, 2, 204, 84, 2}, {64, 64, 4, 4, 280, 112, 2},
    {72, 72, 4, 4, 368, 144, 4}, {80, 80, 4, 4, 456, 192, 4}, {88, 88, 4, 4, 576, 224, 4}, {96, 96, 4, 4, 696, 272, 4},
    {104, 104, 4, 4, 816, 336, 6}, {120, 120, 6, 6, 1050, 408, 6}, {132, 132, 6, 6, 1304, 496, 8},
    {144, 144, 6, 6, 1558, 620, 10},
    {8, 18, 1, 1, 5, 7, 1}, {8, 32, 1, 2, 10, 11, 1}, {12, 26, 1, 1, 16, 14, 1}, {12, 36, 1, 2, 22, 18, 1},
    {16, 36, 1, 2, 32, 24, 1}, {16, 48, 1, 2, 49, 28, 1},
};
// clang-format on

constexpr unsigned Rectangle = 2;
/// The largest symbol holds no more digits than this.
constexpr std::size_t MaxLength = 3116;

bool IsAsked(Size const& size, DMSize wanted, unsigned aspect) {
    return wanted == DMSize{} ? (size.rows != size.columns) == (aspect == Rectangle)
                              : size.rows == wanted.rows && size.columns == wanted.columns;
}

/// Appends the check codewords. Codeword p of the symbol belongs to block p modulo the number of blocks.
void AppendErrorCorrection(std::vector<std::uint8_t>& codewords, Size const& size) {
    constexpr unsigned Polynomial = 0x12D, FirstRoot = 1, MostChecks = 68;
    std::array<std::uint8_t, MostChecks> room{};
    std::span const checks(room.data(), size.errorCorrection / size.blocks);
    ReedSolomon<Polynomial, FirstRoot, MostChecks> const code(checks.size());
    codewords.resize(size.data + size.errorCorrection);
    for (std::size_t block = 0; block < size.blocks; ++block) {
        code.Check(std::span(codewords).subspan(block, size.data - block), size.blocks, checks);
        // In 144 x 144 the data end amid a round of the blocks, two of which are a codeword shorter.
        std::size_t p = size.data;
        while (p % size.blocks != block) ++p;
        for (std::uint8_t const check : checks) {
            codewords[p] = check;
            p += size.blocks;
        }
    }
}

/// Fills the data codewords up, the second pad and those behind it randomised by their places (ISO/IEC 16022, B.1).
void PadTo(std::vector<std::uint8_t>& codewords, std::size_t count) {
    constexpr unsigned Pad = 129;
    if (codewords.size() < count) codewords.push_back(Pad);
    while (codewords.size() < count) {
        auto const value = static_cast<unsigned>(Pad + 149 * (codewords.size() + 1) % 253 + 1);
        codewords.push_back(static_cast<std::uint8_t>(value > 254 ? value - 254 : value));
    }
}

/// The data modules, each region in a frame of a solid L and alternating sides.
Model::MatrixBarcodeModel Assemble(std::vector<std::uint8_t> const& codewords, Size const& size) {
    constexpr std::uint64_t EveryOther = 0x5555555555555555;
    unsigned const regionRows = size.rows / size.regionsDown;
    unsigned const regionColumns = size.columns / size.regionsAcross;
    std::uint64_t const all = (std::uint64_t{1} << regionColumns) - 1;
    auto const modules =
        PlaceDataMatrix(codewords, size.rows - 2 * size.regionsDown, size.columns - 2 * size.regionsAcross);
    Model::MatrixBarcodeModel model(size.rows, size.columns);
    auto const* module = modules.data();
    for (unsigned r = 0; r < size.rows; ++r) {
        unsigned const inRow = r % regionRows;
        for (unsigned left = 0; left < size.columns; left += regionColumns) {
            std::uint64_t dark = 1 | std::uint64_t{inRow % 2} << (regionColumns - 1);
            if (inRow == 0) {
                dark = EveryOther & all;
            } else if (inRow == regionRows - 1) {
                dark = all;
            } else {
                for (unsigned c = 1; c < regionColumns - 1; ++c) dark |= std::uint64_t{*module++} << c;
            }
            DarkenCells(model.GetCells()[r], left, dark);
        }
    }
    return model;
}

}  // namespace

ValidationStatus DataMatrix200Encoder::Validate(std::string const& text, DMSize size, char, unsigned) {
    bool const isKnown = size == DMSize{} || std::any_of(std::begin(Sizes), std::end(Sizes), [&](Size const& known) {
                             return known.rows == size.rows && known.columns == size.columns;
                         });
    if (!isKnown) return ValidationStatus::InvalidParameter;
    if (text.empty()) return ValidationStatus::TooShort;
    return text.size() > 4 * MaxLength ? ValidationStatus::TooLong : ValidationStatus::Valid;
}

Model::MatrixBarcodeModel DataMatrix200Encoder::Encode(std::string const& text, DMSize wanted, char escape,
                                                       unsigned aspect) {
    auto const tokens = ReadDataMatrixTokens(text, escape);
    if (tokens.empty() || tokens.size() > MaxLength) return {0, 0};
    DataMatrixWays const ways(tokens);
    for (auto const& size : Sizes) {
        auto const way = IsAsked(size, wanted, aspect) ? ways.Into(size.data) : std::nullopt;
        if (!way) continue;
        auto codewords = DataMatrixCodewords(tokens, *way, size.data);
        PadTo(codewords, size.data);
        AppendErrorCorrection(codewords, size);
        return Assemble(codewords, size);
    }
    return {0, 0};
}

}  // namespace Barcode::Encoder
