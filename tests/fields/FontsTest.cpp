#include "fields/text/Fonts.h"

#include <gtest/gtest.h>

#include "../support/FieldBench.h"
#include "fields/text/TrueTypeUtils.h"

using namespace ZplCore;

namespace {

/// The font, as it is drawn, of a field with an `x` at the origin.
std::string FontOf(FieldBench& bench, std::string const& stream) {
    std::string const drawn = bench.Run(stream + "^FO0,0^FDx^FS");
    auto const begin = drawn.find("'x' ") + 4;
    return drawn.substr(begin, drawn.find('\n') - begin);
}

struct FontRow {
    unsigned dpi;
    char const* stream;
    char const* expected;
};

constexpr FontRow Rows[] = {
    {203, "", "A 1x1"},
    {203, "^ADN,36,20", "D 2x2"},
    {203, "^ADN,500,500", "D 10x10"},
    {203, "^ADN,1,1", "D 1x1"},
    {203, "^ADN,45", "D 3x3"},  // 2.5 rounds away from zero, and the width follows
    {203, "^ADN,,30", "D 3x3"},
    {203, "^ADN,-36,20", "D 2x2"},  // a sign is lost
    {203, "^AEN", "E 1x1"},
    {600, "^AEN", "E 2x2"},
    {600, "^ADN", "D 1x1"},
    {600, "^AEN,82,40", "E 2x2"},
    {203, "^A0N,5,5", "cell10x10"},
    {203, "^A0N,40", "cell40x40"},
    {203, "^A0N,,30", "cell30x30"},
    {203, "^A0N,40,20", "cell40x20"},
    {203, "^A0", "cell10x10"},
    {203, "^AP", "cell18x16"},         // without a width the default one
    {203, "^APN,30,30", "cell34x33"},  // steps by height and by width
    {203, "^APN,129,128", "cell97x114"},
    {203, "^AVN,9999,9999", "cell669x663"},
    {203, "^AC", "D 1x1"},             // substituted
    {203, "^AZ", "A 1x1"},             // no such font
    {203, "^CF0,40^AZ", "cell40x40"},  // the default font in its place
    {203, "^CFB", "B 1x1"},
    {203, "^CFd,36", "D 2x2"},
    {203, "^CFD,36^CFD,0", "D 2x2"},  // a height of 0 changes nothing
    {203, "^CF!,36", "A 4x4"},
    {203, "^CFD,36,20^A0", "cell36x20"},  // default size
    {203, "^CFD,36,20^ADN,18", "D 1x1"},
    {203, "^CWZ,R:B.FNT^AZ", "B 1x1"},
    {203, "^CWz,E:TT0003M_.FNT^AZN,30,20", "cell30x20"},
    {203, "^CWA,R:MISSING.TTF^AA", "A 1x1"},
    {203, "^A@N,30,20,E:TT0003M_.FNT", "cell30x20"},
    {203, "^A@N,41,20,R:OCRB.FNT", "E 1x1"},
    {203, "^A@N,30,19,Z:OCR-A.FNT", "H 1x1"},
    {203, "^A@N,30,20,E:MISSING.TTF", "A 4x3"},
    {203, "^A@N,9,9,R:OCRB.FNT^FDy^FS^A0^FDz^FS^A@N,82,40", "E 2x2"},  // the name holds on
    {203, "^A@N,36,20", "A 4x4"},                                      // but there is none yet
};

TEST(Fonts, ByLetterAndSize) {
    for (auto const& row : Rows) {
        FieldBench bench(row.dpi);
        EXPECT_EQ(FontOf(bench, row.stream).substr(0, std::string_view(row.expected).size()), row.expected)
            << row.dpi << " " << row.stream;
    }
}

TEST(Fonts, DefaultsOutliveTheField) {
    FieldBench bench;
    EXPECT_EQ(FontOf(bench, "^CFB,22,14^CWY,D^ADN,18,10"), "D 1x1");
    EXPECT_EQ(FontOf(bench, ""), "B 2x2");
    EXPECT_EQ(FontOf(bench, "^AYN,18,10"), "D 1x1");
}

TEST(Fonts, ScaleOfDotsMagnifiesBitmapFonts) {
    FieldBench bench;
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::DpiScaleFactor, 2U);
    EXPECT_EQ(FontOf(bench, "^AD"), "D 2x2");
    EXPECT_EQ(FontOf(bench, "^ADN,36,20"), "D 2x2");  // the base cell is scaled, the size asked for is not
    EXPECT_EQ(FontOf(bench, "^A0N,20,20").substr(0, 9), "cell40x40");
}

