#include "Barcode/Encoder/Code128Encoder.h"

#include <ZXing/BarcodeFormat.h>
#include <ZXing/DecodeHints.h>
#include <ZXing/ReadBarcode.h>
#include <gtest/gtest.h>

#include "../support/Code128Names.h"
#include "printengine/src/barcode/Code128Characters.h"

using namespace Barcode::Encoder;

namespace {

/// What an independent reader reads in the symbol of a text. FNC1 shows as 0x1D behind the first place.
std::string ReadBack(std::string const& text, Code128EncodeMode mode) {
    auto const symbol = Code128Encoder::Encode(WithCode128Bytes(text), mode);
    auto const& model = *symbol;
    constexpr int Module = 2, Quiet = 30, Height = 20;
    int const width = static_cast<int>(model.GetBlocks().size()) * Module + 2 * Quiet;
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(width) * Height, 255);
    for (int y = 0; y < Height; ++y) {
        for (std::size_t i = 0; i < model.GetBlocks().size() * Module; ++i) {
            if (model.GetBlocks()[i / Module].black) pixels[static_cast<std::size_t>(y * width + Quiet) + i] = 0;
        }
    }
    ZXing::DecodeHints hints;
    hints.setFormats(ZXing::BarcodeFormat::Code128);
    auto const result = ZXing::ReadBarcode({pixels.data(), width, Height, ZXing::ImageFormat::Lum}, hints);
    if (!result.isValid()) return "unreadable";
    auto const& bytes = result.bytes();
    return std::string(bytes.begin(), bytes.end());
}

struct ManualCase {
    char const* name;
    std::string text;
    std::vector<int> characters;
};

}  // namespace

TEST(Code128EncoderTest, ManualFollowsTheControlBytes) {
    ManualCase const cases[] = {
        {"implied start B", "A1", {104, 33, 17}},
        {"first code C starts in C", "<C>1234", {105, 12, 34}},
        {"start A", "<startA>A\1", {103, 33, 65}},
        {"start C then B", "<startC>12<B>x", {105, 12, 100, 88}},
        {"switches between all", "<startB>a<A>A<C>99<A>B<B>b", {104, 65, 101, 33, 99, 99, 101, 34, 100, 66}},
        {"switch to the subset in force", "<startB><B>a<B>", {104, 65}},
        {"function characters", "<startB><FNC1><FNC2><FNC3>", {104, 102, 97, 96}},
        {"FNC1 in C parts pairs", "<startC>12<FNC1>34", {105, 12, 102, 34}},
        {"shift takes one character", "<startB>a<SHIFT>\5b", {104, 65, 98, 69, 66}},
        {"shift ends at a switch", "<startB>a<SHIFT><C>12", {104, 65, 99, 12}},
        {"odd digit in C is left out", "<startC>123", {105, 12}},
        {"letters in C are left out", "<startC>1A23", {105, 23}},
        {"small letters in A are left out", "<startA>AbC", {103, 33, 35}},
        {"a later start is left out", "AB<startC>12", {104, 33, 34, 17, 18}},
        {"tilde and DEL", "~\x7F", {104, 94, 95}},
        {"only a start", "<startB>", {}},
        {"nothing", "", {}},
    };
    for (auto const& [name, text, characters] : cases)
        EXPECT_EQ(ManualCode128Characters(WithCode128Bytes(text)), characters) << name;
}

TEST(Code128EncoderTest, AutomaticIsShortest) {
    struct {
        char const* text;
        std::size_t characters;  ///< with the start, without check and stop
    } const cases[] = {
        {"123456", 4}, {"12", 2},     {"123", 4},      {"1234567", 6}, {"A1234", 5},  {"A123456", 6},
        {"AB12CD", 7}, {"A1234B", 7}, {"A123456B", 8}, {"a\1b", 5},    {"\1\2ab", 6}, {"ab\1\2", 6},
    };
    for (auto const& [text, characters] : cases) {
        EXPECT_EQ(ShortestCode128Characters(text, false).size(), characters) << text;
        EXPECT_EQ(ReadBack(text, Code128EncodeMode::Automatic), text);
    }
}

// All 106 values occur in some subset: digit pairs reach 0 to 99, switches and function characters the rest.
TEST(Code128EncoderTest, AnIndependentReaderReadsEveryPattern) {
    for (int first = 0; first < 100; first += 10) {
        std::string digits;
        for (int value = first; value < first + 10; ++value) digits += {char('0' + value / 10), char('0' + value % 10)};
        EXPECT_EQ(ReadBack("<startC>" + digits, Code128EncodeMode::Manual), digits);
    }
    for (int start = 0; start < 128; start += 16) {
        std::string text;
        for (int c = start; c < start + 16; ++c) text += static_cast<char>(c);
        EXPECT_EQ(ReadBack(text, Code128EncodeMode::Automatic), text) << start;
    }
    EXPECT_EQ(ReadBack("<startA>AB<B>ab<C>1234<A>Z<SHIFT>z", Code128EncodeMode::Manual), "ABab1234Zz");
}

TEST(Code128EncoderTest, Gs1LeadsWithFnc1Once) {
    std::string const number = "00012345678901234567";
    EXPECT_EQ(ShortestCode128Characters(number, true), (std::vector{105, 102, 0, 1, 23, 45, 67, 89, 1, 23, 45, 67}));
    EXPECT_EQ(ShortestCode128Characters(WithCode128Bytes("<FNC1>" + number), true),
              ShortestCode128Characters(number, true));
    EXPECT_EQ(ShortestCode128Characters("123", true), (std::vector{105, 102, 12, 100, 19}));
    EXPECT_EQ(ReadBack("011234567890123110AB<FNC1>21X", Code128EncodeMode::Gs1), "011234567890123110AB\03521X");
}

TEST(Code128EncoderTest, ValidateTellsWhatIsWrong) {
    struct {
        std::string text;
        Code128EncodeMode mode;
        ValidationStatus status;
    } const cases[] = {
        {"abc\1", Code128EncodeMode::Manual, ValidationStatus::Valid},
        {"<startC>12", Code128EncodeMode::Manual, ValidationStatus::Valid},
        {"", Code128EncodeMode::Manual, ValidationStatus::TooShort},
        {"\x80", Code128EncodeMode::Manual, ValidationStatus::InvalidCharacter},
        {std::string(6001, '1'), Code128EncodeMode::Manual, ValidationStatus::TooLong},
        {"<startC>12", Code128EncodeMode::Automatic, ValidationStatus::InvalidCharacter},
        {"106141411234567897", Code128EncodeMode::Ucc, ValidationStatus::TooShort},
        {"00106141412345678908", Code128EncodeMode::Ucc, ValidationStatus::Valid},
        {"00106141412345678907", Code128EncodeMode::Ucc, ValidationStatus::InvalidCheckDigit},
        {"0010614141234567890X", Code128EncodeMode::Ucc, ValidationStatus::InvalidCharacter},
        {"001061414123456789081", Code128EncodeMode::Ucc, ValidationStatus::TooLong},
    };
    for (auto const& [text, mode, status] : cases)
        EXPECT_EQ(Code128Encoder::Validate(WithCode128Bytes(text), mode), status) << text.substr(0, 30);
}
