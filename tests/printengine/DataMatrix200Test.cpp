#include <gtest/gtest.h>
#include <zint.h>

#include <cstdlib>
#include <memory>
#include <random>

#include "Barcode/Encoder/DataMatrix200Encoder.h"
#include "../support/SymbolReader.h"

using namespace Barcode::Encoder;

namespace {

constexpr char Escape = '~';

/// The side of the library's square, 0 if it has none for the data.
std::size_t LibrarySide(std::string const& data, bool isGs1) {
    std::unique_ptr<zint_symbol, void (*)(zint_symbol*)> const symbol(ZBarcode_Create(), ZBarcode_Delete);
    symbol->symbology = BARCODE_DATAMATRIX;
    symbol->option_3 = DM_SQUARE;
    symbol->input_mode = isGs1 ? GS1_MODE | GS1NOCHECK_MODE : DATA_MODE;
    int const result = ZBarcode_Encode(symbol.get(), reinterpret_cast<unsigned char const*>(data.data()),
                                       static_cast<int>(data.size()));
    return result < ZINT_ERROR ? static_cast<std::size_t>(symbol->rows) : 0;
}

std::string Range(unsigned first, unsigned last) {
    std::string characters;
    for (unsigned c = first; c <= last; ++c) characters += static_cast<char>(c);
    return characters;
}

std::string const Capitals = Range('A', 'Z');
std::string const Digits = Range('0', '9');
/// Without the escape character.
std::string const Ascii = Range(0, 125);
std::string const Alphabets[] = {
    Capitals,        Capitals + ".,-/ ", Capitals + Digits + "\r*> ",
    Digits,          Range(' ', '^'),    Range('a', 'z') + " ",
    Ascii,           Range(128, 255),    Digits + "AB",
    Digits + "\xE9", Range('!', '/'),    Range(0, 31),
};

/// Runs of random alphabets.
std::string RandomText(std::mt19937& random, std::size_t longest) {
    std::string text;
    std::size_t const length = 1 + random() % longest;
    for (auto const* alphabet = &Alphabets[0]; text.size() < length;) {
        if (text.empty() || random() % 12 == 0) alphabet = &Alphabets[random() % std::size(Alphabets)];
        text += (*alphabet)[random() % alphabet->size()];
    }
    return text;
}

std::string Read(Barcode::Model::MatrixBarcodeModel const& model) {
    return ReadCells(model.GetCells(), ZXing::BarcodeFormat::DataMatrix);
}

/// ZPL_TEST_SYMBOLS asks for more texts than fit into every run.
TEST(DataMatrix200, NoSymbolIsLargerThanTheLibrarysAndAllAreRead) {
    char const* const wanted = std::getenv("ZPL_TEST_SYMBOLS");
    int const count = wanted != nullptr ? std::atoi(wanted) : 500;
    std::mt19937 random(29);
    for (int i = 0; i < count; ++i) {
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
            for (auto& c : value) c = (random() % 3 == 0 ? Capitals : Digits)[random() % 10];
            elements += "[10]" + value;
            sent += "~110" + value;
            read += (read.empty() ? "10"
                                  : "\x1D"
                                    "10") +
                    value;
        }
        auto const model = DataMatrix200Encoder::Encode(sent, {}, Escape, 1);
        ASSERT_LE(model.GetCells().size(), LibrarySide(elements, true)) << sent;
        ASSERT_EQ(Read(model), read) << sent;
    }
}

/// How texts end where little or nothing is left of the symbol.
TEST(DataMatrix200, Ends) {
    std::string const bytes = Range(128, 255) + Range(128, 255) + Range(128, 255);
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
