#include <gtest/gtest.h>

#include "../support/LibrarySymbol.h"
#include "../support/RandomText.h"
#include "../support/SymbolReader.h"
#include "Barcode/Encoder/PDF417Encoder.h"
#include "printengine/src/barcode/PDF417Compaction.h"

using namespace Barcode::Encoder;

namespace {

constexpr unsigned Columns = 12, Security = 1;

/// The rows that the library needs for so many columns, 0 if it cannot.
std::size_t LibraryRows(std::string const& text) {
    auto const rows = LibrarySymbol(text, {BARCODE_PDF417, Security, Columns});
    return !rows.empty() && rows[0].size() == 17 * Columns + 69 ? rows.size() : 0;
}

std::string Read(Barcode::Model::StackedBarcodeModel const& model) {
    std::vector<std::vector<bool>> cells;
    for (auto const& row : model.GetBlocks()) {
        cells.emplace_back();
        for (auto const block : row) cells.back().push_back(block.black);
    }
    return ReadCells(cells, ZXing::BarcodeFormat::PDF417, 9);
}

TEST(PDF417, NoSymbolIsLargerThanTheLibrarysAndAllAreRead) {
    std::mt19937 random(37);
    for (int i = 0; i < RandomTextCount(300); ++i) {
        std::string const text = RandomText(random, i % 10 == 0 ? 900 : 60);
        auto const model = PDF417Encoder::Encode(text, Security, Columns, 0, false);
        std::size_t const rows = LibraryRows(text);
        ASSERT_TRUE(rows == 0 || (model.GetRows() != 0 && model.GetRows() <= rows)) << i;
        ASSERT_TRUE(model.GetRows() == 0 || Read(model) == text) << i;
    }
}

TEST(PDF417, TakesTheFewestCodewords) {
    struct {
        std::string text;
        std::size_t codewords;
    } const rows[] = {
        {"ABCDEF", 3},
        {"ABCDE\351F", 6},  // a latch, and a byte of its own for each
        {"ABCDEFGHIJ\xE9"
         "KLMNOPQRST",
         12},  // a byte between texts
        {std::string(44, '7'), 16},
        {std::string(45, '7'), 17},
        {CharacterRange(0, 8) + CharacterRange(14, 31), 1 + 4 * 5 + 3},  // controls as bytes
        {CharacterRange(128, 139), 11},
    };
    for (auto const& [text, codewords] : rows)
        EXPECT_EQ(CompactPDF417(text, PDF417Start::Text).size(), codewords) << text;
}

/// How a text is laid out where sides are open.
TEST(PDF417, Shapes) {
    struct {
        std::size_t digits;
        unsigned security, columns, rows;
        std::size_t drawnColumns, drawnRows;  ///< 0 if the text does not fit
    } const rows[] = {
        {190, 0, 0, 0, 6, 12},  // a latch, 65 codewords, the length and two checks
        {190, 0, 0, 23, 3, 23}, {190, 0, 3, 30, 3, 30},  {190, 0, 3, 22, 0, 0},
        {1, 0, 0, 0, 1, 4},     {2710, 0, 0, 0, 16, 58},  // all the 928 codewords that there can be
        {2710, 1, 0, 0, 0, 0},  {1200, 8, 0, 0, 21, 44}, {400, 0, 1, 0, 0, 0},  // more than 90 rows
    };
    for (auto const& row : rows) {
        auto const model =
            PDF417Encoder::Encode(std::string(row.digits, '7'), row.security, row.columns, row.rows, false);
        EXPECT_EQ(model.GetRows(), row.drawnRows) << row.digits;
        if (row.drawnRows == 0) continue;
        EXPECT_EQ(model.GetBlocks()[0].size(), 17 * row.drawnColumns + 69) << row.digits;
        EXPECT_EQ(Read(model), std::string(row.digits, '7')) << row.digits;
    }
}

}  // namespace
