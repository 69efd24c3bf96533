#include <gtest/gtest.h>

#include "../support/Code128Names.h"
#include "../support/FieldBench.h"
#include "barcodes/linear/Code128Text.h"

using namespace ZplCore;

namespace {

/// Converted text with the control bytes as names in angle brackets, and other unprintable bytes as numbers.
std::string Dump(std::string const& text) {
    std::string dump;
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        if (byte >= FirstCode128Byte && byte - FirstCode128Byte < std::size(Code128Names)) {
            dump += Code128Names[byte - FirstCode128Byte];
        } else if (byte < 32 || byte > 126) {
            dump += "<" + std::to_string(byte) + ">";
        } else {
            dump += c;
        }
    }
    return dump;
}

struct InvocationRow {
    char const* text;
    bool ucc;
    char const* expected;
    char const* line;
};

constexpr InvocationRow Invocations[] = {
    {"ABC", false, "<startB>ABC", "ABC"},
    {"12>5345>6AB", false, "<startB>12<C>34<B>AB", "1234AB"},
    {"12>5345>6AB", true, "<startB>12<C>3452<B>AB", "123452AB"},
    {">:ABC", false, "<startB>ABC", "ABC"},
    {">;382436", false, "<startC>382436", "382436"},
    {">;>80012", false, "<startC><FNC1>0012", "0012"},
    {">9ABC", false, "<startA>ABC", "ABC"},
    {">93334", false, "<startA>AB", "AB"},
    {">9646595", false, "<startA><0><1><31>", ""},
    {">99699", false, "<startA>9699", "9699"},  // no value of the subset
    {">93", false, "<startA>3", "3"},
    {"AB>:CD", false, "<startB>ABCD", "ABCD"},  // a start code behind data
    {">;>:12", false, "<startC>12", "12"},
    {">5123", false, "<C>12", "12"},
    {">512ab34", false, "<C>1234", "1234"},
    {">51>82", false, "<C><FNC1>", ""},
    {"a>0b>1c", false, "<startB>a>b<127>c", "a>bc"},
    {">9>1", false, "<startA><31>", ""},
    {">2>3>4", false, "<FNC3><FNC2><SHIFT>", ""},
    {"a><b>=c", false, "<startB>a^b~c", "a^b~c"},
    {">512>0>234", false, "<C>1234", "1234"},  // not in subset C
    {"a>>b", false, "<startB>ab", "ab"},
    {"a>xb", false, "<startB>ab", "ab"},
    {"ab>", false, "<startB>ab>", "ab>"},
    {">", false, "<startB>>", ">"},
    {"~", false, "<startB>", ""},
    {"\xC3\xA9>7x", false, "<startB><A>x", "x"},
    {"", false, "", ""},
    {">6", false, "<B>", ""},
};

TEST(Code128ModeN, ConvertsInvocations) {
    for (auto const& row : Invocations) {
        EXPECT_EQ(Dump(Code128::ModeN::ConvertZplInvocations(row.text, row.ucc)), row.expected) << row.text;
        EXPECT_EQ(Code128::ModeNTransformHRText(row.text, row.ucc), row.line) << row.text;
    }
}

TEST(Code128ModeN, LongDigitsGoThroughNoNumber) {
    std::string const digits(100000, '7');
    EXPECT_EQ(Code128::ModeN::ConvertZplInvocations(">9" + digits, false).size(), 1U + 50000U);
    EXPECT_EQ(Code128::ModeN::ConvertZplInvocations(">;" + digits + "1", false).size(), 1U + 100000U);
}

TEST(Code128ModeA, EscapesAreNotPartOfTheText) {
    EXPECT_EQ(Code128::ModeAEncoderInputTransform("a\\b\\\\c\t\xFF"), "ab\\c\t");
    EXPECT_EQ(Code128::ModeAHRTextTransform("a\\b\\\\c\t"), "ab\\c");
}

TEST(Code128ModeU, ContainerNumbers) {
    using namespace Code128;
    EXPECT_EQ(ModeUEncoderInputTransformWithPadding("12345"), "00000000000000123457");
    EXPECT_EQ(ModeUEncoderInputTransformWithPadding(""), "00000000000000000000");
    EXPECT_EQ(ModeUEncoderInputTransformWithPadding("(00) 1 2345678 901234567 5"), "00123456789012345675");
    EXPECT_EQ(ModeUEncoderInputTransformWithoutPadding("12345"), "123457");
    EXPECT_EQ(ModeUValidation("0012345678901234567"), Barcode::Encoder::ValidationStatus::Valid);
    EXPECT_EQ(ModeUValidation("00123456789012345675"), Barcode::Encoder::ValidationStatus::TooLong);
    EXPECT_EQ(ModeUValidation("12345"), Barcode::Encoder::ValidationStatus::TooShort);
    EXPECT_EQ(ModeUValidation("001234567890123456x"), Barcode::Encoder::ValidationStatus::InvalidCharacter);
}

