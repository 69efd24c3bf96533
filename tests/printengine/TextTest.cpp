#include "tests/printengine/DeskFixture.h"

using Scripting::Extent;
using Scripting::ScriptTextFlow;

class TextTest : public DeskFixture {
protected:
    /// Draws at (100, 100) of an empty page.
    static Picture Draw(Scripting::ScriptGraphicContext& target, std::string const& font, std::string_view text,
                        int degrees = 0, unsigned magnification = 1, int spacing = 0,
                        ScriptTextFlow flow = ScriptTextFlow::Horizontal) {
        target.StartLabel();
        target.SelectFont(font, magnification, magnification);
        target.SetRotation(degrees);
        target.SetTextFlow(flow);
        target.DrawText(100, 100, text, Left, spacing, false, false);
        return Drawn(target);
    }
};

TEST_F(TextTest, BitmapFontsKeepToTheirCells) {
    struct {
        char const* font;
        int advance, height, ascent;
    } const cells[] = {{"A", 6, 9, 7},    {"B", 9, 11, 11},  {"D", 12, 18, 14}, {"E", 20, 41, 34},
                       {"F", 16, 26, 21}, {"G", 48, 60, 48}, {"H", 19, 30, 30}};
    auto const target = Target(1.5, 1.5);
    for (auto const& [font, advance, height, ascent] : cells) {
        EXPECT_EQ(target->GetFontHeight(font), height) << font;
        EXPECT_EQ(target->GetFontAscent(font), ascent) << font;
        EXPECT_EQ(target->GetFontDescent(font), height - ascent) << font;
        EXPECT_TRUE(target->IsBitmapTypeface(font));
        for (char32_t c = 0x20; c < 0x7F; ++c) {
            ASSERT_EQ(target->GetCharacterWidth(font, c), advance) << font;
            auto const box = Draw(*target, font, std::string(1, static_cast<char>(c))).InkBox();
            if (c == ' ') continue;
            EXPECT_GE(box[0], 100) << font << " " << char(c);
            EXPECT_LE(box[2], 100 + advance) << font << " " << char(c);
            EXPECT_GE(box[1], 100) << font << " " << char(c);
            EXPECT_LE(box[3], 100 + height) << font << " " << char(c);
            EXPECT_GT(box[2], box[0]) << font << " " << char(c);
        }
    }
    EXPECT_EQ(Draw(*target, "B", "ag\xC3\xA9"), Draw(*target, "B", "AG\xC3\x89"));
}

TEST_F(TextTest, EachMagnificationHasItsOwnGlyphs) {
    auto const target = Target(1.5, 1.5);
    auto const draw = [](Scripting::ScriptGraphicContext& on, unsigned x, unsigned y, int degrees) {
        on.StartLabel();
        on.SelectFont("A", x, y);
        on.SetRotation(degrees);
        on.DrawText(100, 100, "Rg", Left, 0, false, false);
        return Drawn(on);
    };
    for (unsigned i = 0; i < 36; ++i) {
        unsigned const x = 1 + i % 3, y = 1 + i / 3 % 3;
        int const degrees = static_cast<int>(i / 9) * 90;
        PrintEngine::Printing::TrueTypeCacheCreator fresh;
        Scripting::ScriptGraphicContext::InitializeFontManager(fresh, "/usr/share/fonts");
        Scripting::ScriptGraphicContext alone(fresh, std::make_shared<FakePrinterContext>());
        alone.LoadPart({1.5, 1.5});
        alone.SetupForPrintJob();
        EXPECT_EQ(draw(*target, x, y, degrees), draw(alone, x, y, degrees)) << x << " x " << y << " at " << degrees;
    }
}

