#include <gtest/gtest.h>

#include "fields/text/TrueTypeUtils.h"
#include "frontend/context/Utf8Text.h"
#include "tests/support/PagePictures.h"

// What plain and turned texts look like, proven on their pictures.

namespace {

std::string Page(std::string const& body) { return "^XA^CI28^PW2400^LL1200" + body + "^XZ"; }

Picture Ink(Picture const& page) {
    auto const box = page.InkBox();
    return page.Cropped(box[0], box[1], box[2] - box[0], box[3] - box[1]);
}

TEST(TextPictures, FourRotationsAreOnePictureTurned) {
    auto const desk = MakeStillDesk();
    for (std::string const font : {"^AA#,27,15", "^AB#,22,14", "^AD#,18,10", "^AE#", "^AF#,52,13", "^AG#", "^AH#",
                                   "^A0#,40,36", "^A0#,33,61", "^AS#,60,60", "^A@#,40,36,E:ROBOTO-REGULAR.TTF"}) {
        for (std::string const origin : {"^FO900,600,", "^FT900,600,"}) {
            for (std::string const rest : {"0", "1", "2"}) {
                for (std::string const tail : {"^FDÀgj 1,Q^FS", "^FB200,3,0,J^FDAg one two three four^FS"}) {
                    Picture upright;
                    for (int degrees = 0; degrees < 360; degrees += 90) {
                        std::string named = font;
                        named.replace(named.find('#'), 1, 1, "NRIB"[degrees / 90]);
                        auto const pages = DrawPages(*desk, Page(origin + rest + named + tail));
                        ASSERT_EQ(pages.size(), 1U);
                        Picture const ink = Ink(pages[0]);
                        ASSERT_GT(ink.CountBlack(), 0) << origin << rest << named << tail;
                        if (degrees == 0) upright = ink;
                        ASSERT_TRUE(ink == upright.Turned(degrees)) << origin << rest << named << tail;
                    }
                }
            }
        }
    }
}

// The ink of a text and a bar behind it: where the bar stands says how far the text has moved the pen.
TEST(TextPictures, Font0IsAsWideAsItsTables) {
    auto const desk = MakeStillDesk();
    for (unsigned const height : {10U, 11U, 17U, 25U, 30U, 44U, 45U, 58U, 77U, 120U, 201U, 300U}) {
        for (unsigned const width : {height / 2, height * 3 / 4, height, height * 3 / 2, height * 2}) {
            if (width < 10) continue;
            auto const expected = TrueTypeUtils::CreateFont0ExpectedWidths(width);
            std::string const font = "^FO0,20^A0N," + std::to_string(height) + "," + std::to_string(width) + "^FD";
            auto const right = [&](std::string const& text) {
                return DrawPages(*desk, Page(font + text + "^FS")).at(0).InkBox()[2];
            };
            int const bar = right("|");
            for (std::string const text : {"Hello", "0123456", "WMil.j", "É€ Жя"}) {
                unsigned dots = 0;
                for (char32_t const c : ToCodePoints(text)) dots += expected(c);
                if (dots + height > 2300) continue;
                EXPECT_NEAR(right(text + "|") - bar, static_cast<int>(dots), 1)
                    << text << " " << height << " x " << width;
            }
        }
    }
}

TEST(TextPictures, Font0EndsWhereItsStringLengthSays) {
    auto const desk = MakeStillDesk();
    for (unsigned const height : {45U, 60U, 100U, 200U, 250U, 300U}) {
        for (std::string const text : {"H", "Rn", "4711", "Label"}) {
            std::string const size = std::to_string(height);
            auto const page = DrawPages(*desk, Page("^FO0,20^A0N," + size + "," + size + "^FD" + text + "^FS")).at(0);
            EXPECT_NEAR(page.InkBox()[2], TrueTypeUtils::GetZplStringLength(text, static_cast<std::uint16_t>(height)),
                        1)
                << text << " " << height;
        }
    }
}

TEST(TextPictures, BadTextDrawsWhatItCan) {
    auto const desk = MakeStillDesk();
    std::string const many(100'000, 'W');
    struct Row {
        char const* name;
        std::string body;
        bool hasInk;
    };
    Row const rows[] = {
        {"size 0", "^FO10,10^A0N,0,0^FDab^FS", true},
        {"size 1", "^FO10,10^A0N,1,1^FDab^FS", true},
        {"size 1 of a bitmap font", "^FO10,10^AGN,1,1^FDab^FS", true},
        {"size 32,000", "^FO10,10^A0N,32000,32000^FDab^FS", false},
        {"size 32,000 of a bitmap font", "^FO10,10^ABN,32000,32000^FDab^FS", true},
        {"size 32,000 of a TrueType font", "^FO10,10^A@N,32000,32000,E:ROBOTO-REGULAR.TTF^FDab^FS", false},
        {"width 32,000", "^FO10,10^A0N,10,32000^FDab^FS", true},
        {"size past every number", "^FO10,10^A0N,99999999999,99999999999^FDab^FS", false},
        {"empty data", "^FO10,10^A0N,30,30^FD^FS", false},
        {"empty block", "^FO10,10^A0N,30,30^FB100,3^FD^FS", false},
        {"100,000 characters", "^FO10,10^A0N,30,30^FD" + many + "^FS", true},
        {"100,000 characters downwards", "^FO10,10^FPV^A0N,30,30^FD" + many + "^FS", true},
        {"100,000 characters backwards", "^FO800,10^FPR^A0N,30,30^FD" + many + "^FS", true},
        {"100,000 characters in a block", "^FO10,10^A0N,30,30^FB500,9999,0,J^FD" + many + "^FS", true},
        {"100,000 TrueType characters", "^FO10,10^FPV^A@N,30,30,E:ROBOTO-REGULAR.TTF^FD" + many + "^FS", true},
        {"block of width 0", "^FO10,10^A0N,30,30^FB0,5^FDab^FS", false},
        {"block of 9,999 lines", "^FO10,10^A0N,30,30^FB300,9999,9999^FDab cd ef gh^FS", true},
        {"text block without a size", "^FO10,10^A0N,30,30^TBN^FDab^FS", true},
        {"bytes that are no UTF-8", "^FO10,10^A0N,30,30^FDa\xC3(\xFF\xE2\x82z^FS", true},
        {"unknown letter", "^FO10,10^AZN,30,30^FDab^FS", true},
        {"unknown name", "^FO10,10^A@N,30,30,E:NOWHERE.TTF^FDab^FS", true},
        {"name with a path", "^FO10,10^A@N,30,30,E:../../etc/passwd^FDab^FS", true},
    };
    for (auto const& row : rows) {
        auto const pages = DrawPages(*desk, Page(row.body + "^FO5,1100^GB5,5,5^FS"));
        ASSERT_EQ(pages.size(), 1U) << row.name;
        EXPECT_EQ(pages[0].CountBlack() > 25, row.hasInk) << row.name;
    }
}

TEST(TextPictures, FilesDrawLettersAndNames) {
    std::string const serif = "/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf";
    std::string const broken = "examples/shipping-label.zpl";
    auto const draw = [](std::string const& letter, std::string const& file, std::string const& font) {
        DeskSettings options;
        options.fonts = {{letter, file}};
        Desk desk(options);
        return DrawPages(desk, Page("^FO10,10" + font + "N,60,60^FDRag1^FS")).at(0);
    };
    Picture const plain = draw("", "", "^A0");
    for (std::string const letter : {"0", "P", "G", "M"}) {
        std::string const font = "^A" + letter;
        EXPECT_NE(draw(letter, serif, font), draw("", "", font)) << letter;
        EXPECT_GT(draw(letter, "nowhere.ttf", font).CountBlack(), 100) << letter;
        EXPECT_GT(draw(letter, broken, font).CountBlack(), 100) << letter;
    }
    EXPECT_EQ(draw("P", serif, "^A0"), plain);
    EXPECT_EQ(draw("0", broken, "^A0").InkBox()[1], plain.InkBox()[1]);  // another font stands in at the same place
}

TEST(TextPictures, SettingsNameFontFiles) {
    DeskSettings options;
    options.machine.fontFiles = "x;=y;SHOP.TTF=/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf";
    Desk desk(options);
    EXPECT_EQ(DrawPages(desk, Page("^FO10,10^A@N,60,60,E:SHOP.TTF^FDRag1^FS")),
              DrawPages(desk, Page("^FO10,10^A@N,60,60,E:DEJAVUSERIF.TTF^FDRag1^FS")));
}

}  // namespace
