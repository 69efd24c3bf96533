#include <gtest/gtest.h>

#include <map>

#include "../support/FieldBench.h"
#include "../support/LibrarySymbol.h"
#include "barcodes/composite/Tlc39Encoder.h"
#include "barcodes/composite/Tlc39Sketch.h"
#include "barcodes/stacked/CodaBlockEncoders.h"
#include "printengine/src/barcode/Code128Patterns.h"

// Symbols of several rows, module for module against what an independent library makes of the same data, and where the
// library has none, against rows read by hand.

using namespace Barcode::Encoder;
using namespace ZplCore;

namespace {

using Rows = std::vector<std::string>;

Rows Library(int symbology, std::string const& text, int option1 = 0, int option2 = 0) {
    auto rows = LibrarySymbol(text, {symbology, option1, option2});
    EXPECT_FALSE(rows.empty()) << text;
    return rows;
}

/// Wide blocks are two modules, as in the library.
std::string Dump(std::vector<Barcode::Model::Block> const& blocks) {
    std::string row;
    for (auto const block : blocks) row.append(block.wide ? 2 : 1, block.black ? '#' : '.');
    return row;
}

Rows Dump(Barcode::Model::StackedBarcodeModel const& model) {
    Rows rows;
    for (auto const& blocks : model.GetBlocks()) rows.push_back(Dump(blocks));
    return rows;
}

TEST(StackedSymbols, CodablockFIsTheLibrarysSymbol) {
    struct {
        std::string text;
        CodaBlockLayout layout;
    } const rows[] = {
        {"AAAABBBBCCCCDDDD", {5, 4}},
        {"abcdefgh", {5, 2}},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZ abcdefghijklmnopqrstuvwxyz", {11, 5}},
        {"12345678901234567890", {4, 3}},
        {"AB", {4, 3}},
        {"ABCDEFGHIJ", {0, 1}},
        {"A\351BC", {4, 2}},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZABCDEFGHIJKLMNOPQRSTUVWXYZ", {15, 44}},
    };
    for (auto const& [text, layout] : rows) {
        int const columns = layout.columns == 0 ? 0 : static_cast<int>(layout.columns) + 5;
        EXPECT_EQ(Dump(CodaBlockFEncoder::Encode(text, layout, false)),
                  Library(BARCODE_CODABLOCKF, text, static_cast<int>(layout.rows), columns))
            << text;
    }
}

/// The symbol characters of a row, without the stop.
std::vector<int> Characters(std::string const& row) {
    std::map<std::string, int> values;
    for (std::size_t i = 0; i < Code128Patterns.size(); ++i) {
        std::string modules;
        std::string const widths = std::to_string(Code128Patterns[i]);
        for (std::size_t w = 0; w < widths.size(); ++w)
            modules.append(static_cast<std::size_t>(widths[w] - '0'), w % 2 == 0 ? '#' : '.');
        values[modules] = static_cast<int>(i);
    }
    std::vector<int> characters;
    for (std::size_t x = 0; x + 13 < row.size(); x += 11) characters.push_back(values.at(row.substr(x, 11)));
    return characters;
}

/// Reads a symbol as a reader does; FNC1 to FNC3 are `<1>` to `<3>`. Row indicators are checked, check characters of
/// rows too; those of the symbol end the last row.
std::string Read(Rows const& rows) {
    std::string text;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        auto const row = Characters(rows[r]);
        int sum = row[0];
        for (std::size_t i = 1; i + 1 < row.size(); ++i) sum = (sum + static_cast<int>(i) * row[i]) % 103;
        EXPECT_EQ(row.back(), sum) << "row " << r;
        EXPECT_EQ(row[0], 103);
        int subset = row[1] == 98 ? 0 : row[1] == 100 ? 1 : 2;
        int const number = static_cast<int>(r == 0 ? rows.size() - 2 : r + 42);
        EXPECT_EQ(row[2], subset == 2 ? number : number < 32 ? number + 64 : number < 48 ? number - 32 : number - 22);
        std::size_t const checks = r + 1 == rows.size() ? 2 : 0;
        for (std::size_t i = 3; i + 1 + checks < row.size(); ++i) {
            bool const isShift = subset != 2 && row[i] == 98;
            int const in = isShift ? 1 - subset : subset;
            int const value = row[isShift ? ++i : i];
            if (value == 102)
                text += "<1>";
            else if (subset == 2 && value < 100)
                text += {static_cast<char>('0' + value / 10), char('0' + value % 10)};
            else if (value == 99)
                subset = 2;
            else if (value == 101 - subset)
                text += "<4>";
            else if (value == 100 || value == 101)
                subset = 101 - value;
            else if (value >= 96)
                text += value == 97 ? "<2>" : "<3>";
            else
                text += static_cast<char>(value < 64 || in == 1 ? value + 32 : value - 64);
        }
    }
    return text;
}

