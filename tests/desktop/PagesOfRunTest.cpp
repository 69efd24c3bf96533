#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/desktop/ZplProgram.h"

// Where the pages of a run go, and which are drawn.
namespace {

using testing::HasSubstr;
using PagesOfRun = ZplProgram;

TEST_F(PagesOfRun, PutsPagesWhereItIsTold) {
    // Three pages, two of them alike.
    struct Row {
        char const* options;
        int code;
        std::vector<std::string> files;
        char const* out;
        char const* err;
    };
    for (auto const& [options, code, files, out, err] : std::vector<Row>{
             {"-o new/a.pdf", 0, {"new"}, "new/a.pdf page 3", ""},
             {"-o a.png", 2, {}, nullptr, "--name '{stem}-{page}.{ext}' makes a file of each"},
             {"-o a.png --pages 3", 0, {"a.png"}, "a.png  203 x 203  copy 1 of 1\n", ""},
             {"--out -", 2, {}, "", "a png file holds one page"},
             {"-o - --pages 1", 0, {}, "\x89PNG", ""},
             {"-o - --format pbm", 0, {}, "P4\n203 203\n", ""},
             {"-o - --json", 2, {}, "", "cannot both go to standard output"},
             {"-o in.zpl --format pdf", 2, {}, "", "would be overwritten"},
             {"-o a.pdf --split", 2, {}, "", "--name"},
             {"--name '{page}-{stem}{stem}.x' --pages 2-9", 0, {"2-inin.x", "3-inin.x"}, "3-inin.x", ""},
             {"--name all.{ext} --format pdf", 0, {"all.pdf"}, "all.pdf page 3", ""},
             {"--pages 4-", 1, {}, "", "has 3 pages, none of which"},
             {"--distinct", 0, {"in-1.png", "in-2.png"}, "in-1.png  203 x 203  copy 1 of 2  prints 2 times\n", ""},
             {"--distinct --json", 0, {"in-1.png", "in-2.png"}, "\"prints\":2", ""},
             {"--quiet", 0, {"in-1.png", "in-2.png", "in-3.png"}, nullptr, ""},
             {"--job --rotate 90", 2, {}, "", "goes without"},
             {"in.zpl", 2, {}, "", "two inputs would both be drawn as in-1.png"},
             {"--watch -", 2, {}, "", "not standard input"},
         }) {
        SCOPED_TRACE(options);
        auto const run = Render(TwoLabels, options);
        EXPECT_EQ(run.code, code);
        EXPECT_EQ(Files(), files);
        EXPECT_THAT(run.out, out ? testing::Matcher<std::string const&>(HasSubstr(out)) : testing::IsEmpty());
        EXPECT_THAT(run.err, HasSubstr(err));
        for (auto const& file : Files()) std::filesystem::remove_all(folder_ / file);
    }
    std::string const onePage = Render(TwoLabels, "-o - --format pbm --pages 1").out;
    std::string const three = Render(TwoLabels, "-o - --format pbm").out;
    EXPECT_EQ(three.size(), onePage.size() * 3) << "one picture behind the other";
    EXPECT_THAT(Run("render 'i*.zpl' none.zpl --size 1x1in").out,
                testing::EndsWith("\n2 inputs: 3 pages, 1 not read\n"));
}

TEST_F(PagesOfRun, TurnsPicturesClockwise) {
    // A label of 10 x 4 dots, and a dot in the second row.
    auto const rows = [this](std::string const& degrees) {
        return Render("^XA^PW10^LL4^FO0,0^GB3,1^FS^FO9,1^GB1,1^FS^XZ", "-o - --format pbm --rotate " + degrees).out;
    };
    EXPECT_EQ(rows("0"), FromHex("50340a313020340ae000004000000000"));
    EXPECT_EQ(rows("90"), FromHex("50340a342031300a10101000000000000020"));
    EXPECT_EQ(rows("180"), FromHex("50340a313020340a00000000800001c0"));
    EXPECT_EQ(rows("270"), FromHex("50340a342031300a40000000000000808080"));
}

TEST_F(PagesOfRun, DrawsAgainWhatChangesUntilItIsInterrupted) {
    WriteFileAtomically(folder_ / "in.zpl", "^XA^FDone^FS^XZ");
    // A writer in place, an editor that replaces the file, and another file.
    WriteFileAtomically(folder_ / "try", R"(
        mkfifo lines; "$1" render in.zpl --size 1x1in --watch >lines & exec 3<lines
        read line <&3; echo "$line"
        echo "^XA^PW99^FDtwo^FS^XZ" >in.zpl; read line <&3; echo "$line"
        echo "^XA^PW88^FDthree^FS^XZ" >other; mv other in.zpl; read line <&3; echo "$line"
        kill -INT $!; wait $!; echo "code $?"
    )");
    Run("--version >/dev/null", "bash ./try '" ZPL_PROGRAM "';");
    EXPECT_EQ(ReadRegularFile(folder_ / ".out"),
              "in-1.png  203 x 203  copy 1 of 1\nin-1.png  99 x 203  copy 1 of 1\n"
              "in-1.png  88 x 203  copy 1 of 1\ncode 0\n");
}

}  // namespace
