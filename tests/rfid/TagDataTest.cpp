#include "rfid/TagData.h"

#include <gtest/gtest.h>

namespace {

using enum TagFormat;

std::vector<std::uint8_t> const Partitions = {8, 3, 3, 20, 24, 38};

TEST(TagData, IsHexadecimalWhateverItsFormat) {
    struct Row {
        TagFormat format;
        char const* data;
        char const* hex;
        std::string back;
    };
    for (auto const& row : std::initializer_list<Row>{
             {Hex, "30ab5", "30AB5", "30AB5"},
             {Ascii, "Az ", "417A20", "Az "},
             {Epc, "48,1,6,770289,10001025,1", "303AF03C6626A04000000001", "48,1,6,770289,10001025,1"},
             {Epc, "0.0.0.0.0.0", "000000000000000000000000", "0,0,0,0,0,0"},
         }) {
        EXPECT_EQ(ToTagHex(row.format, row.data, Partitions), row.hex) << row.data;
        EXPECT_EQ(FromTagHex(row.format, row.hex, Partitions), row.back) << row.hex;
    }
    EXPECT_EQ(ToTagHex(Epc, "18446744073709551615,4294967295", {64, 32}), "FFFFFFFFFFFFFFFFFFFFFFFF");
}

TEST(TagData, OfAnotherFormatIsRefused) {
    EXPECT_FALSE(ToTagHex(Hex, "30G1", Partitions));
    for (char const* const bad :
         {"48,1,6,770289,10001025", "48,1,6,770289,10001025,1,2", "256,1,6,0,0,1", "48,8,6,0,0,1",
          "48;1,6,770289,10001025,1", "48,1,6,770289,10001025,", "", "-1,1,6,0,0,1"})
        EXPECT_FALSE(ToTagHex(Epc, bad, Partitions)) << bad;
}

TEST(TagData, FillsWholeWordsOrTheBytesAskedFor) {
    EXPECT_EQ(FitTagHex("ABC", 0), "ABC0");
    EXPECT_EQ(FitTagHex("ABCD", 0), "ABCD");
    EXPECT_EQ(FitTagHex("ABCD", 3), "ABCD00");
    EXPECT_EQ(FitTagHex("ABCD", 1), "AB");
}

}  // namespace
