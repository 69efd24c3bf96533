#include <gtest/gtest.h>

#include "../support/FieldBench.h"
#include "../support/LibrarySymbol.h"

// Symbologies that the decoder of the read-back tests lacks: what a field prints, module for module, against what an
// independent library makes of the same data.

namespace {

struct Published {
    char const* stream;  ///< with modules of one dot
    int symbology;
    char const* data;
    int option2;
    unsigned libraryWide;  ///< modules of a wide element, as the library has it
};

/// Run lengths of a row, from its first bar on.
std::vector<unsigned> Runs(std::string const& modules) {
    std::vector<unsigned> runs;
    for (std::size_t i = 0; i < modules.size(); ++i) {
        if (i == 0 || modules[i] != modules[i - 1]) runs.push_back(0);
        ++runs.back();
    }
    return runs;
}

std::string FirstRow(std::vector<std::uint8_t> const& image, std::size_t width) {
    std::string row;
    for (std::size_t x = 0; x < width; ++x) row += (image[x / 8] & 0x80U >> x % 8) != 0 ? '#' : '.';
    return row;
}

std::string LibraryRow(Published const& row) {
    auto const rows = LibrarySymbol(row.data, {row.symbology, 0, row.option2});
    EXPECT_FALSE(rows.empty()) << row.data;
    return rows.empty() ? std::string() : rows[0];
}

constexpr Published Rows[] = {
    {"^B1N,Y,9,N^FD123-45^FS", BARCODE_CODE11, "123-45", 1, 2},
    {"^B1N,N,9,N^FD0123456789^FS", BARCODE_CODE11, "0123456789", 0, 2},
    {"^BMN,A,9,N^FD1234567^FS", BARCODE_MSI_PLESSEY, "1234567", 0, 2},
    {"^BMN,B,9,N^FD1234567^FS", BARCODE_MSI_PLESSEY, "1234567", 1, 2},
    {"^BMN,C,9,N^FD80523^FS", BARCODE_MSI_PLESSEY, "80523", 2, 2},
    {"^BMN,D,9,N^FD9876501^FS", BARCODE_MSI_PLESSEY, "9876501", 4, 2},
    {"^BPN,N,9,N^FD0123456789ABCDEF^FS", BARCODE_PLESSEY, "0123456789ABCDEF", 0, 3},
    {"^BJN,9,N^FD0123456789^FS", BARCODE_C25IATA, "0123456789", 0, 3},
    {"^BIN,9,N^FD0123456789^FS", BARCODE_C25IND, "0123456789", 0, 3},
    {"^BKN,N,9,N,N,C,D^FD0123456789-$:/.+^FS", BARCODE_CODABAR, "C0123456789-$:/.+D", 0, 2},
    {"^BAN,9,N^FDCODE 93-$/+%.^FS", BARCODE_CODE93, "CODE 93-$/+%.", 0, 0},
    {"^BEN,9,N^FD012345678901^FS", BARCODE_EANX, "012345678901", 0, 0},
    {"^BSN,9,N^FD37^FS", BARCODE_EANX, "37", 0, 0},
    {"^BSN,9,N^FD52495^FS", BARCODE_EANX, "52495", 0, 0},
    {"^B9N,9,N^FD1234567^FS", BARCODE_UPCE, "1234567", 0, 0},
};

TEST(PublishedSymbols, ModuleForModule) {
    for (auto const& row : Rows) {
        // Elements of two widths are drawn three to one; the library may have them two to one.
        FieldBench bench;
        ASSERT_NE(bench.Run("^BY1,3^FO0,0" + std::string(row.stream)), "") << row.stream;
        unsigned width = 0;
        std::string const expected = LibraryRow(row);
        auto runs = Runs(expected);
        if (row.libraryWide == 2) {
            for (auto& run : runs) run = run == 2 ? 3 : run;
        }
        std::string wanted;
        for (std::size_t i = 0; i < runs.size(); ++i) wanted += std::string(runs[i], i % 2 == 0 ? '#' : '.');
        width = static_cast<unsigned>(wanted.size());
        ASSERT_GE(bench.target->lastImage.size() * 8, width) << row.stream;
        EXPECT_EQ(FirstRow(bench.target->lastImage, width), wanted) << row.stream;
    }
}

/// Tall bars of the top row, read at the pitch of 10 dots (203 dpi).
std::string TallBars(FieldBench const& bench, std::size_t count) {
    std::string bars;
    for (std::size_t i = 0; i < count; ++i)
        bars += (bench.target->lastImage[i * 10 / 8] & 0x80U >> i * 10 % 8) != 0 ? '|' : '.';
    return bars;
}

TEST(PublishedSymbols, PostalBars) {
    struct {
        char const* stream;
        int symbology;
        char const* data;
    } const rows[] = {
        {"^BZN,50,N^FD12345^FS", BARCODE_POSTNET, "12345"},
        {"^BZN,50,N,N,0^FD12345-678901^FS", BARCODE_POSTNET, "12345678901"},
        {"^BZN,50,N,N,1^FD12345678901^FS", BARCODE_PLANET, "12345678901"},
        {"^B5N,50,N^FD0123456789012^FS", BARCODE_PLANET, "0123456789012"},
    };
    for (auto const& row : rows) {
        std::string const library = LibraryRow({"", row.symbology, row.data, 0, 0});
        std::string wanted;
        for (std::size_t i = 0; i < library.size(); i += 2) wanted += library[i] == '#' ? '|' : '.';
        FieldBench bench;
        ASSERT_NE(bench.Run("^FO0,0" + std::string(row.stream)), "") << row.stream;
        EXPECT_EQ(TallBars(bench, wanted.size()), wanted) << row.stream;
    }
}

// The examples of the standard (USPS-B-3200), where F, A, D and T are full bars, ascenders, descenders and trackers.
TEST(PublishedSymbols, IntelligentMail) {
    constexpr unsigned Height = 60;  // dots
    for (auto const& [data, published] :
         {std::pair("01234567094987654321", "ATTFATTDTTADTAATTDTDTATTDAFDDFADFDFTFFFFFTATFAAAATDFFTDAADFTFDTDT"),
          {"01234567094987654321012345678", "ADFTTAFDTTTTFATTADTAAATFTFTATDAAAFDDADATATDTDTTDFDTDATADADTDFFTFA"},
          {"0123456709498765432101234567891", "AADTFFDFTDADTAADAATFDTDDAAADDTDTTDAFADADDDTFFFDDTTTADFAAADFTDAADA"}}) {
        FieldBench bench;
        ASSERT_NE(bench.Run("^FO0,0^BZN,60,N,N,3^FD" + std::string(data) + "^FS"), "");
        auto const& image = bench.target->lastImage;
        std::size_t const stride = image.size() / Height;
        std::string bars;
        for (std::size_t x = 0; x < 65 * 10; x += 10) {
            auto const isDark = [&](std::size_t y) { return (image[y * stride + x / 8] & 0x80U >> x % 8) != 0; };
            bars += isDark(0) ? isDark(Height - 1) ? 'F' : 'A' : isDark(Height - 1) ? 'D' : 'T';
        }
        EXPECT_EQ(bars, published) << data;
    }
}

}  // namespace
