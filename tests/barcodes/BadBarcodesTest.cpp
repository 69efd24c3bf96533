#include <gtest/gtest.h>

#include <map>

#include "../support/FieldBench.h"
#include "barcodes/frame/Memoizer.h"

// What fields print whose data, parameters or sizes make no symbol.

namespace {

char const* const TooManyForEan8 = "there are too many; EAN-8 has 7 digits, or 8 with the check digit";
char const* const LengthsOfUpcE = "UPC-E has 6, 7 or 8 digits, or the 10 of maker and product of a UPC-A";
char const* const LengthsOfIntelligentMail = "Intelligent Mail has 20, 25, 29 or 31 digits";
char const* const LengthsOfSupplements = "a supplement has two digits or five";
char const* const TooLarge = "the symbol would be too large; its modules or its height must be smaller";

struct BadRow {
    std::string field;
    char letter;  ///< of the error with validation on
    enum {
        Nothing,
        Symbol,
        Error
    } drawn = Nothing;     ///< with validation off: a repaired symbol, or the error all the same
    std::string why = {};  ///< in the report; empty for the words of the letter
};

std::string Why(BadRow const& row) {
    static std::map<char, std::string> const Words{{'C', "the symbology has not all of their characters"},
                                                   {'E', "their check digit is wrong"},
                                                   {'L', "they are too long"},
                                                   {'S', "they are too short"},
                                                   {'P', "a parameter of the command does not fit them"}};
    return row.why.empty() ? Words.at(row.letter) : row.why;
}

std::string Long(std::size_t count, char c = '1') { return std::string(count, c); }

BadRow const Rows[] = {
    {"^B1N,N,20,N^FD12A4", 'C', BadRow::Symbol},
    {"^B1N,N,20,N^FD", 'S'},
    {"^B1N,N,20,N^FD" + Long(6001), 'L', BadRow::Symbol},
    {"^B2N,20,N^FD12X4", 'C', BadRow::Symbol},
    {"^B2N,20,N^FDXYZ", 'C'},  // nothing is left to repair
    {"^B2N,20,N^FD", 'S'},
    {"^B2N,20,N^FD" + Long(6001), 'L', BadRow::Symbol},
    {"^B3N,N,20,N^FDA*B", 'C', BadRow::Symbol},
    {"^B3N,N,20,N^FD", 'S'},
    {"^B3N,N,20,N^FD" + Long(6001), 'L', BadRow::Symbol},
    {"^B4N,2^FD\xE9", 'C'},
    {"^B4N,2^FD", 'S'},
    {"^B4N,2^FD" + Long(50, 'x'), 'L'},
    {"^B5N,20,N^FD123", 'S', BadRow::Symbol},
    {"^B5N,20,N^FD12345678901234", 'L', BadRow::Symbol},
    {"^B7N,4^FD", 'S'},
    {"^B7N,4,9^FDx", 'P'},
    {"^B7N,4,0,30,90^FDx", 'P'},
    {"^B7N,4,0,1,3^FDtoo long for one column of three rows", 'L'},
    {"^B7N,4^FD" + Long(2711), 'L'},
    {"^B8N,20,N^FD123456x", 'C', BadRow::Error},
    {"^B8N,20,N^FD96385075", 'E', BadRow::Error},
    {"^B8N,20,N^FD1234567890121", 'E', BadRow::Error, TooManyForEan8},
    {"^B8N,20,N^FD1234567890125", 'C', BadRow::Error, TooManyForEan8},
    {"^B8N,20,N^FD12345678901234", 'L', BadRow::Error, TooManyForEan8},
    {"^B8N,20,N^FD123456789012", 'C', BadRow::Error, TooManyForEan8},
    {"^B8N,20,N^FD123456789", 'S', BadRow::Error, TooManyForEan8},
    {"^B8N,20,N^FD96385074501", 'S', BadRow::Error, TooManyForEan8},
    {"^B8N,20,N^FD123456", 'S', BadRow::Error},
    {"^B9N,20,N^FD12345x", 'C', BadRow::Error},
    {"^B9N,20,N^FD2123456", 'C', BadRow::Error, "UPC-E of 7 digits begins with 0 or 1"},
    {"^B9N,20,N^FD1234500004", 'C', BadRow::Error, "a UPC-A of these digits cannot be told in the six of UPC-E"},
    {"^B9N,20,N^FD12345678", 'C', BadRow::Error, "UPC-E of 8 digits begins with 0"},
    {"^B9N,20,N^FD123456789", 'C', BadRow::Error, LengthsOfUpcE},
    {"^B9N,20,N^FD01234566", 'E', BadRow::Error},
    {"^B9N,20,N^FD12345678901", 'C', BadRow::Error, LengthsOfUpcE},
    {"^B9N,20,N^FD123456789012", 'L', BadRow::Error},
    {"^B9N,20,N^FD12345", 'S', BadRow::Error},
    {"^BAN,20,N^FDA\"B", 'C', BadRow::Symbol},
    {"^BAN,20,N^FD", 'S'},
    {"^BAN,20,N^FD" + Long(6001), 'L', BadRow::Symbol},
    {"^BBN,8,Y,4,2,A^FDA*", 'C'},
    {"^BBN,8,Y,4,2,A^FDABCDEFGHI", 'L'},
    {"^BBN,8,Y,4,2,A^FD", 'S'},
    {"^BBN,8,Y,4,2,F^FDABCDEFGHI", 'L'},
    {"^BBN,8,Y,4,2,E^FD", 'S'},
    {"^BCN,20,N^FD", 'S'},
    {"^BCN,20,N,N,N,A^FD" + Long(6001), 'L'},
    {"^BCN,20,N,N,N,U^FD12345", 'S', BadRow::Symbol},
    {"^BCN,20,N,N,N,U^FD001234567890123456x", 'C', BadRow::Symbol},
    {"^BCN,20,N,N,N,U^FD00123456789012345675", 'L', BadRow::Symbol},
    {"^BCN,20,N,N,N,D^FD", 'S', BadRow::Error},
    {"^BCN,20,N,N,N,D^FD(10)\xE9", 'C', BadRow::Error},
    {"^BCN,20,N,N,N,D^FD" + Long(6001, '9'), 'L', BadRow::Error},
    {"^BDN^FD123", 'S'},
    {"^BD2^FD12345678901234X", 'C'},
    {"^BD3^FD001840ABC!56", 'C'},
    {"^BD3^FD001840ABC", 'S'},
    {"^BD4^FD" + Long(151, 'x'), 'L'},
    {"^BD4^FD" + Long(140, '\xE9'), 'L'},
    {"^BEN,20,N^FD40063813339x", 'C', BadRow::Error},
    {"^BEN,20,N^FD4006381333932", 'E', BadRow::Error},
    {"^BEN,20,N^FD40063813339312", 'L', BadRow::Error},
    {"^BEN,20,N^FD40063813339", 'S', BadRow::Error},
    {"^BFN,4,34^FDx", 'P'},
    {"^BFN,4,-1^FDx", 'P'},
    {"^BFN,4,0^FDABCDEFG", 'L'},
    {"^BFN,4,0^FD", 'S'},
    {"^BIN,20,N^FD1A", 'C', BadRow::Symbol},
    {"^BIN,20,N^FD", 'S'},
    {"^BIN,20,N^FD" + Long(6001), 'L', BadRow::Symbol},
    {"^BJN,20,N^FD1A", 'C', BadRow::Symbol},
    {"^BJN,20,N^FD", 'S'},
    {"^BJN,20,N^FD" + Long(6001), 'L', BadRow::Symbol},
    {"^BKN,N,20,N^FD1A2", 'C', BadRow::Symbol},
    {"^BKN,N,20,N^FD", 'S'},
    {"^BKN,N,20,N^FD" + Long(6001), 'L', BadRow::Symbol},
    {"^BLN,20^FD,", 'C'},
    {"^BLN,20^FD", 'S'},
    {"^BLN,20^FD" + Long(6001), 'L', BadRow::Symbol},
    {"^BMN,B,20,N^FD12X", 'C', BadRow::Symbol},
    {"^BMN,B,20,N^FD", 'S'},
    {"^BMN,B,20,N^FD12345678901234", 'L', BadRow::Symbol},
    {"^BMN,A,20,N^FD123456789012345", 'L', BadRow::Symbol},
    {"^BON,3^FD", 'S'},
    {"^BON,3,N,150^FDx", 'P'},
    {"^BON,3,N,0,N,27^FDx", 'P'},
    {"^BON,3,N,0,N,3^FDxy", 'S'},
    {"^BON,3,N,300^FD256", 'C', BadRow::Nothing, "an Aztec rune is a number from 0 to 255"},
    {"^BON,3,N,101^FDtoo long for one compact layer", 'L'},
    {"^BON,3^FD" + Long(3833), 'L'},
    {"^BPN,N,20,N^FD12G", 'C', BadRow::Symbol},
    {"^BPN,N,20,N^FD", 'S'},
    {"^BPN,N,20,N^FD" + Long(6001), 'L', BadRow::Symbol},
    {"^BQN,2,3^FDQA,", 'S'},
    {"^BQN,2,3^FDD049900,QA,x", 'P'},
    {"^BQN,2,3^FDHA," + Long(3058), 'L'},
    {"^BRN,13,2^FD123", 'P'},
    {"^BRN,1,2^FD", 'S'},
    {"^BRN,5,2^FDabc", 'C'},
    {"^BRN,12,2^FD03|10ABC", 'S', BadRow::Nothing, "the linear part is narrower than the component above it"},
    {"^BRN,6,2^FD(01)9001234567890\xE9", 'C'},
    {"^BRN,6,2^FD(10)" + Long(80), 'L'},
    {"^BSN,20,N^FD1x", 'C', BadRow::Error, LengthsOfSupplements},
    {"^BSN,20,N^FD123", 'S', BadRow::Error, LengthsOfSupplements},
    {"^BSN,20,N^FD123456", 'L', BadRow::Error, LengthsOfSupplements},
    {"^BTN^FD12345x,A", 'C'},
    {"^BTN^FD12345", 'S'},
    {"^BTN^FD123456," + Long(26), 'L'},
    {"^BUN,20,N^FD0360002914x", 'C', BadRow::Error},
    {"^BUN,20,N^FD036000291453", 'E', BadRow::Error},
    {"^BUN,20,N^FD0360002914523", 'L', BadRow::Error},
    {"^BUN,20,N^FD0360002914", 'S', BadRow::Error},
    {"^BXN,4,200,11,11^FDx", 'P', BadRow::Error},
    {"^BXN,4,200,10,10^FDtoo long", 'L', BadRow::Error},
    {"^BXN,4,200^FD", 'S', BadRow::Error},
    {"^BXN,4,0,10^FDx", 'P', BadRow::Error},
    {"^BXN,4,0,51^FDx", 'P', BadRow::Error},
    {"^BXN,4,50,11,13^FDx", 'P', BadRow::Error},
    {"^BXN,4,80,,,3^FDlower", 'C', BadRow::Error, "the format of the command has not all of their characters"},
    {"^BXN,4,140^FD" + Long(64, 'x'), 'L', BadRow::Error},
    {"^BZN,20,N^FD123456", 'S', BadRow::Symbol},
    {"^BZN,20,N^FD123456789012", 'L', BadRow::Symbol},
    {"^BZN,20,N,N,1^FD123", 'S', BadRow::Symbol},
    {"^BZN,30,N,N,3^FD123", 'S', BadRow::Nothing, LengthsOfIntelligentMail},
    {"^BZN,30,N,N,3^FD09345678901234567890", 'C', BadRow::Nothing, "the second digit of Intelligent Mail is 0 to 4"},
    {"^BZN,30,N,N,3^FD" + Long(32), 'L', BadRow::Nothing, LengthsOfIntelligentMail},
};

/// What a field draws behind `commands`; the box behind it shows that the label goes on.
std::string Draw(FieldBench& bench, std::string const& commands) {
    std::string const drawn = bench.Run(commands + "^FS");
    EXPECT_NE(bench.Run("^FO7,300^GB9,9,9^FS"), "") << commands;
    return drawn;
}

TEST(BadBarcodes, DataAndParameters) {
    for (auto const& row : Rows) {
        std::string const name = row.field.substr(0, 60);
        std::string const error = std::string(" INVALID - ") + row.letter + " ";
        FieldBench validating;
        EXPECT_NE(validating.Run("^CVY^FO50,50" + row.field + "^FS").find(error), std::string::npos) << name;
        EXPECT_EQ(validating.Next(), "50,50") << name;
        FieldBench lenient;
        auto const drawn = Draw(lenient, "^FO50,50" + row.field);
        EXPECT_EQ(drawn.find(error) != std::string::npos, row.drawn == BadRow::Error) << name;
        EXPECT_EQ(drawn.find("image") != std::string::npos, row.drawn == BadRow::Symbol) << name << drawn;
        std::string const told = row.drawn == BadRow::Symbol ? "a barcode is made of " : "no barcode can be made of ";
        EXPECT_TRUE(lenient.reports.at(0).starts_with(told)) << lenient.reports[0];
        EXPECT_TRUE(lenient.reports[0].ends_with("\": " + Why(row))) << lenient.reports[0];
    }
}

TEST(BadBarcodes, SizesAreBounded) {
    enum { Fits, IsTooLarge };
    std::string const longData = "QA," + Long(3000, 'x');
    struct {
        std::string field;
        bool tooLarge;
    } const rows[] = {
        {"^BY0^BCN,50^FDABC", Fits},
        {"^BY99999^BCN,50^FDABC", Fits},
        {"^BY99999^BCN,50000^FDABC", IsTooLarge},
        {"^BY2^BCN,32000^FDABC", Fits},
        {"^BY2^BCN,50^FD" + longData, Fits},
        {"^BQN,2,100^FDQA,123", Fits},
        {"^BQN,2,100^FDLA," + Long(7000), Fits},  // version 40
        {"^BXN,0,200^FD123", Fits},
        {"^BXN,2000000000,200^FD123", IsTooLarge},
        {"^BXN,2000000000,0^FD123", IsTooLarge},
        {"^BON,100^FDA", Fits},
        {"^BY2000000000^B7N,2000000000^FD123", IsTooLarge},
        {"^BY2000000000^BFN,2000000000^FD123", IsTooLarge},
        {"^BY2000000000^BBN,8^FD123", IsTooLarge},
        {"^BY2000000000^BBN,8,Y,4,2,A^FD123", IsTooLarge},
        {"^BY2000000000^B4N,8^FD123", IsTooLarge},
        {"^BY2000000000^BTN,,,9999^FD123456,A", Fits},
        {"^BY0,,0^BRN,1,0^FD123", Fits},
        {"^BRN,11,2,1,2000000000^FD(10)123", IsTooLarge},
        {"^BY2000000000^BEN,2000000000^FD123456789012", IsTooLarge},
        {"^BZN,2000000000^FD12345", IsTooLarge},
        {"^BZN,2000000000,,,3^FD01234567094987654321", IsTooLarge},
    };
    for (auto const& [field, tooLarge] : rows) {
        FieldBench bench;
        auto const drawn = Draw(bench, "^CVY^FO1,1" + field);
        EXPECT_EQ(drawn.find(" INVALID - P ") != std::string::npos, tooLarge) << field.substr(0, 60);
        EXPECT_EQ(!bench.reports.empty() && bench.reports[0].ends_with(TooLarge), tooLarge) << field.substr(0, 60);
    }
    for (char const* command : {"^BXN,2,200", "^BON,3", "^B7N,4", "^BD4", "^BBN,8", "^B4N,8", "^BFN,4,32"}) {
        FieldBench bench;
        EXPECT_NO_THROW(Draw(bench, "^FO1,1" + std::string(command) + "^FD" + longData)) << command;
    }
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
