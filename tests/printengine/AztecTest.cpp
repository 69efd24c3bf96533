#include <gtest/gtest.h>

#include "../support/LibrarySymbol.h"
#include "../support/RandomText.h"
#include "../support/SymbolReader.h"
#include "Barcode/Encoder/AztecEncoder.h"

using namespace Barcode::Encoder;

namespace {

using Cells = std::vector<std::vector<bool>>;

/// The library's symbol, empty if it has none.
Cells Library(int symbology, std::string const& text) {
    Cells cells;
    for (auto const& row : LibrarySymbol(text, {symbology})) {
        cells.emplace_back();
        for (char const module : row) cells.back().push_back(module == '#');
    }
    return cells;
}

std::string Read(Barcode::Model::MatrixBarcodeModel const& model) {
    return ReadCells(model.GetCells(), ZXing::BarcodeFormat::Aztec);
}

AztecOptions Sized(unsigned size) {
    AztecOptions options;
    options.size = size;
    return options;
}

TEST(Aztec, NoSymbolIsLargerThanTheLibrarysAndAllAreRead) {
    std::mt19937 random(41);
    for (int i = 0; i < RandomTextCount(400); ++i) {
        std::string text = RandomText(random, i % 20 == 0 ? 1700 : 60);
        // The decoder takes it for an FNC1 at the start.
        std::erase(text, '\x1D');
        auto const model = AztecEncoder::Encode(text, {});
        auto const library = Library(BARCODE_AZTEC, text);
        ASSERT_TRUE(library.empty() || model.GetCells().size() <= library.size()) << i;
        ASSERT_TRUE(text.empty() || Read(model) == text) << i;
    }
}

TEST(Aztec, RunesAreTheLibrarys) {
    for (int value = 0; value < 256; ++value) {
        auto const text = std::to_string(value);
        EXPECT_EQ(AztecEncoder::Encode(text, Sized(300)).GetCells(), Library(BARCODE_AZRUNE, text)) << value;
    }
}

TEST(Aztec, Sizes) {
    std::string mixed;
    for (unsigned i = 0; i < 2400; ++i) mixed += static_cast<char>(i * i / 7 + i * 89);
    struct {
        std::string text;
        unsigned size;
        std::size_t side;  ///< 0 if the text does not fit
    } const rows[] = {
        {"ABCDEFGHIJKLM", 0, 15},  // eleven codewords of seventeen
        {"ABCDEFGHIJKLMN", 0, 19},
        {"ABCDEFGHIJKLM", 50, 19},
        {"ABCDEFGHIJKLM", 90, 37},
        {"ABCDEFGHIJKLMNOP", 101, 15},  // all but three codewords
        {"ABCDEFGHIJKLMNOPQ", 101, 0},
        {"A", 104, 27},
        {"A", 201, 19},
        {"A", 204, 31},
        {"A", 205, 37},
        {"A", 232, 151},
        {mixed.substr(0, 1500), 0, 135},
        {mixed.substr(0, 1914), 0, 151},
        {mixed.substr(0, 1930), 0, 0},
        {mixed, 232, 151},  // more bytes than a run has
        {std::string(3832, '7'), 0, 151},
    };
    for (auto const& [text, size, side] : rows) {
        auto const model = AztecEncoder::Encode(text, Sized(size));
        EXPECT_EQ(model.GetCells().size(), side) << text.substr(0, 20) << text.size() << " in " << size;
        EXPECT_TRUE(side == 0 || Read(model) == text) << text.substr(0, 20) << text.size() << " in " << size;
    }
    // Symbols that set readers up keep a bit of the length free for the mark.
    AztecOptions setUp;
    setUp.readerSetUp = true;
    EXPECT_EQ(AztecEncoder::Encode("ABCDEFGHIJKLMN", setUp).GetCells().size(), 19U);
    EXPECT_EQ(AztecEncoder::Encode(mixed.substr(0, 1000), setUp).GetCells().size(), 0U);
}

}  // namespace
