#include "barcodes/frame/GraphicHelper.h"

#include <gtest/gtest.h>

#include <random>

using namespace Scripting;
using Barcode::Model::Block;
using Barcode::Model::LinearBarcodeModel;
using Barcode::Model::MatrixBarcodeModel;
using Barcode::Model::StackedBarcodeModel;

namespace {

/// A bitmap as rows of `#` and `.`.
std::string Dump(SketchedBitmap const& bitmap) {
    std::string text;
    std::size_t const stride = (bitmap.bitmapWidth + 7) / 8;
    for (std::size_t y = 0; y < bitmap.bitmapHeight; ++y) {
        for (std::size_t x = 0; x < stride * 8; ++x) {
            bool const isSet = ((*bitmap.rows)[y * stride + x / 8] & 0x80U >> x % 8) != 0;
            if (x < bitmap.bitmapWidth) text += isSet ? '#' : '.';
            EXPECT_FALSE(isSet && x >= bitmap.bitmapWidth) << "ink right of the bitmap";
        }
        text += '\n';
    }
    return text;
}

/// `N` and `W` are narrow and wide bars, `n` and `w` spaces.
std::vector<Block> Blocks(std::string_view text) {
    std::vector<Block> blocks;
    for (char const c : text) blocks.emplace_back(c == 'W' || c == 'w', c == 'N' || c == 'W');
    return blocks;
}

std::string Sizes(SketchedBitmap const& b) {
    return std::to_string(b.logicalWidth) + "x" + std::to_string(b.logicalHeight) + " dots, " +
           std::to_string(b.bitmapWidth) + "x" + std::to_string(b.bitmapHeight) + " pixels";
}

TEST(GraphicHelper, LinearBarcode) {
    LinearBarcodeModel const model("", Blocks("NwWnN"));
    auto const plain = GraphicHelper::SketchLinearBarcode(model, 1, 3, 2, Dpi(300), 300);
    EXPECT_EQ(Dump(plain), "#...###.#\n#...###.#\n");
    // Narrow and wide are scaled each for itself, so that all bars of a kind stay equal.
    auto const doubled = GraphicHelper::SketchLinearBarcode(model, 3, 7, 5, Dpi(600), 300);
    EXPECT_EQ(Sizes(doubled), "23x5 dots, 46x10 pixels");
    auto const odd = GraphicHelper::SketchLinearBarcode(model, 1, 3, 1, Dpi(300), 203);
    EXPECT_EQ(Sizes(odd), "9x1 dots, 11x1 pixels");
    EXPECT_EQ(Dump(odd), "#....####.#\n");
}

TEST(GraphicHelper, EmptySymbols) {
    EXPECT_EQ(Sizes(GraphicHelper::SketchLinearBarcode(LinearBarcodeModel(""), 2, 4, 50, Dpi(203), 203)),
              "0x50 dots, 0x50 pixels");
    LinearBarcodeModel const bar("", Blocks("N"));
    EXPECT_EQ(Sizes(GraphicHelper::SketchLinearBarcode(bar, 2, 4, 0, Dpi(203), 203)), "2x0 dots, 2x0 pixels");
    EXPECT_EQ(Sizes(GraphicHelper::SketchLinearBarcode(bar, 0, 0, 9, Dpi(203), 203)), "0x9 dots, 0x9 pixels");
    EXPECT_EQ(Sizes(GraphicHelper::SketchMatrixBarcode(MatrixBarcodeModel(0, 0), 2, Dpi(203), 203)),
              "0x0 dots, 0x0 pixels");
    EXPECT_EQ(Sizes(GraphicHelper::SketchStackedBarcode(StackedBarcodeModel(0, 0), 2, 3, Dpi(203), 203)),
              "0x0 dots, 0x0 pixels");
}

TEST(GraphicHelper, HugeSymbolsThrow) {
    LinearBarcodeModel const bar("", Blocks("NWNWN"));
    EXPECT_THROW(GraphicHelper::SketchLinearBarcode(bar, 4294967295U, 4294967295U, 4294967295U, Dpi(600), 203),
                 std::length_error);
    EXPECT_THROW(GraphicHelper::SketchMatrixBarcode(MatrixBarcodeModel(200, 200), 4000000, Dpi(203), 203),
                 std::length_error);
}

TEST(GraphicHelper, StackedBarcodeClipsItsRowsToTheFirst) {
    StackedBarcodeModel model(2, 3);
    model.GetBlocks() = {Blocks("NwN"), Blocks("nNWN")};
    auto const bitmap = GraphicHelper::SketchStackedBarcode(model, 2, 2, Dpi(203), 203);
    EXPECT_EQ(Sizes(bitmap), "8x4 dots, 8x4 pixels");
    EXPECT_EQ(Dump(bitmap), "##....##\n##....##\n..######\n..######\n");
}

TEST(GraphicHelper, MatrixAgreesWithDotByDotPainting) {
    std::mt19937 random(3);
    for (int round = 0; round < 50; ++round) {
        unsigned const rows = 1 + random() % 12;
        unsigned const columns = 1 + random() % 40;
        unsigned const cell = 1 + random() % 7;
        MatrixBarcodeModel model(rows, columns);
        std::string expected;
        for (auto& row : model.GetCells()) {
            std::string line;
            for (std::size_t c = 0; c < columns; ++c) {
                row[c] = random() % 2 == 0;
                line.append(cell, row[c] ? '#' : '.');
            }
            for (unsigned i = 0; i < cell; ++i) expected += line + '\n';
        }
        ASSERT_EQ(Dump(GraphicHelper::SketchMatrixBarcode(model, cell, Dpi(203), 203)), expected);
    }
}

TEST(GraphicHelper, ClearsRectangles) {
    std::mt19937 random(5);
    for (int round = 0; round < 500; ++round) {
        unsigned const x = random() % 30;
        unsigned const y = random() % 6;
        unsigned const width = random() % 30;
        unsigned const height = random() % 6;
        SketchedBitmap bitmap{0, 0, 24, 4, std::make_unique<std::vector<std::uint8_t>>(12, 0xFF)};
        Detail::ClearRectangleInBitmap(*bitmap.rows, x, y, width, height, 3);
        std::string expected;
        for (unsigned row = 0; row < 4; ++row) {
            for (unsigned column = 0; column < 24; ++column)
                expected += column >= x && column < x + width && row >= y && row < y + height ? '.' : '#';
            expected += '\n';
        }
        ASSERT_EQ(Dump(bitmap), expected) << x << "," << y << " " << width << "x" << height;
    }
}

}  // namespace