TEST(Code128ModeD, Gs1Data) {
    struct Row {
        char const* data;
        char const* symbol;
        char const* line;
    };
    constexpr Row rows[] = {
        {"(00)106141412345678908", "00106141412345678908", "(00)106141412345678908"},
        {"(00) 1 0614141 234567890 9", "00106141412345678908", "(00)106141412345678908"},  // check digit computed
        {"0109501101530003", "0109501101530003", "(01)09501101530003"},
        {"(01)0950110153000", "0109501101530003", "(01)09501101530003"},
        {"(01)09501101530003(10)AB 1", "010950110153000310AB1", "(01)09501101530003(10)AB 1"},
        {"(10)AB>8(01)09501101530009", "10AB<FNC1>0109501101530003", "(10)AB(01)09501101530003"},
        {"(10)0012>800106141412345678900", "100012<FNC1>00106141412345678908", "(10)0012(00)106141412345678908"},
        {">8(10)AB", "<FNC1>10AB", "(10)AB"},
        {">8>8(01)0950110153000", "<FNC1>0109501101530003", "(01)09501101530003"},
        {"(01)09501101530003(02)09501101530009(37)5",
         "0109501101530003020950110153000337"
         "5",
         "(01)09501101530003(02)09501101530003(37)5"},
        {"(10)A>5B", "10A", "(10)A"},
        {"(10)A>", "10A", "(10)A"},
        {"(00)123", "00123", "(00)123"},
        {"(01)0950110153000(17)250101", "010950110153000317250101", "(01)09501101530003(17)250101"},
        {"", "", ""},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(Dump(Code128::ModeD::TransformInput(row.data)), row.symbol) << row.data;
        EXPECT_EQ(Code128::ModeD::TransformInterpretationLine(row.data), row.line) << row.data;
    }
    using namespace std::string_literals;
    EXPECT_EQ(Code128::ModeD::TransformInput("10A\0B"s), "10A");
}

// Code 128: 11 modules a character, with start, check character and 13 modules of stop.
constexpr DrawRow Drawings[] = {
    {"mode N", "^FO10,20^BCN,40^FDAB^FS", "image 10,20 114x40 from 114x40 pixels\ntext 47,66 'AB' A 2x2\n"},
    {"without line", "^FO10,20^BCN,40,N^FDAB^FS", "image 10,20 114x40 from 114x40 pixels\n"},
    {"line above", "^FO10,120^BCN,40,Y,Y^FDAB^FS", "image 10,120 114x40 from 114x40 pixels\ntext 47,72 'AB' A 2x2\n"},
    {"height and turn by default", "^BY1,2,30^FWR^FO10,20^BC^FDAB^FS",
     "image 10,20 57x30 from 57x30 pixels turned 90\ntext -16,38 'AB' A 1x1 turned 90\n"},
    {"the wide bar follows no ratio", "^BY2,2.5^FO10,20^BCN,40,N^FDAB^FS", "image 10,20 114x40 from 114x40 pixels\n"},
    {"subset C", "^FO10,20^BCN,40,Y^FD>;1234^FS", "image 10,20 114x40 from 114x40 pixels\ntext 27,66 '1234' A 2x2\n"},
    {"unknown mode is N", "^FO10,20^BCN,40,Y,N,N,X^FD>;1234^FS",
     "image 10,20 114x40 from 114x40 pixels\ntext 27,66 '1234' A 2x2\n"},
    {"mode A", "^FO10,20^BCN,40,Y,N,N,a^FD1234^FS", "image 10,20 114x40 from 114x40 pixels\ntext 27,66 '1234' A 2x2\n"},
    {"mode U grows short data", "^FO10,20^BCN,40,N,N,N,U^FD12345^FS", "image 10,20 312x40 from 312x40 pixels\n"},
    {"mode U with validation", "^CVY^FO10,20^BCN,40,N,N,N,U^FD12345^FS",
     "rect 19,29 to 131,47 thickness 18\ntext 10,28 ' INVALID - S ' D 1x1 white\n"},
    {"mode D", "^FO10,20^BCN,40,N,N,N,d^FD(10)AB^FS", "image 10,20 180x40 from 180x40 pixels\n"},
    {"mode D leads with FNC1 once", "^FO10,20^BCN,40,N,N,N,D^FD>8(10)AB^FS", "image 10,20 180x40 from 180x40 pixels\n"},
    {"mode D shows its error", "^FO10,20^BCN,40,N,N,N,D^FD>8^FS",
     "rect 19,29 to 131,47 thickness 18\ntext 10,28 ' INVALID - S ' D 1x1 white\n"},
    {"nothing to draw", "^FO10,20^BCN,40^FD^FS", ""},
    {"template", "^FO10,20^BCN,40,N^FN1^FS^FN1^FDAB^FS", "image 10,20 114x40 from 114x40 pixels\n"},
};
TEST(Code128, Draws) { ExpectDrawings(Drawings); }

TEST(Code128, NothingLeftToDrawIsTold) {
    FieldBench bench;
    bench.Run("^FO10,20^BCN,50^FD\xE9^FS");
    EXPECT_EQ(bench.reports, std::vector<std::string>{"no barcode can be made of the data \"\xE9\": the symbology has "
                                                      "none of their characters"});
}

}  // namespace
