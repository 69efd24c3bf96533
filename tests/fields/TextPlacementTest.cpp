#include <gtest/gtest.h>

#include "../support/FieldBench.h"
#include "fields/text/TextFont.h"
#include "fields/text/TextPlacementCorrection.h"

namespace ZplCore {
inline void PrintTo(ZplPoint p, std::ostream* out) { *out << "(" << p.x << ", " << p.y << ")"; }
}  // namespace ZplCore

namespace {

using namespace ZplCore;
using namespace ZplCore::Sketching;

struct CorrectionRow {
    int orientation;
    Baseline baseline;
    Direction direction;
    Justification justification;
    ZplPoint factor;
    int extra;
};

constexpr auto Top = Baseline::Top;
constexpr auto Bottom = Baseline::Bottom;
constexpr auto Left = Justification::Left;
constexpr auto Right = Justification::Right;
constexpr auto Auto = Justification::Auto;
constexpr auto Horizontal = Direction::Horizontal;
constexpr auto Vertical = Direction::Vertical;
constexpr auto Reverse = Direction::Reverse;

constexpr TextMeasures Measures{
    .width = 100, .height = 20, .ascent = 15, .descent = 5, .leading = 8, .averageWidth = 11, .tail = 4};

CorrectedTextPlacement Correct(CorrectionRow const& row, bool needsGlyphAdjustment) {
    FieldPlacement const placement{{}, static_cast<ZplOrientation>(row.orientation), row.baseline, row.justification};
    return CorrectTextPlacement(placement, {row.direction, 3}, Measures, 2, needsGlyphAdjustment, {70, 7});
}

TEST(TextPlacement, CorrectsFontsWhoseGlyphsDoNotFillTheirCells) {
    constexpr CorrectionRow Rows[] = {
        {180, Top, Vertical, Left, {19, 4}, 10},   {180, Top, Vertical, Auto, {-28, 0}, 0},
        {180, Top, Reverse, Left, {-67, -4}, 10},  {180, Top, Horizontal, Right, {62, 7}, 0},
        {90, Top, Horizontal, Right, {-12, 0}, 0}, {90, Top, Reverse, Right, {78, 11}, 0},
        {90, Top, Reverse, Left, {68, 7}, 0},      {270, Top, Reverse, Left, {70, 40}, 7},
        {270, Top, Reverse, Right, {80, 7}, 0},    {270, Top, Vertical, Left, {0, 15}, 7},
        {270, Top, Vertical, Right, {-12, -4}, 0}, {270, Top, Horizontal, Left, {70, 7}, 0},
        {0, Top, Vertical, Left, {70, 7}, 0},      {180, Bottom, Vertical, Left, {70, 7}, 0},
    };
    for (auto const& row : Rows) {
        auto const corrected = Correct(row, true);
        EXPECT_EQ(corrected.justification, row.factor) << row.orientation << " " << static_cast<int>(row.direction);
        EXPECT_EQ(corrected.extra, row.extra) << row.orientation << " " << static_cast<int>(row.direction);
    }
}

TEST(TextPlacement, OtherFontsKeepTheirFactor) {
    constexpr CorrectionRow Rows[] = {
        {180, Top, Vertical, Left, {70, 7}, 10},  {180, Top, Reverse, Left, {70, 7}, 10},
        {270, Top, Vertical, Left, {70, 7}, 7},   {180, Top, Horizontal, Left, {70, 7}, 0},
        {270, Top, Reverse, Right, {70, 7}, 0},   {90, Top, Vertical, Left, {70, 7}, 0},
        {180, Bottom, Reverse, Left, {70, 7}, 0},
    };
    for (auto const& row : Rows) {
        auto const corrected = Correct(row, false);
        EXPECT_EQ(corrected.justification, row.factor) << row.orientation;
        EXPECT_EQ(corrected.extra, row.extra) << row.orientation << " " << static_cast<int>(row.direction);
    }
}

TEST(TextPlacement, MeasuresVerticalTextByItsWidestCharacter) {
    FieldBench bench;
    bench.Run("^FO10,20^FPV,3^FDab c^FS");
    // Three characters of 20 and a blank of 10 + 3 downwards; the field is one character wide.
    EXPECT_EQ(bench.Next(), "10,87");
}

TEST(TextPlacement, LeadingMovesTheNextField) {
    FieldBench bench;
    bench.target->leading = 6;
    bench.Run("^FO10,20^FDab^FS");
    EXPECT_EQ(bench.Next(), "30,28");
    bench.Run("^FWR^FO10,20^FDab^FS");
    EXPECT_EQ(bench.Next(), "15,40");
}

// Large reverse text of font B, upside down from the top left, stands by the label home.
TEST(TextPlacement, TheCaseThatStandsByItsLabelHome) {
    FieldBench bench;
    bench.processor.set(ContextProcessor::FormatContext, ZplContextKeys::LabelOriginX, 1000U);
    EXPECT_EQ(bench.Run("^FO100,50^FPR^ABI,33,21^FDab^FS"), "text 1040,50 'ab' B 3x3 flow 2 home 1000,0 turned 180\n");
}

TEST(TextPlacement, InvalidTextDrawsReplacements) {
    FieldBench bench;
    ZplCodePageConverter utf8(28);
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::CodePageConverter, utf8);
    EXPECT_EQ(bench.Run("^FO0,0^FH^FDa_C3_A9_FFb^FS"),
              "text 0,0 'a\xC3\xA9\xEF\xBF\xBD"
              "b' A 1x1\n");
}

}  // namespace
