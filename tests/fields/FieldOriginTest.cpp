#include <gtest/gtest.h>

#include "../support/FieldBench.h"

namespace {

// A character is 10 x 20 dots with its baseline in row 14.
constexpr DrawRow Rows[] = {
    {"origin is the top corner", "^FO30,40^FDab^FS", "text 30,40 'ab' A 1x1\n"},
    {"typeset stands on its base", "^FT30,40^FDab^FS", "text 30,26 'ab' A 1x1\n"},
    {"origin without parameters is zero", "^FO5,5^FO^FDab^FS", "text 0,0 'ab' A 1x1\n"},
    {"a sign is dropped", "^FO-10,-20^FDa^FS", "text 10,20 'a' A 1x1\n"},
    {"typeset without coordinates goes on", "^FT30,40^FDab^FS^FT^FDcd^FS^FT,90^FDe^FS",
     "text 30,26 'ab' A 1x1\ntext 50,26 'cd' A 1x1\ntext 70,76 'e' A 1x1\n"},
    {"typeset goes on after an origin", "^FO30,40^FDab^FS^FT^FDc^FS", "text 30,40 'ab' A 1x1\ntext 50,40 'c' A 1x1\n"},
    {"right justified", "^FO100,40,1^FDab^FS", "text 80,40 'ab' A 1x1\n"},
    {"justification 3 is none", "^FO100,40,3^FDab^FS", "text 100,40 'ab' A 1x1\n"},
    {"default orientation outlives the field", "^FWR^FO10,10^FDab^FS^FO10,10^FDab^FS",
     "text 10,10 'ab' A 1x1 turned 90\ntext 10,10 'ab' A 1x1 turned 90\n"},
    {"a bad orientation changes nothing", "^FWR^FWX,1^FO100,10^FDab^FS", "text 80,10 'ab' A 1x1 turned 90\n"},
    {"spacing", "^FO0,0^FPH,3^FDab^FS^FT^FDc^FS", "text 0,0 'ab' A 1x1 spacing 3\ntext 26,0 'c' A 1x1\n"},
    {"spacing out of range is ignored", "^FO0,0^FPH,3^FPH,10000^FDab^FS", "text 0,0 'ab' A 1x1 spacing 3\n"},
    {"negative spacing", "^FO0,0^FPH,-5^FDab^FS", "text 0,0 'ab' A 1x1 spacing -5\n"},
    {"vertical text does not overlap", "^FO0,0^FPV,-5^FDab^FS", "text 0,0 'ab' A 1x1 flow 1\n"},
    {"reverse text", "^FO50,0^FPR^FDab^FS", "text 50,0 'ab' A 1x1 flow 2\n"},
    {"field reverse ends with the field", "^FO0,0^FR^FDa^FS^FO0,0^FDb^FS",
     "text 0,0 'a' A 1x1 reverse\ntext 0,0 'b' A 1x1\n"},
    {"empty data draw nothing and keep the place", "^FT30,40^FDab^FS^FD^FS^FT^FDc^FS",
     "text 30,26 'ab' A 1x1\ntext 50,26 'c' A 1x1\n"},
};

TEST(FieldOrigin, PlacesFields) { ExpectDrawings(Rows); }

/// The picture of a text stands on the same dots at all orientations: its box starts at the origin of `^FO`, and the
/// dot of its baseline's start is the origin of `^FT`.
TEST(FieldOriginTurned, TopCornerOfTheTurnedBoxIsTheOrigin) {
    for (char const* turn : {"N", "R", "I", "B"}) {
        FieldBench bench;
        auto const drawn = bench.Run(std::string("^FO100,200^A0") + turn + ",20,10^FDabc^FS");
        EXPECT_EQ(drawn.substr(0, 13), "text 100,200 ") << turn;
    }
}

TEST(FieldOriginTurned, BaselineStartsAtTheTypesetPoint) {
    // Upper left corner of the turned box of 30 x 20, whose baseline lies in row 14.
    EXPECT_EQ(FieldBench().Run("^FT100,200^FDabc^FS"), "text 100,186 'abc' A 1x1\n");
    EXPECT_EQ(FieldBench().Run("^FWR^FT100,200^FDabc^FS"), "text 95,200 'abc' A 1x1 turned 90\n");
    EXPECT_EQ(FieldBench().Run("^FWI^FT100,200^FDabc^FS"), "text 71,195 'abc' A 1x1 turned 180\n");
    EXPECT_EQ(FieldBench().Run("^FWB^FT100,200^FDabc^FS"), "text 86,171 'abc' A 1x1 turned 270\n");
}

TEST(FieldOriginTurned, RightJustifiedBoxEndsAtTheOrigin) {
    EXPECT_EQ(FieldBench().Run("^FWR,1^FO100,200^FDabc^FS"), "text 80,200 'abc' A 1x1 turned 90\n");
    EXPECT_EQ(FieldBench().Run("^FWB,1^FO100,200^FDabc^FS"), "text 80,200 'abc' A 1x1 turned 270\n");
}

TEST(FieldOriginUnits, MillimetresAndScale) {
    FieldBench bench(300);
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::UnitOfMeasure, ZplUnitOfMeasure::Millimeters);
    EXPECT_EQ(bench.Run("^FO10,2.5^FDa^FS"), "text 120,30 'a' A 1x1\n");
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::UnitOfMeasure, ZplUnitOfMeasure::Dots);
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::DpiScaleFactor, 2U);
    EXPECT_EQ(bench.Run("^FO10,20^FDa^FS"), "text 20,40 'a' A 2x2\n");
}

}  // namespace
