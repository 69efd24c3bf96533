#include <filesystem>
#include <string>
#include <vector>

#include "tests/printengine/DeskFixture.h"

using Scripting::ScriptGraphicContext;
using Scripting::ScriptTextFlow;
using Scripting::TextPiece;

namespace {

std::string Utf8(std::u32string_view text) {
    std::string bytes;
    for (char32_t const c : text) {
        if (c < 0x80) {
            bytes += static_cast<char>(c);
        } else if (c < 0x800) {
            bytes += {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
        } else if (c < 0x10000) {
            bytes += {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
                      static_cast<char>(0x80 | (c & 0x3F))};
        } else {
            bytes += {static_cast<char>(0xF0 | c >> 18), static_cast<char>(0x80 | (c >> 12 & 0x3F)),
                      static_cast<char>(0x80 | (c >> 6 & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
        }
    }
    return bytes;
}

class ScriptsTest : public DeskFixture {
protected:
    static Picture Draw(ScriptGraphicContext& target, std::string const& font, std::u32string_view text, int x = 100,
                        int degrees = 0, ScriptTextFlow flow = ScriptTextFlow::Horizontal) {
        target.StartLabel();
        target.SelectFont(font, 1, 1);
        target.SetRotation(degrees);
        target.SetTextFlow(flow);
        target.DrawText(x, 100, Utf8(text), Left, 0, false, false);
        return Drawn(target);
    }
    static int Width(ScriptGraphicContext const& target, std::string const& font, std::u32string_view text,
                     int spacing = 0) {
        return target.MeasureText(font, Utf8(text), 1, spacing, true);
    }

    std::unique_ptr<ScriptGraphicContext> target = Target(3, 3);
    std::string font0 = Font0(*target, 40, 40);
};

TEST_F(ScriptsTest, WhatSitsOnALetterOrCannotBeSeenTakesNoRoom) {
    struct Row {
        std::u32string_view text;
        std::u32string_view same;
        bool looksTheSame;
    };
    Row const rows[] = {
        {U"e\u0301o\u0308", U"\u00E9\u00F6", true},                  // as one character each
        {U"e\u0323\u0302", U"\u1EC7", true},                         // two marks in order
        {U"e\u0302\u0323", U"\u1EC7", true},                         // and out of it
        {U"a\u200Bb\u00ADc\u200Ed\u2060e\uFEFFf", U"abcdef", true},  // what cannot be seen
        {U"a\u200Fb", U"ab", true},                                  // a mark of direction alone
        {U"\u0E17\u0E35\u0E48", U"\u0E17", false},                   // Thai, two marks above
        {U"\u05E9\u05B8\u05C1", U"\u05E9", false},                   // Hebrew points
        {U"\u0628\u064E", U"\u0628", false},                         // an Arabic vowel
    };
    for (auto const& font : {font0, std::string("A"), std::string("F")}) {
        for (auto const& row : rows) {
            EXPECT_EQ(Width(*target, font, row.text, 5), Width(*target, font, row.same, 5)) << font << Utf8(row.text);
            EXPECT_EQ(Draw(*target, font, row.text) == Draw(*target, font, row.same), row.looksTheSame)
                << font << " " << Utf8(row.text);
        }
    }
}

TEST_F(ScriptsTest, WhatRunsToTheLeftStandsInItsOrder) {
    struct Row {
        std::u32string_view text;
        std::vector<std::u32string_view> fromTheLeft;
    };
    Row const rows[] = {
        {U"\u05D0\u05D1", {U"\u05D1", U"\u05D0"}},
        {U"\u05D0 12", {U"12", U" ", U"\u05D0"}},
        {U"a\u05D0\u05D1 c", {U"a", U"\u05D1", U"\u05D0", U" ", U"c"}},
        {U"\u05D0(a)", {U"(", U"a", U")", U"\u05D0"}},
        {U"(\u05D0)", {U"(", U"\u05D0", U")"}},                   // each bracket is mirrored and changes sides
        {U"\uFE8E\uFE91 1", {U"\uFE8E", U"\uFE91", U" ", U"1"}},  // shapes of letters stand as they are sent
    };
    for (auto const& font : {font0, std::string("D")}) {
        for (auto const& row : rows) {
            target->StartLabel();
            target->SelectFont(font, 1, 1);
            int x = 100;
            for (auto const part : row.fromTheLeft) {
                target->DrawText(x, 100, Utf8(part), Left, 0, false, false);
                x += Width(*target, font, part);
            }
            Picture const expected = Drawn(*target);
            EXPECT_EQ(Draw(*target, font, row.text), expected) << font << " " << Utf8(row.text);
        }
    }
}

TEST_F(ScriptsTest, LettersJoinWhereTheirScriptDoes) {
    // The letter beh begins, goes on and ends in narrower pictures than it has alone.
    EXPECT_LT(Width(*target, font0, U"\u0628\u0628\u0628"), 3 * Width(*target, font0, U"\u0628"));
    for (auto const& font : {font0, std::string("F")}) {
        EXPECT_EQ(Width(*target, font, U"\u0628\u200C\u0628"), 2 * Width(*target, font, U"\u0628")) << font;
        // Joined letters have ink in each column, so that no gap shows at any size.
        for (unsigned size = 18; size < 60; size += 7) {
            std::string const sized = Font0(*target, size, size);
            auto const box = Draw(*target, sized, U"\u0633\u0633\u0633\u0633", 20).InkBox();
            Picture const word = Draw(*target, sized, U"\u0633\u0633\u0633\u0633", 20)
                                     .Cropped(box[0], box[1], box[2] - box[0], box[3] - box[1]);
            for (int x = 0; x < word.width; ++x)
                EXPECT_GT(word.Cropped(x, 0, 1, word.height).CountBlack(), 0) << size << " column " << x;
        }
    }
    // A conjunct is not its letters beside each other, and a vowel may stand before its letter.
    EXPECT_NE(Width(*target, font0, U"\u0915\u094D\u0937"), Width(*target, font0, U"\u0915\u0937"));
    EXPECT_NE(Draw(*target, font0, U"\u0915\u093F"), Draw(*target, font0, U"\u0915\u0940"));
}

TEST_F(ScriptsTest, FourTurnsAreOnePictureTurned) {
    std::u32string_view const text = U"\u0E17\u0E35\u0E48 \u0628\u0628 12";
    for (ScriptTextFlow const flow : {ScriptTextFlow::Horizontal, ScriptTextFlow::Vertical, ScriptTextFlow::Reverse}) {
        for (auto const& font : {font0, std::string("F")}) {
            int const width = Width(*target, font, text);
            int const height = target->GetFontHeight(font);
            Picture const level = Draw(*target, font, text, 200, 0, flow);
            for (int const degrees : {90, 180, 270}) {
                int const w = degrees == 180 ? width : height, h = degrees == 180 ? height : width;
                EXPECT_EQ(Draw(*target, font, text, 200, degrees, flow).Cropped(110, 10, w + 180, h + 180),
                          level.Cropped(110, 10, width + 180, height + 180).Turned(degrees))
                    << font << " " << degrees << " flow " << static_cast<int>(flow);
            }
        }
    }
}

TEST_F(ScriptsTest, AWordIsOfOneFace) {
    // The face of font 0 lacks the accented letter; beside it the others come from the same face as that.
    EXPECT_NE(Width(*target, font0, U"\u03A9\u03CE"), 0);
    Picture const mixed = Draw(*target, font0, U"\u03A9");
    Picture const word = Draw(*target, font0, U"\u03A9\u03CE");
    int const width = Width(*target, font0, U"\u03A9");
    EXPECT_NE(word.Cropped(100, 80, width - 2, 80), mixed.Cropped(100, 80, width - 2, 80));
    EXPECT_EQ(Draw(*target, font0, U"\u03A9 a").Cropped(100, 80, width, 80), mixed.Cropped(100, 80, width, 80));
}

TEST_F(ScriptsTest, LinesEndWhereTheScriptLetsThem) {
    struct Row {
        std::u32string_view text;
        std::string_view breaks;  ///< 1 where a line may end before the character
    };
    Row const rows[] = {
        {U"one two", ""},
        {U"\u05D0\u05D1 \u05D2", ""},
        {U"\u65E5\u672C\u3002\u300C\u8A9E\u300D", "010100"},  // not before a full stop, nor behind a bracket
        {U"\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35\u0E0A\u0E32\u0E27\u0E42\u0E25\u0E01",  // three words of Thai
         "000000100100"},
        {U"A-1 \u4E2D", "00001"},  // what is no ideograph breaks at blanks alone
    };
    for (auto const& row : rows) {
        std::string breaks;
        for (bool const mayEnd : target->FindBreaks(row.text)) breaks += mayEnd ? '1' : '0';
        EXPECT_EQ(breaks, row.breaks) << Utf8(row.text);
    }
    EXPECT_EQ(target->FindPieces(U"ab \u05D0\u05D1 1", true),
              (std::vector<TextPiece>{{6, 7, false}, {2, 6, true}, {0, 2, false}}));
    EXPECT_TRUE(target->FindPieces(U"ab", false).empty());
    EXPECT_TRUE(target->RunsRightToLeft(U"1 \u05D0 ab"));
    EXPECT_FALSE(target->RunsRightToLeft(U"ab \u05D0"));
}

TEST_F(ScriptsTest, AdvancesOfATextAreItsWidth) {
    for (std::u32string_view const text :
         {U"\u0644\u0627 \u0628\u064E\u0628 12", U"\u0915\u094D\u0937\u093F a", U"\u0E17\u0E35\u0E48e\u0301"}) {
        auto const advances = target->FindAdvances({font0}, text);
        int sum = 0;
        for (int const advance : advances) sum += advance;
        EXPECT_EQ(advances.size(), text.size());
        EXPECT_EQ(sum, Width(*target, font0, text)) << Utf8(text);
    }
    EXPECT_TRUE(target->FindAdvances({font0}, U"plain \u0416 \u4E2D").empty());
}

TEST_F(ScriptsTest, AnInstalledFileIsFoundByItsName) {
    namespace fs = std::filesystem;
    fs::create_directories(folder / "fonts/a/b");
    fs::copy_file("/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf", folder / "fonts/a/b/Shop.TTF");
    ScriptGraphicContext::InitializeFontManager(fonts, folder / "fonts");
    EXPECT_TRUE(target->HasFontFile("SHOP.TTF"));
    EXPECT_FALSE(target->HasFontFile("ARIAL.TTF"));
    EXPECT_FALSE(target->HasFontFile("../fonts/a/b/Shop.TTF"));
    EXPECT_GT(target->MeasureTrueTypeText("SHOP.TTF", "Rag", 0, 10, 100).width, 0);
    EXPECT_TRUE(warnings.empty());
}

}  // namespace
