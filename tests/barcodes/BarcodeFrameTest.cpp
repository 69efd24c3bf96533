#include "barcodes/frame/LinearFrame.h"

#include <gtest/gtest.h>

#include <sstream>

#include "../support/FieldBench.h"
#include "barcodes/frame/BarcodeArithmetic.h"
#include "barcodes/frame/SymbolFrame.h"

using namespace ZplCore;
using Barcode::Model::Block;

namespace {

/// A symbology of its own for tests: a digit n is n narrow bars and a wide space; digits only.
std::unique_ptr<Barcode::Model::LinearBarcodeModel> EncodeDigits(std::string const& text) {
    std::vector<Block> blocks;
    for (char const c : text) {
        for (char n = '0'; n < c; ++n) blocks.push_back(Block::NarrowBar());
        blocks.emplace_back(true, false);
    }
    return std::make_unique<Barcode::Model::LinearBarcodeModel>(text, blocks, "7");
}

BarcodeStatus ValidateDigits(std::string const& text) {
    return text.find_first_not_of("0123456789") == std::string::npos ? BarcodeStatus::Valid
                                                                     : BarcodeStatus::InvalidCharacter;
}

std::string OnlyDigits(std::string text) {
    std::erase_if(text, [](char c) { return c < '0' || c > '9'; });
    return text;
}

std::string AppendCheckDigit(std::string const& data, std::string const& check) { return data + check; }

/// Draws a field of the test symbology behind `stream`.
std::string Draw(FieldBench& bench, std::string const& stream, bool above = false, BarcodeTransform repair = OnlyDigits,
                 bool line = true) {
    bench.processor.set(ContextProcessor::ElementContext, ZplContextKeys::FieldRenderFunction,
                        LinearBarcodeRenderFunction(line, above, ValidateDigits, EncodeDigits, AppendCheckDigit, {},
                                                    std::move(repair)));
    return bench.Run(stream + "^FS");
}

ZplContextKeys::RenderFunction const RenderSimple = [](ContextProcessor& processor) {
    RenderSimpleBarcode(processor, std::vector<std::uint8_t>(3 * 16), 24, 16, 24);
};

TEST(BarcodeFrame, DrawsTheSymbolAndItsLine) {
    FieldBench bench;
    // 3 narrow bars of 2 and 2 wide spaces of 6 dots; the line of 3 characters of 10, magnified by 2.
    EXPECT_EQ(Draw(bench, "^BY2,3,50^FO100,40^FD12"), "image 100,40 18x50 from 18x50 pixels\ntext 79,96 '127' A 2x2\n");
    EXPECT_EQ(bench.Next(), "118,89");
    EXPECT_EQ(bench.target->lastImage[0], 0b11000000);
    EXPECT_EQ(bench.target->lastImage[1], 0b11110000);
    EXPECT_EQ(Draw(bench, "^FO100,140^FD12", true), "image 100,140 18x50 from 18x50 pixels\ntext 79,92 '127' A 2x2\n");
    EXPECT_EQ(Draw(bench, "^FO100,40^FD12", false, OnlyDigits, false), "image 100,40 18x50 from 18x50 pixels\n");
}

TEST(BarcodeFrame, SketchesForThePrintersPixels) {
    FieldBench bench(300, 600);
    EXPECT_EQ(Draw(bench, "^BY2,3,50^FO100,40^FD12", false, OnlyDigits, false),
              "image 100,40 18x50 from 36x100 pixels\n");
}

TEST(BarcodeFrame, TellsTheTargetWhatIsVariableAndReversed) {
    FieldBench bench;
    EXPECT_EQ(Draw(bench, "^BY2,3,50^FR^FO100,40^FV12"),
              "image 100,40 18x50 from 18x50 pixels reverse variable\ntext 79,96 '127' A 2x2 reverse variable\n");
    EXPECT_EQ(Draw(bench, "^FO100,40^FD12", false, OnlyDigits, false), "image 100,40 18x50 from 18x50 pixels\n");
    bench.processor.set(ContextProcessor::ElementContext, ZplContextKeys::FieldRenderFunction, RenderSimple);
    EXPECT_EQ(bench.Run("^FO100,40^FVx^FS"), "image 100,40 24x16 from 24x16 pixels variable\n");
    // The error of a symbol is a part of its field.
    EXPECT_EQ(bench.Run("^FO100,40^BXN,4,0,10^FDx^FS"),
              "rect 109,49 to 221,67 thickness 18\ntext 100,48 ' INVALID - P ' D 1x1 white\n");
    EXPECT_EQ(bench.Run("^FO100,40^BXN,4,0,10^FVx^FS"),
              "rect 109,49 to 221,67 thickness 18 variable\ntext 100,48 ' INVALID - P ' D 1x1 white variable\n");
}

TEST(BarcodeFrame, TurnsTheSymbolWithItsLine) {
    FieldBench bench;
    bench.Run("^BY2,3,50");
    EXPECT_EQ(Draw(bench, "^FWR^FO100,200^FD12"),
              "image 100,200 18x50 from 18x50 pixels turned 90\ntext 54,179 '127' A 2x2 turned 90\n");
    EXPECT_EQ(Draw(bench, "^FWI^FO100,200^FD12"),
              "image 100,200 18x50 from 18x50 pixels turned 180\ntext 80,154 '127' A 2x2 turned 180\n");
    EXPECT_EQ(Draw(bench, "^FWB^FO100,200^FD12"),
              "image 100,200 18x50 from 18x50 pixels turned 270\ntext 156,180 '127' A 2x2 turned 270\n");
    EXPECT_EQ(Draw(bench, "^FWN^FT100,200^FD12").substr(0, 14), "image 100,151 ");
    EXPECT_EQ(Draw(bench, "^FWN,1^FO100,200^FD12").substr(0, 13), "image 82,200 ");
}

TEST(BarcodeFrame, RepairsRefusedData) {
    FieldBench bench;
    // The line shows the data as they came.
    EXPECT_EQ(Draw(bench, "^BY2,3,50^FO100,40^FD1x2"),
              "image 100,40 18x50 from 18x50 pixels\ntext 69,96 '1x27' A 2x2\n");
    EXPECT_EQ(
        bench.reports[0],
        "a barcode is made of \"12\" in place of the data \"1x2\": the symbology has not all of their characters");
    EXPECT_EQ(Draw(bench, "^FO100,40^FD1x2", false, {}), "");
    EXPECT_EQ(bench.reports.size(), 2U);
}

TEST(BarcodeFrame, DrawsTheErrorWithValidation) {
    FieldBench bench;
    // A text of 130 x 20 in a box of 36: the bar is 18 thick, centred on (9, 9) to (121, 27).
    EXPECT_EQ(Draw(bench, "^CVY^FO100,40^FD1x2"),
              "rect 109,49 to 221,67 thickness 18\ntext 100,48 ' INVALID - C ' D 1x1 white\n");
    EXPECT_EQ(bench.Next(), "100,40");
    EXPECT_EQ(Draw(bench, "^FWR^FO100,40^FD1x2"),
              "rect 126,49 to 108,161 thickness 18\ntext 108,40 ' INVALID - C ' D 1x1 turned 90 white\n");
    EXPECT_EQ(Draw(bench, "^CVx^FWN^FO100,40^FD1x2", false, {}), "");  // anything but yes switches it off
    EXPECT_EQ(bench.reports.size(), 3U);
}

/// The places of what was drawn, and that of the next field.
std::string Places(FieldBench const& bench, std::string const& drawn) {
    std::istringstream calls(drawn);
    std::string places;
    for (std::string kind, place, rest; calls >> kind >> place && std::getline(calls, rest);) places += place + " ";
    return places + "next " + bench.Next();
}

TEST(BarcodeFrame, PlacesInEveryOrientation) {
    struct {
        char const* origin;
        char const* linear;  ///< a symbol of 18 x 50 dots and its line
        char const* simple;  ///< a symbol of 24 x 16 dots
    } const rows[] = {
        {"^FWN^FO500,400,0", "500,400 479,456 next 518,449", "500,400 next 524,415"},
        {"^FWR^FO500,400,0", "500,400 454,379 next 500,418", "500,400 next 500,424"},
        {"^FWI^FO500,400,0", "500,400 480,354 next 500,400", "500,400 next 500,400"},
        {"^FWB^FO500,400,0", "500,400 556,380 next 549,400", "500,400 next 515,400"},
        {"^FWN^FO500,400,1", "482,400 461,456 next 482,449", "476,400 next 476,415"},
        {"^FWR^FO500,400,1", "451,400 405,379 next 451,400", "485,400 next 485,400"},
        {"^FWI^FO500,400,1", "482,400 462,354 next 500,400", "476,400 next 500,400"},
        {"^FWB^FO500,400,1", "450,400 506,380 next 500,418", "484,400 next 500,424"},
        {"^FWN^FT500,400,0", "500,351 479,407 next 518,400", "500,385 next 524,400"},
        {"^FWR^FT500,400,0", "500,400 454,379 next 500,418", "500,400 next 500,424"},
        {"^FWI^FT500,400,0", "482,400 462,354 next 482,400", "476,400 next 476,400"},
        {"^FWB^FT500,400,0", "451,382 507,362 next 500,382", "485,376 next 500,376"},
        {"^FWN^FT500,400,1", "482,351 461,407 next 482,400", "476,385 next 476,400"},
        {"^FWR^FT500,400,1", "500,382 454,361 next 500,382", "500,376 next 500,376"},
        {"^FWI^FT500,400,1", "500,400 480,354 next 518,400", "500,400 next 524,400"},
        {"^FWB^FT500,400,1", "451,400 507,380 next 500,418", "485,400 next 500,424"},
    };
    for (auto const& [origin, linear, simple] : rows) {
        FieldBench bench;
        std::string const drawn = Draw(bench, "^BY2,3,50" + std::string(origin) + "^FD12");
        EXPECT_EQ(Places(bench, drawn), linear) << origin;
        FieldBench other;
        other.processor.set(ContextProcessor::ElementContext, ZplContextKeys::FieldRenderFunction, RenderSimple);
        std::string const image = other.Run(std::string(origin) + "^FS");
        EXPECT_EQ(Places(other, image), simple) << origin;
    }
}

TEST(BarcodeFrame, WideBars) {
    EXPECT_EQ(ComputeWideBarWidth(2, 2.5F), 5U);
    EXPECT_EQ(ComputeWideBarWidth(3, 2.5F), 7U);
    EXPECT_EQ(ComputeWideBarWidth(1, 3.0F), 3U);
    EXPECT_EQ(ComputeWideBarWidth(0, 3.0F), 0U);
    for (unsigned n = 1; n <= 100; ++n) EXPECT_NEAR(ComputeWideBarWidth(n, 2.3F), n * 2.3, 1.0);
}

TEST(BarcodeFrame, Ratios) {
    struct Row {
        std::string text;
        float ratio;
    };
    Row const rows[] = {{"2.567", 2.5F}, {"3.01", 3.0F},    {"", 0},         {"abc", 0},  {".5", 0}, {"2", 2},
                        {"2.", 2},       {"25.75", 25.75F}, {"2.5x9", 2.5F}, {"2..5", 2}, {"-2", 0}};
    for (auto const& row : rows) EXPECT_FLOAT_EQ(ParseRatio(row.text), row.ratio) << row.text;
    EXPECT_TRUE(CheckRatio(2.0F) && CheckRatio(3.0F));
    EXPECT_FALSE(CheckRatio(1.9F) || CheckRatio(3.1F));
}

TEST(BarcodeFrame, Magnifications) {
    EXPECT_EQ(ClampMagnificationFactor(Scripting::Dpi(300), 0, 1), 3U);
    EXPECT_EQ(ClampMagnificationFactor(Scripting::Dpi(600), 0, 1), 6U);
    EXPECT_EQ(ClampMagnificationFactor(Scripting::Dpi(203), 0, 1), 0U);
    EXPECT_EQ(ClampMagnificationFactor(Scripting::Dpi(203), 99, 1), 10U);
    EXPECT_EQ(ClampMagnificationFactor(Scripting::Dpi(203), 7, 1), 7U);
    EXPECT_EQ(ClampBarcodeHeight(0), 1U);
}

TEST(BarcodeFrame, GuardsAndCheckDigit) {
    EXPECT_EQ(AddGuardsAndAppendCheckDigit(true, '*', '+', ConvertToUpper)("ab1", "Z"), "*AB1Z+");
    EXPECT_EQ(AddGuardsAndAppendCheckDigit(false, '*', '*', {})("ab1", "Z"), "*ab1*");
}

}  // namespace
