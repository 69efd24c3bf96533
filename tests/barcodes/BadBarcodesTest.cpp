#include <gtest/gtest.h>

#include "../support/FieldBench.h"
#include "barcodes/Memoizer.h"

// What fields print whose data, parameters or sizes make no symbol.

namespace {

struct BadRow {
    char const* field;
    char const* letter;     ///< of the error with validation on
    bool drawsWithout;      ///< a repaired symbol with validation off
    bool isForced = false;  ///< the error is drawn in either case
};

constexpr BadRow Rows[] = {
    {"^B1N,N,20,N^FD12A4", "C", true},
    {"^B1N,N,20,N^FD", "S", false},
    {"^B2N,20,N^FD12X4", "C", true},
    {"^B3N,N,20,N^FDA*B", "C", true},
    {"^B3N,N,20,N^FD", "S", false},
    {"^BAN,20,N^FDA\"B", "C", true},
    {"^BIN,20,N^FD1A", "C", true},
    {"^BJN,20,N^FD1A", "C", true},
    {"^BKN,N,20,N^FD1A2", "C", true},
    {"^BLN,20^FD,", "C", false},
    {"^BMN,B,20,N^FD12345678901234", "L", true},
    {"^BMN,A,20,N^FD123456789012345", "L", true},
    {"^BPN,N,20,N^FD12G", "C", true},
    {"^B5N,20,N^FD123", "S", true},
    {"^BZN,20,N^FD123456", "S", true},
    {"^BZN,20,N^FD123456789012", "L", true},
    {"^BZN,30,N,N,3^FD123", "S", false},
    {"^BZN,30,N,N,3^FD09345678901234567890", "C", false},
    {"^BEN,20,N^FD123", "S", false, true},
    {"^BSN,20,N^FD123", "S", false, true},
    {"^BSN,20,N^FD1x", "C", false, true},
    {"^BQN,2,3^FDQA,", "S", false},
    {"^BON,3,N,150^FDx", "P", false},
    {"^BON,3,N,300^FD256", "C", false},
    {"^BON,3,N,101^FDtoo long for one compact layer", "L", false},
    {"^B7N,4,9^FDx", "P", false},
    {"^B7N,4,0,30,90^FDx", "P", false},
    {"^B7N,4,0,1,3^FDtoo long for one column of three rows", "L", false},
    {"^BFN,4,34^FDx", "P", false},
    {"^BDN^FD123", "S", false},
    {"^BD2^FD12345678901234X", "C", false},
    {"^BRN,13,2^FD123", "P", false},
    {"^BXN,4,200,11,11^FDx", "P", false, true},
    {"^BXN,4,200,10,10^FDtoo long", "L", false, true},
    {"^BXN,4,200^FD", "S", false, true},
    {"^BXN,4,0,10^FDx", "P", false, true},
    {"^BXN,4,50,11,13^FDx", "P", false, true},
    {"^BXN,4,80,,,3^FDlower", "C", false, true},
};

TEST(BadBarcodes, DataAndParameters) {
    for (auto const& row : Rows) {
        std::string const error = std::string(" INVALID - ") + row.letter + " ";
        FieldBench validating;
        EXPECT_NE(validating.Run("^CVY^FO50,50" + std::string(row.field) + "^FS").find(error), std::string::npos)
            << row.field;
        EXPECT_EQ(validating.Next(), "50,50") << row.field;
        FieldBench lenient;
        auto const drawn = lenient.Run("^FO50,50" + std::string(row.field) + "^FS");
        EXPECT_EQ(drawn.find(error) != std::string::npos, row.isForced) << row.field;
        EXPECT_EQ(drawn.find("image") != std::string::npos, row.drawsWithout) << row.field;
    }
}

TEST(BadBarcodes, SizesAreBounded) {
    struct {
        char const* stream;
        bool tooLarge;
    } const rows[] = {
        {"^BY0^FO1,1^BCN,50^FDABC^FS", false},
        {"^BY99999^FO1,1^BCN,50000^FDABC^FS", true},
        {"^BY2^FO1,1^BCN,32000^FDABC^FS", false},
        {"^FO1,1^BQN,2,100^FDQA,123^FS", false},
        {"^FO1,1^BXN,0,200^FD123^FS", false},
        {"^FO1,1^BXN,2000000000,200^FD123^FS", true},
        {"^BY2000000000^FO1,1^B7N,2000000000^FD123^FS", true},
        {"^BY2000000000^FO1,1^BBN,8^FD123^FS", true},
        {"^BY2000000000^FO1,1^B4N,8^FD123^FS", true},
        {"^BY0,,0^FO1,1^BRN,1,0^FD123^FS", false},
        {"^BY2000000000^FO1,1^BEN,2000000000^FD123456789012^FS", true},
        {"^FO1,1^BZN,2000000000^FD12345^FS", true},
    };
    for (auto const& [stream, tooLarge] : rows) {
        FieldBench bench;
        if (tooLarge) {
            EXPECT_THROW(bench.Run(stream), std::length_error) << stream;
        } else {
            EXPECT_NO_THROW(bench.Run(stream)) << stream;
        }
    }
    std::string const longData(3000, 'x');
    FieldBench bench;
    EXPECT_NE(bench.Run("^FO1,1^BCN,50^FD" + longData + "^FS"), "");
    for (char const* command :
         {"^BQN,2,100", "^BXN,2,200", "^BON,3", "^B7N,4", "^BD4", "^BBN,8", "^B4N,8", "^BFN,4,32"})
        EXPECT_NO_THROW(bench.Run(std::string("^FO1,1") + command + "^FDQA," + longData + "^FS")) << command;
}

TEST(Memoizer, TheOldestGoesFirstWhetherUsedOrNot) {
    int calls = 0;
    auto const count = [&calls](int n) {
        ++calls;
        return n;
    };
    ZplCore::Memoizer<10, decltype(count), int> memoizer(count);
    for (int i = 0; i < 10; ++i) memoizer(i);
    EXPECT_EQ(memoizer(0), 0);
    EXPECT_EQ(calls, 10);
    EXPECT_EQ(memoizer(10), 10);
    EXPECT_EQ(memoizer(1), 1);
    EXPECT_EQ(calls, 11);
    EXPECT_EQ(memoizer(0), 0);
    EXPECT_EQ(calls, 12);
}

}  // namespace
