#include "desktop/Options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

RenderOptions Render(std::vector<std::string> const& arguments) {
    return ReadArguments(*FindCommand("render"), arguments).render;
}

TEST(CommandLine, DrawsFourBySixInchesAt203DpiUnlessToldOtherwise) {
    auto const options = Render({"a.zpl"});
    EXPECT_EQ(options.inputs, std::vector<std::string>{"a.zpl"});
    EXPECT_EQ(options.designDpi, 203U);
    EXPECT_EQ(options.printerDpi, 203U);
    EXPECT_EQ(options.widthInches, 4);
    EXPECT_EQ(options.heightInches, 6);
    EXPECT_EQ(options.format->name, "png");
}

TEST(CommandLine, ReadsEveryOption) {
    auto const options =
        Render({"--dpi",   "300",      "-",      "--printer-dpi=600", "--size",   "600x300dots", "--out",
                "o",       "--format", "pdf",    "--split",           "--copies", "7",           "--font",
                "Z=z.ttf", "--job",    "--json", "--strict",          "--",       "--odd"});
    EXPECT_EQ(options.inputs, (std::vector<std::string>{"-", "--odd"}));
    EXPECT_EQ(options.designDpi, 300U);
    EXPECT_EQ(options.printerDpi, 600U);
    // Dots are those of the stream, whichever option comes first.
    EXPECT_EQ(options.widthInches, 2);
    EXPECT_EQ(options.heightInches, 1);
    EXPECT_EQ(options.outputFolder, "o");
    EXPECT_EQ(options.format->name, "pdf");
    EXPECT_EQ(options.mostCopies, 7U);
    EXPECT_EQ(options.fonts, (std::vector<std::pair<std::string, std::string>>{{"Z", "z.ttf"}}));
    EXPECT_TRUE(options.isSplit && options.keepJob && options.json && options.strict);
}

TEST(CommandLine, TakesTheFormatFromTheNameOfTheFileUnlessToldOtherwise) {
    for (auto const& [arguments, format] :
         std::vector<std::pair<std::vector<std::string>, std::string>>{{{"-o", "a.pdf"}, "pdf"},
                                                                       {{"-o", "pbm"}, "png"},
                                                                       {{"-o", "-"}, "png"},
                                                                       {{"--format", "pbm", "-o", "a.pdf"}, "pbm"}})
        EXPECT_EQ(Render(arguments).format->name, format);
}

TEST(CommandLine, ThePrinterHasTheResolutionOfTheStreamUnlessToldOtherwise) {
    EXPECT_EQ(Render({"--dpi", "300", "a"}).printerDpi, 300U);
    EXPECT_EQ(Render({"--printer-dpi", "600", "--dpi", "300", "a"}).printerDpi, 600U);
    auto const options = Render({"--printer-dpi", "600", "a"});
    EXPECT_EQ(options.designDpi, 203U);
    EXPECT_EQ(options.printerDpi, 600U);
}

TEST(CommandLine, SaysWhatIsWrongInOneLine) {
    struct Row {
        std::vector<std::string> arguments;
        char const* part;
    };
    for (auto const& row : std::vector<Row>{
             {{"--dpi", "200"}, "--dpi is 203, 300 or 600"},
             {{"--dpi"}, "--dpi needs a value"},
             {{"--printer-dpi", "x"}, "--printer-dpi is 203"},
             {{"--size", "4"}, "WIDTHxHEIGHT"},
             {{"--size", "4x6cm"}, "WIDTHxHEIGHT"},
             {{"--size", "0x6in"}, "WIDTHxHEIGHT"},
             {{"--size", "1e99x6in"}, "0.1 to 200 inches"},
             {{"--size", "0.01x0.01mm"}, "0.1 to 200 inches"},
             {{"--tag", ""}, "--tag is blank or"},
             {{"--size", "nanx6in"}, "WIDTHxHEIGHT"},
             {{"--format", "gif"}, "png, pbm or pdf"},
             {{"--copies", "0"}, "from 1 to"},
             {{"--copies", "-1"}, "from 1 to"},
             {{"--time", "2026-02-30T00:00:00"}, "--time is"},
             {{"--time", "2026-02-03T00:00"}, "--time is"},
             {{"--json=no"}, "takes no value"},
             {{"--font", "Z"}, "LETTER=FILE"},
             {{"--pages", "3-2"}, "as 2-5,8 or 3-"},
             {{"--pages", "1,,2"}, "as 2-5,8 or 3-"},
             {{"--pages", "0"}, "as 2-5,8 or 3-"},
             {{"--name", "pages/{page}"}, "--out names the folder"},
             {{"--name", "{label}"}, "{stem}-{page}.{ext}"},
             {{"--rotate", "45"}, "--rotate is 0, 90, 180 or 270"},
             {{"-o", "/dev/null"}, "-o - writes to standard output"},
             {{"-o", "/tmp"}, "--out DIR a folder"},
             {{"--frobnicate"}, "unknown option --frobnicate; zpl render --help lists them all"},
             {{"--speed", "3"}, "--speed is an option of zpl serve; zpl render --help lists its own"},
         }) {
        try {
            Render(row.arguments);
            ADD_FAILURE() << row.part;
        } catch (UsageError const& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(row.part));
            EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
        }
    }
}

}  // namespace