TEST(StackedSymbols, CodablockIsReadBack) {
    struct {
        std::string text;
        CodaBlockLayout layout;
        bool isE;
        std::string read;
        std::size_t rows;
    } const cases[] = {
        {"CODABLOCK 123456 text", {9, 0}, true, "<1>CODABLOCK 123456 text", 3},
        {"\2000112345678901231", {6, 0}, true, "<1>0112345678901231", 2},
        {"A\200B\201C\202D", {4, 3}, false, "A<1>B<2>C<3>D", 3},
        {"abc\001de\x02\x03\00412345", {5, 0}, false, "abc\001de\x02\x03\00412345", 4},
        {std::string("a\x84") + "b", {4, 2}, false, std::string("a\0b", 3), 2},
        {"\xE1\xE2\xE3\xE4", {5, 0}, false, "<4>a<4>b<4>c<4>d", 3},
        {"12345A6789B", {0, 3}, false, "12345A6789B", 3},
        {std::string(5000, '1'), {62, 0}, false, std::string(5000, '1'), 41},
    };
    for (auto const& [text, layout, isE, read, rows] : cases) {
        auto const symbol = Dump(CodaBlockFEncoder::Encode(text, layout, isE));
        EXPECT_EQ(symbol.size(), rows) << text;
        EXPECT_EQ(Read(symbol), read) << text;
    }
    EXPECT_EQ(CodaBlockFEncoder::Encode(std::string(7, 'A'), {4, 2}, false).GetRows(), 0U);
    EXPECT_EQ(CodaBlockFEncoder::Validate("", {4, 2}), ValidationStatus::TooShort);
    EXPECT_EQ(CodaBlockFEncoder::Validate(std::string(6000, 'A'), {62, 44}), ValidationStatus::TooLong);
}

TEST(StackedSymbols, CodablockAIsRowsOfCode39) {
    struct {
        char const* text;
        CodaBlockLayout layout;
        bool withCheck;
        Rows rows;
    } const cases[] = {
        {"CODE39", {}, true, {"CODE39"}},
        {"CODE39", {3, 0}, false, {"MCOD", "1E39"}},
        {"CODE39", {4, 2}, true, {"MCODE", "139 W"}},  // 12 + 24 + 13 + 14 + 3 + 9 is 75, which leaves 32: W
        {"ABCDE", {0, 3}, false, {"NAB", "1CD", "2E "}},
        {"ABC", {2, 22}, false, {"%AB", "1C ", "2  ", "3  ", "4  ", "5  ", "6  ", "7  ", "8  ", "9  ", "A  ",
                                 "B  ", "C  ", "D  ", "E  ", "F  ", "G  ", "H  ", "I  ", "J  ", "K  ", "L  "}},
        {"ABCDEFG", {3, 2}, false, {}},
    };
    for (auto const& [text, layout, withCheck, rows] : cases) {
        Rows expected;
        for (auto const& row : rows) expected.push_back(Library(BARCODE_CODE39, row)[0]);
        // The library ends a row with the space behind its stop.
        for (auto& row : expected) row.resize(row.find_last_of('#') + 1);
        EXPECT_EQ(Dump(CodaBlockAEncoder::Encode(text, layout, withCheck)), expected) << text;
    }
    EXPECT_EQ(CodaBlockAEncoder::Validate("a", {}), ValidationStatus::InvalidCharacter);
}

TEST(StackedSymbols, Tlc39LinksItsParts) {
    auto const model = Tlc39Encoder::Encode("123456,ABC,D");
    EXPECT_EQ(Dump(model.GetCode39().GetBlocks()), Library(BARCODE_CODE39, "123456")[0].substr(0, 103));
    EXPECT_EQ(model.GetMicroPDF417().GetRows(), 4U);
    EXPECT_EQ(Dump(model.GetLinkerBars()), "#" + std::string(101, '.') + "#");
    auto const symbol = Scripting::GraphicHelper::SketchTLC39Barcode(model, 2, 4, 40, 2, 4, Scripting::Dpi(600), 300);
    EXPECT_EQ(symbol.logicalWidth, 206U);
    EXPECT_EQ(symbol.logicalHeight, 4U * 4 + 4 * 2 + 40);
    EXPECT_EQ(symbol.bitmapWidth, 412U);
    EXPECT_EQ(symbol.bitmapHeight, 2 * (4U * 4 + 4 * 2 + 40));
    for (char const* alone : {"123456", "123456X", "123456,"}) {
        auto const single = Tlc39Encoder::Encode(alone);
        EXPECT_EQ(single.GetMicroPDF417().GetRows(), 0U) << alone;
        EXPECT_TRUE(single.GetLinkerBars().empty()) << alone;
    }
    struct {
        std::string text;
        ValidationStatus status;
    } const cases[] = {
        {"123456," + std::string(25, 'A') + ",B", ValidationStatus::Valid},
        {"123456," + std::string(26, 'A'), ValidationStatus::TooLong},
        {"123456,A," + std::string(150, 'B'), ValidationStatus::TooLong},
        {"12345", ValidationStatus::TooShort},
        {"12345A,B", ValidationStatus::InvalidCharacter},
    };
    for (auto const& [text, status] : cases) EXPECT_EQ(Tlc39Encoder::Validate(text), status) << text;
}