TEST_F(TextTest, CapitalsReachFromTheFirstRowToTheBaseline) {
    auto const target = Target(2, 2);
    for (std::string const font : {"A", "B", "D", "E", "F", "G", "H"}) {
        for (unsigned const magnification : {1u, 3u}) {
            auto const box = Draw(*target, font, "H", 0, magnification).InkBox();
            EXPECT_EQ(box[1], 100) << font;
            EXPECT_EQ(box[3], 100 + target->GetFontAscent(font) * static_cast<int>(magnification)) << font;
        }
    }
    for (unsigned height = 10; height < 250; height += height < 40 ? 1 : 17) {
        std::string const font = Font0(*target, height, height);
        int const ascent = target->GetFontAscent(font);
        EXPECT_EQ(ascent + target->GetFontDescent(font), static_cast<int>(height));
        auto const box = Draw(*target, font, "H").InkBox();
        EXPECT_EQ(box[1], 100) << height;
        EXPECT_EQ(box[3], 100 + ascent) << height;
    }
}

TEST_F(TextTest, FourRotationsAreOnePictureTurned) {
    constexpr int Margin = 90;
    std::vector<ScriptTextFlow> const flows{ScriptTextFlow::Horizontal, ScriptTextFlow::Vertical,
                                            ScriptTextFlow::Reverse};
    for (auto const& [printerDpi, designDpi] : {std::pair{203u, 203u}, {600u, 300u}, {300u, 300u}}) {
        auto const target = Target(3, 3, printerDpi, designDpi);
        int const scale = static_cast<int>(printerDpi / designDpi);
        for (std::string const& font : {std::string("A"), std::string("E"), std::string("H"), Font0(*target, 33, 21)}) {
            for (ScriptTextFlow const flow : flows) {
                int const width = target->MeasureText(font, "Rg, 1", 2, 3, true);
                int const height = target->GetFontHeight(font) * 2;
                Picture const level = Draw(*target, font, "Rg, 1", 0, 2, 3, flow);
                for (int const degrees : {90, 180, 270}) {
                    bool const isUpended = degrees != 180;
                    auto const around = [&](int w, int h) {
                        return std::array{(100 - Margin) * scale, (100 - Margin) * scale, (w + 2 * Margin) * scale,
                                          (h + 2 * Margin) * scale};
                    };
                    auto const from = around(width, height);
                    auto const to = isUpended ? around(height, width) : from;
                    EXPECT_EQ(Draw(*target, font, "Rg, 1", degrees, 2, 3, flow).Cropped(to[0], to[1], to[2], to[3]),
                              level.Cropped(from[0], from[1], from[2], from[3]).Turned(degrees))
                        << font << " " << degrees << " flow " << static_cast<int>(flow) << " dpi " << printerDpi;
                }
            }
        }
    }
}

TEST_F(TextTest, EachFlowSetsCharactersAtTheirPens) {
    auto const target = Target(3, 3);
    for (std::string const& font : {std::string("D"), Font0(*target, 30, 30)}) {
        auto const advance = [&](char32_t c) { return target->GetCharacterWidth(font, c) * 2; };
        int const line = target->GetSpaceMetrics(font).characterHeight * 2;
        int const space = target->GetSpaceMetrics(font).spaceHeight * 2;
        struct {
            ScriptTextFlow flow;
            std::array<std::pair<int, int>, 3> pens;  ///< of A, W and y of "AW y"
        } const cases[] = {
            {ScriptTextFlow::Horizontal,
             {{{0, 0}, {advance('A') + 4, 0}, {advance('A') + advance('W') + advance(' ') + 12, 0}}}},
            {ScriptTextFlow::Vertical, {{{0, 0}, {0, line}, {0, 2 * line + space + 4}}}},
            {ScriptTextFlow::Reverse,
             {{{0, 0}, {-advance('W') - 4, 0}, {-advance('W') - advance(' ') - advance('y') - 12, 0}}}},
        };
        for (auto const& [flow, pens] : cases) {
            Picture const text = Draw(*target, font, "AW y", 0, 2, 4, flow);
            target->StartLabel();
            target->SelectFont(font, 2, 2);
            for (std::size_t i = 0; i < 3; ++i)
                target->DrawText(100 + pens[i].first, 100 + pens[i].second, std::string(1, "AWy"[i]), Left, 0, false,
                                 false);
            EXPECT_EQ(text, Drawn(*target)) << font << " flow " << static_cast<int>(flow);
        }
    }
}

