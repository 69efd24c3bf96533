#include <gtest/gtest.h>

#include "../support/FieldBench.h"
#include "fields/text/TextBlockLayout.h"

namespace {

using namespace ZplCore::Sketching;

/// The lines of a text, parted by bars, in a block whose characters are one dot wide.
std::string Lines(std::u32string_view text, BlockShape shape) {
    shape.advance = [](char32_t) { return 1; };
    std::string lines;
    BreakIntoLines(text, shape, [&](BlockLine const& line) {
        for (char32_t const c : line.text) lines += static_cast<char>(c);
        lines += line.endsParagraph ? '#' : '|';
        return true;
    });
    return lines;
}

TEST(TextBlockLayout, BreaksLines) {
    struct Row {
        char const* name;
        std::u32string_view text;
        BlockShape shape;
        char const* expected;
    };
    Row const rows[] = {
        {"fits", U"one two", {7, 0, 0, {}}, "one two#"},
        {"at the blank", U"one two", {6, 0, 0, {}}, "one|two#"},
        {"a blank may stand over the edge", U"one two", {3, 0, 0, {}}, "one|two#"},
        {"blanks around lines go", U"  one   two ", {5, 0, 0, {}}, "one|two#"},
        {"blanks inside stay", U"a  b c", {4, 0, 0, {}}, "a  b|c#"},
        {"line feeds", U"a\n\nb\n", {9, 0, 0, {}}, "a##b#"},
        {"long word", U"abcdefg hi", {3, 0, 0, {}}, "abc|def|g|hi#"},
        {"long word behind a short one", U"a bcdefg", {3, 0, 0, {}}, "a|bcd|efg#"},
        {"no room at all", U"ab", {0, 0, 0, {}}, "a|b#"},
        {"indent ends with the paragraph", U"aaaa bb\ncccc", {4, 2, 0, {}}, "aaaa|bb#cccc#"},
        {"indent shortens further lines", U"aaaa bb cc", {4, 2, 0, {}}, "aaaa|bb|cc#"},
        {"soft hyphen at a break", U"ab\u00ADcd", {3, 0, 0, {}}, "ab-|cd#"},
        {"soft hyphen inside a line", U"ab\u00ADcd", {4, 0, 0, {}}, "abcd#"},
        {"no room for the hyphen", U"abc\u00ADcd", {3, 0, 0, {}}, "abc|cd#"},
        {"the later of blank and hyphen", U"a b\u00ADcd", {4, 0, 0, {}}, "a b-|cd#"},
        {"spacing counts between characters", U"ab cd", {5, 0, 2, {}}, "ab|cd#"},
        {"a place to end without a blank", U"abcd", {3, 0, 0, {}, {}, {false, false, true, false}}, "ab|cd#"},
        {"the later of blank and such a place",
         U"a bcd",
         {4, 0, 0, {}, {}, {false, false, true, true, false}},
         "a b|cd#"},
        {"clusters stay whole", U"abcd", {1, 0, 0, {}, {1, 0, 1, 0}}, "ab|cd#"},
        {"and have no spacing inside", U"abcd", {4, 0, 2, {}, {1, 0, 1, 0}}, "abcd#"},
        {"nothing", U"", {5, 0, 0, {}}, ""},
        {"only blanks", U"   ", {5, 0, 0, {}}, ""},
    };
    for (auto const& row : rows) EXPECT_EQ(Lines(row.text, row.shape), row.expected) << row.name;
}

// A character is 10 x 20 dots, its baseline lies in row 14.
constexpr DrawRow FieldBlocks[] = {
    {"lines", "^FO5,5^FB60,3^FDone two three^FS",
     "text 5,5 'one' A 1x1\ntext 5,25 'two' A 1x1\ntext 5,45 'three' A 1x1\n"},
    {"surplus lines overprint the last", "^FO5,5^FB30,2^FDone two six^FS",
     "text 5,5 'one' A 1x1\ntext 5,25 'two' A 1x1\ntext 5,25 'six' A 1x1\n"},
    {"lines out of range are one", "^FO5,5^FB30,10000^FDone two^FS", "text 5,5 'one' A 1x1\ntext 5,5 'two' A 1x1\n"},
    {"line spacing", "^FO5,5^FB30,2,-4^FDone two^FS", "text 5,5 'one' A 1x1\ntext 5,21 'two' A 1x1\n"},
    {"right", "^FO5,5^FB100,2,0,R^FDone^FS", "text 75,5 'one' A 1x1\n"},
    {"centre", "^FO5,5^FB100,2,0,c^FDone\\&seven^FS", "text 40,5 'one' A 1x1\ntext 30,25 'seven' A 1x1\n"},
    {"justified but for the end of the paragraph", "^FO0,0^FB70,3,0,J^FDa b c defg h^FS",
     "text 0,0 'a' A 1x1\ntext 30,0 'b' A 1x1\ntext 60,0 'c' A 1x1\ntext 0,20 'defg h' A 1x1\n"},
    {"hanging indent", "^FO5,5^FB60,3,0,L,20^FDone two six^FS",
     "text 5,5 'one' A 1x1\ntext 25,25 'two' A 1x1\ntext 25,45 'six' A 1x1\n"},
    {"hanging indent begins again with each paragraph", "^FO5,5^FB60,9,0,L,20^FDone two\\&six ten^FS",
     "text 5,5 'one' A 1x1\ntext 25,25 'two' A 1x1\ntext 5,45 'six' A 1x1\ntext 25,65 'ten' A 1x1\n"},
    {"negative indent is none", "^FO5,5^FB30,2,0,L,-3^FDone two^FS", "text 5,5 'one' A 1x1\ntext 5,25 'two' A 1x1\n"},
    {"escapes", "^FO0,0^FB200,9^FDa\\&b\\\\c\\-d\\^FS", "text 0,0 'a' A 1x1\ntext 0,20 'b\\cd\\' A 1x1\n"},
    {"line feeds in hex", "^FO0,0^FB200,9^FH^FDa_0Ab_00c^FS", "text 0,0 'a' A 1x1\ntext 0,20 'bc' A 1x1\n"},
    {"without width nothing is drawn", "^FO0,0^FB,9^FDabc^FS", ""},
    {"spacing", "^FO0,0^FPH,5^FB25,9^FDab c^FS", "text 0,0 'ab' A 1x1 spacing 5\ntext 0,20 'c' A 1x1 spacing 5\n"},
    {"last possible baseline on the typeset point", "^FT5,100^FB60,3^FDone two^FS",
     "text 5,46 'one' A 1x1\ntext 5,66 'two' A 1x1\n"},
    {"turned by 90", "^FWR^FO100,10^FB30,2^FDone two^FS",
     "text 120,10 'one' A 1x1 turned 90\ntext 100,10 'two' A 1x1 turned 90\n"},
    {"turned by 180", "^FWI^FO100,10^FB30,2^FDone two^FS",
     "text 100,30 'one' A 1x1 turned 180\ntext 100,10 'two' A 1x1 turned 180\n"},
    {"turned by 270", "^FWB^FO100,10^FB30,2^FDone two^FS",
     "text 100,10 'one' A 1x1 turned 270\ntext 120,10 'two' A 1x1 turned 270\n"},
    {"right of the origin at 90", "^FWR,1^FO100,10^FB30,2^FDone two^FS",
     "text 81,10 'one' A 1x1 turned 90\ntext 61,10 'two' A 1x1 turned 90\n"},
    {"right of the origin at 270", "^FWB,1^FO100,10^FB30,2^FDone two^FS",
     "text 60,10 'one' A 1x1 turned 270\ntext 80,10 'two' A 1x1 turned 270\n"},
    {"typeset at 90", "^FWR^FT100,10^FB30,2^FDone two^FS",
     "text 115,10 'one' A 1x1 turned 90\ntext 95,10 'two' A 1x1 turned 90\n"},
    {"typeset at 180", "^FWI^FT100,90^FB30,2^FDone two^FS",
     "text 70,105 'one' A 1x1 turned 180\ntext 70,85 'two' A 1x1 turned 180\n"},
    {"typeset at 270", "^FWB^FT100,90^FB30,2^FDone two^FS",
     "text 66,60 'one' A 1x1 turned 270\ntext 86,60 'two' A 1x1 turned 270\n"},
};
TEST(FieldBlock, Draws) { ExpectDrawings(FieldBlocks); }

constexpr DrawRow TextBlocks[] = {
    {"lines that fit", "^FO5,5^TBN,30,59^FDone two six^FS", "text 5,5 'one' A 1x1\ntext 5,25 'two' A 1x1\n"},
    {"a block lower than a line shows its first", "^FO5,5^TBN,30,19^FDone two^FS", "text 5,5 'one' A 1x1\n"},
    {"line ends of two bytes and of one", "^FO5,5^TBN,90,99^FH^FDa_0D_0Ab_0Dc_0Ad^FS",
     "text 5,5 'a' A 1x1\ntext 5,25 'b' A 1x1\ntext 5,45 'c' A 1x1\ntext 5,65 'd' A 1x1\n"},
    {"without width one character a line", "^FO5,5^TBN,,40^FDabc^FS", "text 5,5 'a' A 1x1\ntext 5,25 'b' A 1x1\n"},
    {"sequences", "^FO0,0^TBN,300,90^FDa<<>b<->c<x>d<< >e<f^FS", "text 0,0 'a<bcd<e<f' A 1x1\n"},
    {"turned", "^FO100,10^TBR,30,40^FDone two^FS",
     "text 120,10 'one' A 1x1 turned 90\ntext 100,10 'two' A 1x1 turned 90\n"},
};
TEST(TextBlock, Draws) { ExpectDrawings(TextBlocks); }

TEST(FieldBlock, ScaleAppliesToTheWidthInEveryUnit) {
    FieldBench bench;
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::UnitOfMeasure, ZplUnitOfMeasure::Inches);
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::DpiScaleFactor, 2U);
    bench.Run("^FB40,2");
    EXPECT_EQ(bench.processor.at(ZplContextKeys::TextBlockWidth), 80U);
}

