#include <algorithm>

#include "printengine/src/fonts/FontCache.h"
#include "tests/printengine/DeskFixture.h"

using Scripting::ScriptGraphicContext;

class FontTest : public DeskFixture {
protected:
    static Picture Draw(ScriptGraphicContext& target, std::string const& font, std::string_view text) {
        target.StartLabel();
        target.SelectFont(font, 1, 1);
        target.DrawText(20, 20, text, Left, 0, false, false);
        return Drawn(target);
    }
};

TEST_F(FontTest, WithoutAnyFontBoxesStandForCharacters) {
    ScriptGraphicContext::InitializeFontManager(fonts, folder / "no-fonts");
    auto const target = Target(1, 1);
    for (std::string const& font : {std::string("A"), std::string("E"), Font0(*target, 30, 30)}) {
        EXPECT_GT(Draw(*target, font, "abc").CountBlack(), 0) << font;
        EXPECT_GT(target->MeasureText(font, "abc", 1, 0, true), 10) << font;
    }
    target->DrawTrueTypeText("ARIAL.TTF", 0, 0, 50, 50, "abc", false, 10, 100, 0, Left, 0);
    EXPECT_FALSE(warnings.empty());
    auto const count = warnings.size();
    Draw(*target, "A", "xyz");
    EXPECT_EQ(warnings.size(), count) << "each font warns once";
}

TEST_F(FontTest, MissingCharactersComeFromAnotherFontOrShowAsABox) {
    auto const target = Target(1, 1);
    std::string const font = Font0(*target, 30, 30);
    EXPECT_GT(Draw(*target, font, "\xE2\x99\xA5").CountBlack(), 0);  // U+2665, which the grotesque lacks
    EXPECT_TRUE(warnings.empty());
    Picture const box = Draw(*target, font, "\xF4\x8F\xBF\xBD");  // U+10FFFD, which no font has
    EXPECT_GT(box.CountBlack(), 0);
    Draw(*target, font, "\xF4\x8F\xBF\xBD");
    Draw(*target, "A", "\xF4\x8F\xBF\xBD\xF0\x9E\x93\x90");  // U+1E4D0, of the year 2022
    ASSERT_EQ(warnings.size(), 2u) << "each character once";
    EXPECT_EQ(warnings[0], "font 0: no installed font has U+10FFFD, a box stands for it");
    EXPECT_EQ(warnings[1],
              "font A: no installed font has U+1E4D0 NAG MUNDARI LETTER O, a box stands for it; the package "
              "fonts-noto-core may have it");
    for (char third = '\x80'; third < '\xBF'; ++third) Draw(*target, font, std::string("\xF4\x8F\xBE") + third);
    EXPECT_EQ(warnings.size(), 21u) << "but not for ever";
}

TEST_F(FontTest, FontFilesCanBeSet) {
    auto const target = Target(1, 1);
    std::string const before = Font0(*target, 30, 30);
    Picture const grotesque = Draw(*target, before, "Rag");
    fonts.SetFontFile("0", "/usr/share/fonts/truetype/dejavu/DejaVuSerif-Bold.ttf");
    fonts.SetFontFile("USERS.TTF", "/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf");
    std::string const after = Font0(*target, 30, 30);
    EXPECT_NE(Draw(*target, after, "Rag"), grotesque);
    EXPECT_EQ(target->GetFontAscent(after), 21);
    auto const names = target->GetFontFileNames();
    EXPECT_NE(std::find(names.begin(), names.end(), "USERS.TTF"), names.end());
    EXPECT_NE(std::find(names.begin(), names.end(), "0"), names.end());
    EXPECT_EQ(target->MeasureTrueTypeText("USERS.TTF", "Rag", 0, 10, 100),
              target->MeasureTrueTypeText("DejaVuSerif.ttf", "Rag", 0, 10, 100));
    fonts.SetFontFile("0", "/usr/share/texmf/fonts/opentype/public/tex-gyre/texgyreheroscn-bold.otf");
    EXPECT_EQ(Draw(*target, Font0(*target, 30, 30), "Rag"), grotesque);
    EXPECT_TRUE(warnings.empty());
}

TEST_F(FontTest, NamesThatHoldAPathAreNoFonts) {
    auto const target = Target(1, 1);
    target->MeasureTrueTypeText("../../../etc/passwd", "x", 0, 10, 100);
    target->MeasureTrueTypeText("/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf", "x", 0, 10, 100);
    EXPECT_EQ(warnings.size(), 2u);
}

TEST_F(FontTest, PreparingASizeAgainIsALookUp) {
    auto const target = Target(1, 1);
    std::string const font = Font0(*target, 30, 30);
    EXPECT_EQ(Font0(*target, 30, 30), font);
    EXPECT_NE(Font0(*target, 30, 31), font);
    for (unsigned width = 1; width < 2000; ++width) Font0(*target, 40, width);
    // The oldest are forgotten, and made again when they are asked for.
    EXPECT_FALSE(target->IsBitmapTypeface(font));
    EXPECT_TRUE(target->IsBitmapTypeface(Font0(*target, 30, 30)));
}

TEST_F(FontTest, GlyphCacheIsBounded) {
    auto const target = Target(1, 1);
    std::size_t most = 0;
    for (unsigned height = 100; height < 3000; height += 50) {
        std::size_t const before = fonts.GetCache().Glyphs().Bytes();
        Draw(*target, Font0(*target, height, height), "WMQ@");
        std::size_t const bytes = fonts.GetCache().Glyphs().Bytes();
        ASSERT_LE(bytes, PrintEngine::Fonts::GlyphCache::MaxBytes);
        most = std::max(most, bytes - std::min(before, bytes));
    }
    EXPECT_GT(most, 2900U * 2900 / 8) << "four letters are more than one of them";
}