TEST_F(TextTest, MeasuresAdvancesTimesMagnificationAndUnmagnifiedSpacing) {
    auto const target = Target(1, 1);
    EXPECT_EQ(target->MeasureText("A", "abc", 2, 5, true), 3 * 6 * 2 + 2 * 5);
    EXPECT_EQ(target->MeasureText("A", "", 2, 5, true), 0);
    EXPECT_EQ(target->MeasureText("G", "\xC3\xA4\xE2\x82\xAC", 1, 0, true), 2 * 48);
    EXPECT_EQ(target->MeasureText("A", "a\xFF\xC3", 1, 0, true), 3 * 6);
    EXPECT_EQ(target->MeasureText("A", "a\n\x01", 1, 0, true), 6);
    std::string text = "a\n\xC2\205b";
    target->PrepareText("A", text);
    EXPECT_EQ(text, "ab");
}

TEST_F(TextTest, ExpectedWidthsArePens) {
    auto const target = Target(2, 1);
    Scripting::ScaledFontMetrics metrics;
    metrics.pointSize = 10;
    metrics.cellHeight = 30;
    metrics.descent = 9;
    metrics.cellWidth = 30;
    metrics.expectedWidth = [](char32_t c) { return c == 'H' ? 50u : 0u; };
    std::string const font = target->PrepareScaledFont("0", metrics, {}, {});
    EXPECT_EQ(target->MeasureText(font, "HH", 1, 0, true), 100);
    auto const one = Draw(*target, font, "H").InkBox();
    EXPECT_EQ(Draw(*target, font, "HH").InkBox()[2], one[2] + 50);
    // A character that the tables do not know keeps its own width, lest it stand on its neighbour.
    EXPECT_GT(target->GetCharacterWidth(font, 'x'), 5);
}

// The widths that users know of font 0: small letters take a little under half of the requested width.
TEST_F(TextTest, ScalableTextIsAsWideAsTheRequestedCellSays) {
    for (unsigned const dpi : {203u, 300u}) {
        auto const target = Target(4, 1, dpi);
        int const width = target->MeasureText(Font0(*target, 60, 60), "abcdefghijklmnopqrstuvwxyz", 1, 0, true);
        EXPECT_GT(width, 26 * 60 * 42 / 100);
        EXPECT_LT(width, 26 * 60 * 60 / 100);
        EXPECT_NEAR(target->MeasureText(Font0(*target, 60, 120), "abcdefghijklmnopqrstuvwxyz", 1, 0, true), 2 * width,
                    26);
    }
}

// Pens stand on whole dots, outlines do not: small type must neither run together nor have strokes of two widths.
TEST_F(TextTest, SmallTypeStandsApartOnEvenStrokes) {
    auto const target = Target(1, 1);
    for (unsigned height = 10; height <= 40; ++height) {
        for (unsigned const width : {height, std::max(10u, height * 3 / 4)}) {
            std::string const font = Font0(*target, height, width);
            for (char32_t c = U'!'; c <= U'~'; ++c) {
                int const advance = target->GetCharacterWidth(font, c);
                bool const needsAll = advance <= 3 && std::u32string_view(U"ft{}*").find(c) != std::string::npos;
                // Rules join, and the slashes of large type lean over their neighbours.
                if (c == U'_' || needsAll || (height > 36 && (c == U'/' || c == U'\\'))) continue;
                auto const box = Draw(*target, font, std::string(1, static_cast<char>(c))).InkBox();
                ASSERT_GE(box[0], 100) << char(c) << " at " << height << " x " << width;
                ASSERT_LE(box[2], 100 + advance - 1) << char(c) << " at " << height << " x " << width;
            }
            Picture const page = Draw(*target, font, "H");
            auto const box = page.InkBox();
            auto const stroke = [&](int x, int step) {
                int dots = 0;
                for (; page.At(x, box[3] - 1); x += step) ++dots;
                return dots;
            };
            EXPECT_EQ(stroke(box[0], 1), stroke(box[2] - 1, -1)) << height << " x " << width;
        }
    }
}

