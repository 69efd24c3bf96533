#include <gtest/gtest.h>

#include <random>

#include "../support/LabelPage.h"

using ZXing::BarcodeFormat;

namespace {

struct SymbolRow {
    char const* name;
    BarcodeFormat format;
    std::string command;  ///< `o` stands for the orientation, `m` for the magnification, `h` for a height
    std::string data;
    std::string read;  ///< empty: the data
};

SymbolRow const Symbols[] = {
    {"Code 39", BarcodeFormat::Code39, "^B3o,N,h", "ABC-12. $/+%", {}},
    {"Code 39 with its check digit", BarcodeFormat::Code39, "^B3o,Y,h", "CODE39", "CODE39W"},
    {"LOGMARS", BarcodeFormat::Code39, "^BLo,h", "12AB", "12ABO"},
    {"Code 93", BarcodeFormat::Code93, "^BAo,h", "CODE 93-1", {}},
    {"Codabar", BarcodeFormat::Codabar, "^BKo,N,h,Y,N,A,B", "1234-5.6", "A1234-5.6B"},
    {"Interleaved 2 of 5", BarcodeFormat::ITF, "^B2o,h", "1234567", "01234567"},
    {"Interleaved 2 of 5 with its check digit", BarcodeFormat::ITF, "^B2o,h,Y,N,Y", "1234567", "12345670"},
    {"Code 128", BarcodeFormat::Code128, "^BCo,h", "Code 128", {}},
    {"EAN-13", BarcodeFormat::EAN13, "^BEo,h", "400638133393", "4006381333931"},
    {"EAN-8", BarcodeFormat::EAN8, "^B8o,h", "9638507", "96385074"},
    {"UPC-A", BarcodeFormat::UPCA, "^BUo,h", "03600029145", "036000291452"},
    {"UPC-E", BarcodeFormat::UPCE, "^B9o,h", "0123456", "01234565"},
    {"QR Code", BarcodeFormat::QRCode, "^BQo,2,m", "QA,https://example.com/p/1", "https://example.com/p/1"},
    {"QR Code, level H, manual mode", BarcodeFormat::QRCode, "^BQo,2,m", "HM,N0123456789", "0123456789"},
    {"QR Code, runs", BarcodeFormat::QRCode, "^BQo,2,m,H,3", "D010100,LM,N0123456789,A12AABB,B0006qr,ode",
     "012345678912AABBqr,ode"},
    {"QR Code, linked in automatic mode", BarcodeFormat::QRCode, "^BQo,2,m", "D0102F1,QA,HELLO, you", "HELLO, you"},
    {"Data Matrix", BarcodeFormat::DataMatrix, "^BXo,m,200", "Lot 17/4, 2024-02-29", {}},
    {"Data Matrix rectangle", BarcodeFormat::DataMatrix, "^BXo,m,200,,,,,2", "SERIAL123456", {}},
    {"Data Matrix GS1", BarcodeFormat::DataMatrix, "^BXo,m,200,,,,_,1",
     "_10104012345123456_1"
     "21A",
     "0104012345123456\03521A"},
    {"Aztec", BarcodeFormat::Aztec, "^BOo,m", "Aztec 123 text", {}},
    {"Aztec, 80 per cent", BarcodeFormat::Aztec, "^BOo,m,N,80", "Aztec 123 text", {}},
    {"PDF417", BarcodeFormat::PDF417, "^B7o,8,3", "PDF417 carries more text than bars do", {}},
    {"PDF417 without a row height", BarcodeFormat::PDF417, "^B7o,,3", "PDF417 carries more text than bars do", {}},
    {"PDF417, 4 columns", BarcodeFormat::PDF417, "^B7o,8,2,4", "Four columns", {}},
    {"DataBar", BarcodeFormat::DataBar, "^BRo,1,m", "0100123456789", "01001234567894"},
    {"DataBar truncated", BarcodeFormat::DataBar, "^BRo,2,m", "0100123456789", "01001234567894"},
    {"DataBar stacked", BarcodeFormat::DataBar, "^BRo,3,m", "0100123456789", "01001234567894"},
    {"DataBar stacked omnidirectional", BarcodeFormat::DataBar, "^BRo,4,m,2", "0100123456789", "01001234567894"},
    {"DataBar expanded", BarcodeFormat::DataBarExpanded, "^BRo,6,m", "01900123456789083103001750",
     "(01)90012345678908(3103)001750"},
    {"DataBar expanded, 4 segments", BarcodeFormat::DataBarExpanded, "^BRo,6,m,1,1,4", "01900123456789083103001750",
     "(01)90012345678908(3103)001750"},
    {"DataBar expanded, identifiers of open length",
     BarcodeFormat::DataBarExpanded,
     "^BRo,6,m,1,1,4",
     "(235)ABC(10)XY",
     {}},
    {"UPC-A of ^BR", BarcodeFormat::UPCA, "^BRo,7,m,1,h", "03600029145", "036000291452"},
    {"UPC-E of ^BR", BarcodeFormat::UPCE, "^BRo,8,m,1,h", "0123456", "01234565"},
    {"EAN-13 of ^BR", BarcodeFormat::EAN13, "^BRo,9,m,1,h", "400638133393", "4006381333931"},
    {"EAN-8 of ^BR", BarcodeFormat::EAN8, "^BRo,10,m,1,h", "9638507", "96385074"},
    {"GS1-128 with CC-A", BarcodeFormat::Code128, "^BRo,11,m,1,h", "0109501101530003|10ABC", "0109501101530003"},
    {"GS1-128 with CC-C", BarcodeFormat::Code128, "^BRo,12,m,1,h", "0109501101530003|10ABC", "0109501101530003"},
    {"PDF417 truncated", BarcodeFormat::PDF417, "^B7o,8,2,4,,Y", "Without its right side", {}},
};

std::string Replace(std::string text, char letter, std::string const& by) {
    for (std::size_t at; (at = text.find(letter)) != std::string::npos;) text.replace(at, 1, by);
    return text;
}

/// A label with the symbol in its middle.
std::string Label(SymbolRow const& row, char orientation, unsigned width, double scale) {
    std::string command = row.command;
    command = Replace(command, 'o', std::string(1, orientation));
    command = Replace(command, 'm', std::to_string(width));
    command = Replace(command, 'h', std::to_string(static_cast<int>(90 * scale)));
    auto const at = std::to_string(static_cast<int>(60 * scale));
    return "^XA^BY" + std::to_string(width) + ",3^FO" + at + "," + at + command + "^FD" + row.data + "^FS^XZ";
}

struct Resolution {
    unsigned design;
    unsigned printer;
};
constexpr Resolution Resolutions[] = {{203, 203}, {300, 300}, {600, 600}, {300, 600}};

void ExpectReads(SymbolRow const& row, char orientation, unsigned width, Resolution resolution) {
    auto const page = LabelPage::Draw(Label(row, orientation, width, resolution.design / 203.0), resolution.design,
                                      resolution.printer);
    // A camera has more than one pixel for a module.
    EXPECT_EQ(page.Read(row.format, false, width == 1 ? 2 : 1), row.read.empty() ? row.data : row.read)
        << row.name << " " << orientation << " width " << width << " at " << resolution.design << " dpi on "
        << resolution.printer;
}

class ReadBackAt : public testing::TestWithParam<Resolution> {};

TEST_P(ReadBackAt, EveryWidthAndOrientation) {
    for (auto const& row : Symbols) {
        for (char const orientation : {'N', 'R', 'I', 'B'}) {
            for (unsigned width = 1; width <= 5; ++width) ExpectReads(row, orientation, width, GetParam());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, ReadBackAt, testing::ValuesIn(Resolutions), [](auto const& row) {
    return "Design" + std::to_string(row.param.design) + "Printer" + std::to_string(row.param.printer);
});

/// What a mode of Code 128 makes of a text, or "unreadable".
std::string ReadCode128(std::string const& parameters, std::string const& data) {
    return LabelPage::Draw("^XA^BY2^FO60,60^BCN,80," + parameters + "^FD" + data + "^FS^XZ")
        .Read(BarcodeFormat::Code128);
}

TEST(ReadBack, Code128Modes) {
    struct {
        char const* parameters;
        char const* data;
        std::string read;
    } const rows[] = {
        {"Y", "12>5345>6AB", "1234AB"},
        // Each invocation, in the subsets that take it.
        {"N", "a>0b", "a>b"},
        {"N", "a>1b", "a\177b"},
        {"N", ">9A>1B", "A\037B"},
        {"N", ">:a>2b>3c", "abc"},
        {"N", "ab>4Ac", "abAc"},
        {"N", ">93334>4a35", "ABaC"},
        {"N", "a>51234>6b", "a1234b"},
        {"N", "a>7X64>6b", std::string("aX\0b", 4)},
        {"N", ">;>81012>821", "1012\03521"},
        {"N", ">94142", "IJ"},
        {"N", ">:ab", "ab"},
        {"N", ">;1234>7AB", "1234AB"},
        {"N", "a><b>=c", "a^b~c"},
        {"Y", ">;382436>6CODE128>752375152", "382436CODE128TEST"},
        {"Y", "a>0b><c>=d", "a>b^c~d"},
        {"Y", ">;>80112345678901231>6X", "0112345678901231X"},
        {"Y,N,Y", ">;123", "1236"},
        {"Y,N,N,A", "abc123456", "abc123456"},
        {"Y,N,N,U", "12345", "00000000000000123457"},
        {"Y,N,N,D", "(01)09501101530003(10)AB>8(21)X",
         "0109501101530003"
         "10AB\03521X"},
    };
    for (auto const& [parameters, data, read] : rows) EXPECT_EQ(ReadCode128(parameters, data), read) << data;
}

TEST(ReadBack, RandomCode128) {
    std::mt19937 random(17);
    for (int i = 0; i < 200; ++i) {
        std::string data;
        bool const isNumeric = random() % 3 == 0;
        for (unsigned n = 1 + random() % 20; n > 0; --n)
            data += static_cast<char>(isNumeric || random() % 3 == 0 ? '0' + random() % 10 : ' ' + random() % 94);
        // What commands begin with, and what the modes read as escapes.
        std::erase_if(data, [](char c) { return c == '^' || c == '~' || c == '>' || c == '\\'; });
        if (data.empty()) continue;
        ASSERT_EQ(ReadCode128(i % 2 == 0 ? "N" : "N,N,N,A", data), data);
    }
}

TEST(ReadBack, EveryDataMatrixSize) {
    constexpr int Sizes[][2] = {{10, 10}, {16, 16},   {26, 26},   {32, 32},   {52, 52},   {64, 64},
                                {88, 88}, {104, 104}, {120, 120}, {132, 132}, {144, 144}, {18, 8},
                                {32, 8},  {26, 12},   {36, 12},   {36, 16},   {48, 16}};
    for (auto const& [columns, rows] : Sizes) {
        auto const page = LabelPage::Draw("^XA^FO40,40^BXN,4,200," + std::to_string(columns) + "," +
                                          std::to_string(rows) + "^FD123456^FS^XZ");
        EXPECT_EQ(page.Read(BarcodeFormat::DataMatrix), "123456") << columns << "x" << rows;
    }
}

TEST(ReadBack, AztecChannels) {
    auto const page = LabelPage::Draw("^XA^FO40,40^BON,4,Y^FDa\\\\b\\000009\xE1\\000003x^FS^XZ");
    // A small alpha of the Greek channel.
    EXPECT_EQ(page.ReadIn(page.Ink(), BarcodeFormat::Aztec).text(), "a\\b\xCE\xB1x");
}

TEST(ReadBack, AztecSymbolsShareTheirText) {
    std::string const text = "one text in several symbols, which the reader puts together again";
    for (unsigned const count : {2U, 5U, 26U}) {
        auto const page =
            LabelPage::Draw("^XA^FO10,40^BON,2,N,0,N," + std::to_string(count) + ",ID^FD" + text + "^FS^XZ");
        std::string joined;
        int index = 0;
        for (auto const& box : page.BoxesInRow(8)) {
            auto const result = page.ReadIn(box, BarcodeFormat::Aztec);
            EXPECT_EQ(result.sequenceIndex(), index++);
            EXPECT_EQ(result.sequenceSize(), static_cast<int>(count));
            EXPECT_EQ(result.sequenceId(), "ID");
            joined += result.text();
        }
        EXPECT_EQ(joined, text) << count;
    }
}

TEST(ReadBack, MaxiCodeOfCarriers) {
    auto const page = LabelPage::Draw("^XA^FO90,90^BD2^FD001840152382802[)>_1E01_1D961Z00004951^FS^XZ");
    EXPECT_EQ(page.Read(BarcodeFormat::MaxiCode, true).substr(0, 9), "152382802");
}

TEST(ReadBack, MaxiCode) {
    for (auto const& resolution : Resolutions) {
        auto const page =
            LabelPage::Draw("^XA^FO90,90^BD4^FDHELLO MAXICODE^FS^XZ", resolution.design, resolution.printer);
        EXPECT_EQ(page.Read(BarcodeFormat::MaxiCode, true), "HELLO MAXICODE") << resolution.printer;
    }
}

}  // namespace
