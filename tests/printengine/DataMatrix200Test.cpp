#include <gtest/gtest.h>

#include <random>

#include "../support/LibrarySymbol.h"
#include "../support/RandomText.h"
#include "../support/SymbolReader.h"
#include "Barcode/Encoder/DataMatrix200Encoder.h"

using namespace Barcode::Encoder;

namespace {

constexpr char Escape = '~';

/// The side of the library's square, 0 if it has none for the data.
std::size_t LibrarySide(std::string const& data, bool isGs1) {
    int const mode = isGs1 ? GS1_MODE | GS1NOCHECK_MODE : DATA_MODE;
    return LibrarySymbol(data, {BARCODE_DATAMATRIX, 0, 0, DM_SQUARE, mode}).size();
}

std::string Read(Barcode::Model::MatrixBarcodeModel const& model) {
    return ReadCells(model.GetCells(), ZXing::BarcodeFormat::DataMatrix);
}

TEST(DataMatrix200, NoSymbolIsLargerThanTheLibrarysAndAllAreRead) {
    std::mt19937 random(29);
    for (int i = 0; i < RandomTextCount(500); ++i) {
        std::string const text = RandomText(random, i % 10 == 0 ? 400 : 40);
        auto const model = DataMatrix200Encoder::Encode(text, {}, Escape, 1);
        ASSERT_LE(model.GetCells().size(), LibrarySide(text, false)) << i;
        ASSERT_EQ(Read(model), text) << i;
    }
}

TEST(DataMatrix200, ElementStringsOfGs1) {
    std::mt19937 random(31);
    for (int i = 0; i < 60; ++i) {
        std::string elements, sent, read;
        for (unsigned n = 1 + random() % 3; n > 0; --n) {
            std::string value(1 + random() % 12, ' ');
            for (auto& c : value) c = "0123456789ABCDE"[random() % 15];
            elements += "[10]" + value;
            sent += "~110" + value;
            read += (read.empty() ? "10" : "\03510") + value;
        }
        auto const model = DataMatrix200Encoder::Encode(sent, {}, Escape, 1);
        ASSERT_LE(model.GetCells().size(), LibrarySide(elements, true)) << sent;
        ASSERT_EQ(Read(model), read) << sent;
    }
}

/// How texts end where little or nothing is left of the symbol.
TEST(DataMatrix200, Ends) {
    std::string const bytes = CharacterRange(128, 255);
    auto const binary = [&](std::size_t length) {
        std::string text;
        while (text.size() < length) text += bytes;
        return text.substr(0, length);
    };
    struct {
        std::string text;
        DMSize size;
        std::size_t side;  ///< 0 if the text does not fit
    } const rows[] = {
        {"ABC", {}, 10},              // one group and its latch
        {"ABCDE", {}, 12},            // the last value of the last group is lacking
        {"ABCDEFGHI1", {}, 14},       // one codeword is left for ASCII
        {"ABCDEFGHI12", {}, 14},      // also for a pair
        {"ABC*DEF>G", {14, 14}, 14},  // X12 to the end
        {"A.B.C.D.E.F.G.", {}, 16},   // EDIFACT, and two codewords of ASCII
        {"A.B.C.D.E.F.G.H", {}, 18},
        {"A.B.C.D.", {12, 12}, 0},
        {binary(1), {}, 10},
        {binary(249), {64, 64}, 64},
        {binary(250), {64, 64}, 64},
        {binary(278), {}, 64},
        {binary(279), {}, 72},
        {binary(1555), {}, 144},
        {binary(1556), {}, 144},
        {binary(1557), {}, 0},
        {std::string(3116, '7'), {}, 144},
        {std::string(3117, '7'), {}, 0},
        {std::string(2335, 'Q'), {}, 144},
        {std::string(2335, 'q'), {}, 144},
        {std::string(2337, 'Q'), {}, 0},
    };
    for (auto const& [text, size, side] : rows) {
        auto const model = DataMatrix200Encoder::Encode(text, size, Escape, 1);
        EXPECT_EQ(model.GetCells().size(), side) << text.size() << " " << text.substr(0, 20);
        if (side == 0) continue;
        EXPECT_EQ(Read(model), text) << text.size() << " " << text.substr(0, 20);
    }
}

}  // namespace