TEST_F(TextTest, TrueTypeLinesHaveOneHeight) {
    auto const target = Target(2, 2);
    double const points = 40 * 0.331;
    Extent const one = target->MeasureTrueTypeText("DejaVuSans.ttf", "x", 0, points, 100);
    EXPECT_GT(one.height, 40);
    EXPECT_EQ(target->MeasureTrueTypeText("DejaVuSans.ttf", "\xC3\x84g", 0, points, 100).height, one.height);
    EXPECT_EQ(target->MeasureTrueTypeText("DejaVuSans.ttf", "x\nxxx\nx\n", 0, points, 100),
              (Extent{3 * one.width, 3 * one.height}));
    EXPECT_EQ(target->MeasureTrueTypeText("DejaVuSans.ttf", "xx", 0, points, 50).width, one.width);
    EXPECT_EQ(target->MeasureTrueTypeText("DejaVuSans.ttf", "", 0, points, 100), (Extent{}));
    EXPECT_FALSE(target->IsBitmapTypeface("DejaVuSans.ttf"));
}

// The box turns about its centre; the base of capitals lies on the row that the caller's offsets lead to.
TEST_F(TextTest, TrueTypeStandsOnItsBaselineInATurnedBox) {
    auto const target = Target(3, 3);
    double const points = 40 * 0.331;
    char const* const font = "DejaVuSans.ttf";
    auto const [width, height] = target->MeasureTrueTypeText(font, "HEH", 0, points, 100);
    int const ascent = height - static_cast<int>(std::lround(0.37 * height));
    int const moved = static_cast<int>(std::lround(40 * 0.19));
    int const half = (width - height) / 2;
    for (int const degrees : {0, 90, 180, 270}) {
        target->StartLabel();
        target->SetRotation(degrees);
        target->DrawTrueTypeText(font, 200, 200, width, height, "HEH", false, points, 100, 0, Left, 0);
        auto const box = Drawn(*target).InkBox();
        switch (degrees) {
            case 0: EXPECT_EQ(box[3], 200 + moved + ascent); break;
            case 90: EXPECT_EQ(box[0], 200 + half + height - ascent); break;
            case 180: EXPECT_EQ(box[1], 200 + height - ascent); break;
            default: EXPECT_EQ(box[2], 200 + half + moved + ascent); break;
        }
    }
}

TEST_F(TextTest, ReversedTextInvertsOverlappingCharactersOnce) {
    auto const target = Target(2, 1);
    std::string const font = Font0(*target, 60, 60);
    Picture const black = Draw(*target, font, "WAVE", 0, 1, -12);
    target->StartLabel();
    target->SelectFont(font, 1, 1);
    target->SetReverse(true);
    target->DrawText(100, 100, "WAVE", Left, -12, true, false);
    EXPECT_EQ(Drawn(*target), black);
}

TEST_F(TextTest, WhiteTextShowsOnBlack) {
    auto const target = Target(2, 1);
    Picture const black = Draw(*target, "D", "white");
    target->StartLabel();
    target->DrawBox(0, 0, 400, 200, 200, 0);
    target->SelectFont("D", 1, 1);
    target->SetColor(1);
    target->DrawText(100, 100, "white", Left, 0, false, false);
    EXPECT_EQ(Drawn(*target).Cropped(0, 0, 400, 200).CountBlack(), 400 * 200 - black.CountBlack());
}

TEST_F(TextTest, EnormousTextEndsWithAWarning) {
    auto const target = Target(1, 1);
    std::string const font = Font0(*target, 32000, 32000);
    Draw(*target, font, "WWW");
    EXPECT_EQ(warnings.size(), 1u);
    Draw(*target, font, "WWW", 90, 4'000'000'000u);
    Draw(*target, "A", "WWW", 180, 4'000'000'000u, 2'000'000'000);
    Draw(*target, "G", std::string(2000, 'x'), 270, 100, -2'000'000'000);
    target->DrawTrueTypeText("DejaVuSans.ttf", 1 << 30, -(1 << 30), -5, 1 << 30, "x", true, 1e30, 1e30, 0, Left,
                             1 << 30);
    target->DrawTrueTypeText("DejaVuSans.ttf", 0, 0, 0, 0, "x", true, -1, std::nan(""), 0, Left, 0);
    EXPECT_TRUE(target->HasContent());
}
