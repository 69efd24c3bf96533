#include <gtest/gtest.h>

#include "../support/FieldBench.h"

namespace {

TEST(TextPlacement, MeasuresVerticalTextByItsWidestCharacter) {
    FieldBench bench;
    bench.Run("^FO10,20^FPV,3^FDab c^FS");
    // Three characters of 20 and a blank of 10 + 3 downwards; the field is one character wide.
    EXPECT_EQ(bench.Next(), "10,87");
}

// A character is 10 x 20 dots, its baseline in row 14; the text is 73 dots long and its tail 2.
TEST(TextPlacement, TypesetTextThatRunsDownwardsEndsByItsTail) {
    for (auto const& [orientation, next] : {std::pair("I", "98,147"), {"B", "153,198"}, {"R", "47,202"}}) {
        FieldBench bench;
        bench.Run("^FW" + std::string(orientation) + "^FT100,200^FPV,3^FDab c^FS");
        EXPECT_EQ(bench.Next(), next) << orientation;
    }
}

TEST(TextPlacement, LeadingMovesTheNextField) {
    FieldBench bench;
    bench.target->leading = 6;
    bench.Run("^FO10,20^FDab^FS");
    EXPECT_EQ(bench.Next(), "30,28");
    bench.Run("^FWR^FO10,20^FDab^FS");
    EXPECT_EQ(bench.Next(), "15,40");
    bench.Run("^FWI^FT100,200^FPV,3^FDab c^FS");
    EXPECT_EQ(bench.Next(), "98,141");
}

// Large reverse text of font B, upside down from the top left, stands by the label home.
TEST(TextPlacement, TheCaseThatStandsByItsLabelHome) {
    FieldBench bench;
    bench.processor.set(ContextProcessor::FormatContext, ZplContextKeys::LabelOriginX, 1000U);
    EXPECT_EQ(bench.Run("^FO100,50^FPR^ABI,33,21^FDab^FS"), "text 1040,50 'ab' B 3x3 flow 2 home 1000,0 turned 180\n");
}

}  // namespace