TEST(Fonts, TrueTypeByObjectName) {
    FieldBench bench;
    bench.target->trueTypeFont = "ARIAL.TTF";
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::TrueTypeFonts,
                        std::vector<std::string>{"arial.ttf"});
    EXPECT_EQ(bench.Run("^FO10,20^A@N,40,20,E:ARIAL.TTF^FDab^FS"), "truetype 10,12 20x20 'ab' ARIAL.TTF\n");
    EXPECT_EQ(bench.Next(), "30,32");  // 37 of 100 of the height lie below the baseline
    EXPECT_EQ(bench.Run("^FO10,20^FPV^A@N,40,20,E:ARIAL.TTF^FDab^FS"),
              "truetype 10,12 10x40 'a\nb\n' ARIAL.TTF vertical\n");
    // Spacing is for characters that stand beside each other.
    EXPECT_EQ(bench.Run("^FO10,20^FPV,3^A@N,40,20,E:ARIAL.TTF^FDab^FS"),
              "truetype 10,12 10x40 'a\nb\n' ARIAL.TTF vertical\n");
    EXPECT_EQ(bench.Run("^FO10,20^FPR,3^A@R,40,20,E:ARIAL.TTF^FDab^FS"),
              "truetype 10,13 20x20 'ba' ARIAL.TTF spacing 3 turned 90\n");
    EXPECT_EQ(bench.Run("^FO100,20^FPR^A@N,40,20,E:ARIAL.TTF^FDab^FS"), "truetype 90,12 20x20 'ba' ARIAL.TTF\n");
    // A file of a short name is no font letter.
    bench.target->trueTypeFont = "D.TTF";
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::TrueTypeFonts,
                        std::vector<std::string>{"ARIAL.TTF", "D.TTF"});
    EXPECT_EQ(bench.Run("^FO10,20^A@N,40,20,E:D.TTF^FDab^FS"), "truetype 10,12 20x20 'ab' D.TTF\n");
    bench.target->trueTypeFont = "ARIAL.TTF";
    EXPECT_EQ(bench.Run("^FO10,20^A@R,40,20,E:ARIAL.TTF^FDabcd^FS"),
              "truetype 0,30 40x20 'abcd' ARIAL.TTF turned 90\n");
}

TEST(Fonts, AListedFontKeepsItsSpelling) {
    FieldBench bench;
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::TrueTypeFonts,
                        std::vector<std::string>{"Arial.ttf", "BOLD.TTF"});
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::FontSubstitute,
                        ZplContextKeys::FontsByLetter{{'Z', "Arial.ttf"}, {'Y', "E:bold.ttf"}});
    EXPECT_EQ(TransformToZplFont(UserFont{"Arial.ttf"}, bench.processor), "Arial.ttf");
    EXPECT_EQ(TransformToZplFont(UserFont{"ARIAL.TTF"}, bench.processor), "ARIAL.TTF");
    EXPECT_EQ(TransformToZplFont(BuiltInFont{'Z'}, bench.processor), "Arial.ttf");
    EXPECT_EQ(TransformToZplFont(BuiltInFont{'Y'}, bench.processor), "BOLD.TTF");
}

TEST(TrueTypeUtils, ScalesStepFonts) {
    auto const info = TrueTypeUtils::ScaleZPLFont('R', 88, 10, Scripting::Dpi(203));
    EXPECT_DOUBLE_EQ(info.pointSize, (0.2192 * 88 + 0.0955) * 1.5);
    EXPECT_DOUBLE_EQ(info.widthPercent, 29.0 / 88 * 100);
    EXPECT_EQ(info.cellHeight, 89);
    EXPECT_EQ(info.descent, 26);
    EXPECT_EQ(info.fourthMetric, 15);
    EXPECT_EQ(TrueTypeUtils::ScaleZPLFont('X', 88, 10, Scripting::Dpi(203)).cellHeight, 0);
}

TEST(TrueTypeUtils, StepsAscend) {
    for (auto const& table : TrueTypeUtils::FontSteps) {
        for (std::size_t i = 1; i < table.steps.size(); ++i) {
            EXPECT_LT(table.steps[i - 1].minimumHeight, table.steps[i].minimumHeight) << table.letter;
            EXPECT_LT(table.steps[i - 1].minimumWidth, table.steps[i].minimumWidth) << table.letter;
        }
    }
}

TEST(TrueTypeUtils, PointsAndDots) {
    EXPECT_DOUBLE_EQ(TrueTypeUtils::ScaleTrueTypeFont(100, 50).pointSize, 33.1);
    EXPECT_EQ(TrueTypeUtils::ConvertPointSizeToHeightInDots(33.1), 100);
    EXPECT_EQ(TrueTypeUtils::AdjustYPos(100), 19);
    EXPECT_EQ(TrueTypeUtils::ConvertPointSizeToHeightInDots(1e300), 2147483647);
}

TEST(TrueTypeUtils, SupportedCharacters) {
    for (char32_t const c : {U' ', U'~', U'\u00E9', U'\u20AC', U'\u0416'})
        EXPECT_TRUE(TrueTypeUtils::IsSupportedFont0Character(c));
    for (char32_t const c : {U'\x1F', U'\x7F', U'\u4E00', U'\U00010041'})
        EXPECT_FALSE(TrueTypeUtils::IsSupportedFont0Character(c));
}

TEST(Fonts, OcrFontsAreMovedAt600Dpi) {
    using TextProcessing::Get600DpiVerticalOffset;
    Scripting::Dpi const dpi(600);
    EXPECT_EQ(Get600DpiVerticalOffset("E", dpi, ZplOrientation::BottomUp, 5), 2);
    EXPECT_EQ(Get600DpiVerticalOffset("H", dpi, ZplOrientation::Inverted, 5), -2);
    EXPECT_EQ(Get600DpiVerticalOffset("A", dpi, ZplOrientation::Normal, 5), 0);
    EXPECT_EQ(Get600DpiVerticalOffset("E", Scripting::Dpi(300), ZplOrientation::Normal, 5), 0);
}

}  // namespace