/// Whether the bars of a word have an odd number of modules in all.
std::string ParitiesOfCode49(std::string const& row) {
    std::string parities;
    for (std::size_t word = 2; word + 16 < row.size(); word += 16)
        parities += std::count(row.begin() + static_cast<std::ptrdiff_t>(word),
                               row.begin() + static_cast<std::ptrdiff_t>(word + 16), '#') %
                                2 !=
                            0
                        ? 'O'
                        : 'E';
    return parities;
}

// No free decoder reads it. Row for row it is the library's, and holds what the standard (ANSI/AIM BC6) says of rows:
// start and stop, and the parities of its four words, by which a reader knows the row and which is the last.
TEST(StackedSymbols, Code49IsTheLibrarysSymbolAndItsRowsTellTheirPlace) {
    constexpr std::string_view Parities[] = {"OEEO", "EOEO", "OOEE", "EEOO", "OEOE", "EOOE", "OOOO"};
    for (std::string const text : {"CODE 49", "Code 49, both cases", "12345678901234567890"}) {
        auto const expected = Library(BARCODE_CODE49, text);
        FieldBench bench;
        bench.Run("^BY1^FO0,0^B4N,9^FD" + text + "^FS");
        // Rows nine dots high between lines of one, with blank modules on both sides.
        std::size_t const stride = (10 + expected[0].size() + 1 + 7) / 8;
        Rows drawn(expected.size());
        for (std::size_t r = 0; r < drawn.size(); ++r) {
            for (std::size_t x = 10; x < 10 + expected[0].size(); ++x)
                drawn[r] += (bench.target->lastImage[(1 + r * 10) * stride + x / 8] & 0x80U >> x % 8) != 0 ? '#' : '.';
        }
        EXPECT_EQ(drawn, expected) << text;
        for (std::size_t r = 0; r < drawn.size(); ++r) {
            EXPECT_EQ(ParitiesOfCode49(drawn[r]), r + 1 < drawn.size() ? Parities[r] : "EEEE") << text;
            EXPECT_TRUE(drawn[r].size() == 70 && drawn[r].starts_with("#.") && drawn[r].ends_with("####"));
        }
    }
}

constexpr DrawRow Drawings[] = {
    {"MicroPDF417, mode 33", "^BY2^FO10,20^BFN,6,33^FDAB^FS", "image 10,20 198x24 from 198x24 pixels\n"},
    {"MicroPDF417, mode 5 is as tall as its mode", "^BY2^FO10,20^BFN,6,5^FDAB^FS",
     "image 10,20 76x168 from 76x168 pixels\n"},
    {"MicroPDF417 shares the height of ^BY", "^BY2,3,112^FO10,20^BFN,,5^FDAB^FS",
     "image 10,20 76x112 from 76x112 pixels\n"},
    {"PDF417 rows are at least three modules high", "^BY2^FO10,20^B7N,,2,4,4^FDAB^FS",
     "image 10,20 274x24 from 274x24 pixels\n"},
    {"PDF417 shares the height of ^BY", "^BY2,3,43^FO10,20^B7N,,2,4,4^FDAB^FS",
     "image 10,20 274x40 from 274x40 pixels\n"},
    {"TLC39 with its defaults", "^FO10,20^BTN^FD123456,ABC^FS", "image 10,20 206x64 from 206x64 pixels\n"},
    {"TLC39 with all its sizes", "^FO10,20^BTN,3,3,80,2,6^FD123456,ABC^FS",
     "image 10,20 381x112 from 381x112 pixels\n"},
    {"TLC39, sizes out of bounds", "^FO10,20^BTN,11,4,0,11,256^FD123456,ABC^FS",
     "image 10,20 206x64 from 206x64 pixels\n"},
    {"CODABLOCK A follows the ratio", "^BY2,3^FO10,20^BBN,8,N,4,2,A^FDABCDEF^FS",
     "image 10,20 222x38 from 222x38 pixels\n"},
    {"CODABLOCK is as tall as ^BY", "^BY2,3,50^FO10,20^BBN,,Y,4,2^FDABCDE^FS",
     "image 10,20 202x50 from 202x50 pixels\n"},
    {"CODABLOCK E", "^BY2,3^FO10,20^BBN,8,Y,4,2,E^FDABCDE^FS", "image 10,20 202x38 from 202x38 pixels\n"},
    {"MaxiCode is not turned", "^FWR^FO10,20^BD4^FDA^FS", "image 10,20 211x204 from 211x204 pixels\n"},
    {"CODABLOCK too small", "^BY2,3^FO10,20^BBN,8,Y,4,2,F^FDABCDEFGHIJ^FS", ""},
};
TEST(StackedSymbols, Draws) { ExpectDrawings(Drawings); }

}  // namespace