// The next field goes on at the end of the last possible line, and on the typeset row of a typeset block.
TEST(FieldBlock, EndsAtItsLastPossibleLine) {
    struct Row {
        char const* stream;
        char const* next;
    };
    for (auto const& row : std::initializer_list<Row>{
             {"^FO5,5^FB60,3^FDone^FS", "65,64"},
             {"^FO5,5^FWI^FB60,3^FDone^FS", "5,5"},
             {"^FT5,200^FB60,3^FDone^FS", "65,200"},
             {"^FT100,200^FWI^FB60,3^FDone^FS", "40,200"},
         }) {
        FieldBench bench;
        bench.Run(row.stream);
        EXPECT_EQ(bench.Next(), row.next) << row.stream;
    }
}

// In time that grows with the text and not with its square.
TEST(FieldBlock, DrawsAllOfALongText) {
    std::string words;
    for (int i = 0; i < 200'000; ++i) words += i % 7 == 0 ? ' ' : 'w';
    auto const letters = std::count(words.begin(), words.end(), 'w');
    for (std::string const block : {"^FB100000,9999", "^FB5,9999,0,J"}) {
        FieldBench bench;
        std::string const drawn = bench.Run("^FO0,0" + block + "^FD" + words + "^FS");
        EXPECT_EQ(std::count(drawn.begin(), drawn.end(), 'w'), letters) << block;
    }
}

}  // namespace
