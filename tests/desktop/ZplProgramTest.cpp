#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <cstdio>
#include <fstream>

#include "desktop/PageFile.h"
#include "foundation/Files.h"
#include "tests/desktop/ZplProgram.h"
#include "tests/support/Sanitizers.h"

// Runs the program itself, as a user does.
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST_F(ZplProgram, WritesOneFileAndOneLineForEachPage) {
    auto const run = Render(TwoLabels);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out,
              "in-1.png  203 x 203  copy 1 of 2\nin-2.png  203 x 203  copy 2 of 2\nin-3.png  203 x 203  copy 1 of 1\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(Files(), (std::vector<std::string>{"in-1.png", "in-2.png", "in-3.png"}));
    EXPECT_EQ(ReadRegularFile(folder_ / "in-1.png"), ReadRegularFile(folder_ / "in-2.png"));
}

TEST_F(ZplProgram, WritesOtherFormats) {
    Render("^XA^FO0,0^GB8,2,2^FS^FO195,201^GB8,2,2^FS^XZ", "--format pbm --out new/folder");
    std::string const pbm = ReadRegularFile(folder_ / "new/folder/in-1.pbm");
    EXPECT_THAT(pbm, StartsWith("P4\n203 203\n\xFF"));
    EXPECT_EQ(pbm.size(), 11U + 26 * 203);
    // Five of the last box's dots stand in the row's last three bits and before; what is right of the page stays white.
    EXPECT_EQ(pbm.back(), '\xE0');
}

TEST_F(ZplProgram, WritesOnePdfOfAllPagesUnlessToldOtherwise) {
    auto const run = Render("^XA^PQ2^FDone^FS^XZ^XA^PW101^LL406^FDtwo^FS^XZ", "--format pdf");
    EXPECT_EQ(run.out,
              "in.pdf page 1  203 x 203  copy 1 of 2\nin.pdf page 2  203 x 203  copy 2 of 2\n"
              "in.pdf page 3  101 x 406  copy 1 of 1\n");
    EXPECT_EQ(Files(), std::vector<std::string>{"in.pdf"});
    std::string const pdf = ReadRegularFile(folder_ / "in.pdf");
    EXPECT_THAT(pdf, testing::AllOf(StartsWith("%PDF-1.4\n"), HasSubstr("/Count 3"), HasSubstr("/MediaBox[0 0 72 72]"),
                                    HasSubstr("/MediaBox[0 0 35.8227 144]")));
    // Each entry of the table leads to its object.
    auto const table = static_cast<std::size_t>(std::stoul(pdf.substr(pdf.rfind("startxref\n") + 10)));
    EXPECT_THAT(pdf.substr(table), StartsWith("xref\n0 12\n0000000000 65535 f \n"));
    for (std::size_t object = 1; object < 12; ++object) {
        auto const at = static_cast<std::size_t>(std::stoul(pdf.substr(table + 10 + object * 20, 10)));
        EXPECT_THAT(pdf.substr(at), StartsWith(std::to_string(object) + " 0 obj<<"));
    }
    std::filesystem::remove(folder_ / "in.pdf");
    Render(TwoLabels, "--format pdf --split");
    EXPECT_EQ(Files(), (std::vector<std::string>{"in-1.pdf", "in-2.pdf", "in-3.pdf"}));
    EXPECT_THAT(ReadRegularFile(folder_ / "in-3.pdf"), HasSubstr("/Count 1"));
}

TEST_F(ZplProgram, ReadsBackThePagesOfAnEngineThatKeepsNone) {
    Render(TwoLabels, "--format pbm");
    Render(TwoLabels);
    auto page = PageFile::Parse(ReadRegularFile(folder_ / "in-2.png"));
    ASSERT_TRUE(page);
    EXPECT_EQ(page->PageDpi(), 203U);
    EXPECT_EQ("P4\n203 203\n" + std::string(page->PackedRows()), ReadRegularFile(folder_ / "in-2.pbm"));
    // 20 x 6 pixels by another encoder, a row for each filter, in two chunks.
    auto const file = FromHex(
        "89504e470d0a1a0a0000000d4948445200000014000000060100000000ebec8330000000097048597300002e2300002e230178a53f7600"
        "00"
        "001449444154789c63a874dac0f849ff3ed3bfe402e657b50e2c0ee95aa10000000c4944415499b1ca2c4d55960077490910630b712b00"
        "00"
        "000049454e44ae426082");
    page = PageFile::Parse(file);
    ASSERT_TRUE(page);
    EXPECT_EQ(page->PageSize(), (Scripting::Extent{20, 6}));
    EXPECT_EQ(page->PackedRows(), FromHex("86bd400ddef00f7b809d0f0034b280b238f0"));
    for (std::size_t size = 0; size < file.size() - 20; ++size) EXPECT_FALSE(PageFile::Parse(file.substr(0, size)));
    // 24 x 12 pixels of noise, each row by the filter of the nearest neighbour.
    auto noise = PageFile::Parse(FromHex(
        "89504e470d0a1a0a0000000d49484452000000180000000c0100000000504b40d8000000324944415478da05c19102c0401043c1c08b9c"
        "ac54faff1f57a9ac442237c3932123a63fc9cbfae338d8c52bac6125da30ea05890510221919d41a0000000049454e44ae426082"));
    ASSERT_TRUE(noise);
    EXPECT_EQ(noise->PackedRows(), FromHex("ebf5e6f5e6e6e6ebfff0fae6fffafff5f0faf0ebffebfaffe6faf0f5faf0fafffaebebf0"));
    // Bits, colours, compression, filters and interlace stand behind width and height.
    for (std::size_t at = 24; at < 29; ++at) {
        auto other = file;
        other[at] = at == 24 ? 8 : 2;
        EXPECT_FALSE(PageFile::Parse(other)) << at;
    }
}

TEST_F(ZplProgram, KeepsTheJobFolder) {
    // What stands behind a label does not reach it, and a lost format does not take the target away.
    auto const run =
        Render("^XA^PQ2^FDx^FS^XZ^PQ9^XA^FO.,1^FDlost^FS^XZ^XA^PQ1^PW50^LL60^FDy^FS^XZ", "--job --out jobs");
    EXPECT_EQ(run.code, 0);
    std::vector<std::filesystem::path> const folders{std::filesystem::directory_iterator(folder_ / "jobs"), {}};
    ASSERT_EQ(folders.size(), 1U);
    for (char const* const name : {"0", "1", "2", "TransferDone"})
        EXPECT_TRUE(std::filesystem::exists(folders[0] / name)) << name;
    EXPECT_THAT(run.out, HasSubstr("/1  203 x 203  copy 2 of 2"));
    EXPECT_THAT(run.out, HasSubstr("/2  50 x 60  copy 1 of 1"));
    EXPECT_THAT(Render("^XA^PQ3^FDx^FS^XZ^XA^FDy^FS^XZ", "--job --copies 2 --out few").out,
                testing::AllOf(HasSubstr("/1  203 x 203  copy 2 of 3"), HasSubstr("/3  203 x 203  copy 1 of 1")));
    Render("^XA^PQ2^FO9,9^A0N,40^FN1^FS^RFR,H,0,2^FN1^FS^XZ", "--job --tag epc=3034 --out tags");
    Render("^XA^FO9,9^A0N,40^FD3034^FS^XZ", "--job --out plain");
    auto const pageOf = [this](char const* folder, char const* page) {
        return ReadRegularFile(std::filesystem::directory_iterator(folder_ / folder)->path() / page);
    };
    for (char const* const page : {"0", "1"}) EXPECT_EQ(pageOf("tags", page), pageOf("plain", "0")) << page;
    EXPECT_THAT(Render("^XA^PQ99999999,1,0,N^FDx^FS^XZ", "--job --copies 1").err,
                HasSubstr("zpl: the job pauses more"));
}

TEST_F(ZplProgram, SpeaksJson) {
    auto const run = Render("^XA^PQ1^FDx^FS^QQ^XZ", "--json");
    rapidjson::Document document;
    document.Parse(run.out.c_str());
    ASSERT_FALSE(document.HasParseError()) << run.out;
    auto const& input = document["inputs"][0];
    EXPECT_STREQ(input["pages"][0]["path"].GetString(), "in-1.png");
    EXPECT_EQ(input["pages"][0]["width"].GetInt(), 203);
    EXPECT_STREQ(input["findings"][0]["kind"].GetString(), "unknown-command");
    EXPECT_EQ(input["findings"][0]["offset"].GetInt(), 14);
    EXPECT_EQ(document["exitCode"].GetInt(), 0);
    document.Parse(Run("render missing.zpl in.zpl --json --out in.zpl/no").out.c_str());
    ASSERT_FALSE(document.HasParseError());
    EXPECT_STREQ(document["inputs"][0]["error"].GetString(), "cannot read missing.zpl: No such file or directory");
}

TEST_F(ZplProgram, EndsWithTheCodeAndTheLineThatFit) {
    std::string const fine = "^XA^FDfine^FS^XZ";
    struct Row {
        char const* name;
        std::string stream;
        char const* options;
        int code;
        std::size_t pages;
        char const* line;  // part of what is said; empty for silence
    };
    for (auto const& row : std::vector<Row>{
             {"empty input", "", "", 1, 0, "the stream holds no printable label"},
             {"no command", "hello", "", 1, 0, "the stream holds no printable label"},
             {"only set-up", "^XA^XZ", "", 1, 0, "the stream holds no printable label"},
             {"a tag without --tag", "^XA^RFW^FDx^FS^XZ", "", 0, 1,
              "^RF is not known: it takes a tag encoder, which --tag brings"},
             {"no end", "^XA^FDx^FS", "", 1, 0, "ends inside a format"},
             {"stray end", "^XZ" + fine, "", 0, 1, ""},
             {"nested begin", "^XA^FDlost^FS" + fine, "", 0, 1, ""},
             {"unknown command", "^XA^ZZ^FDx^FS^XZ", "", 0, 1, "byte 3, line 1, column 4: command ^ZZ is not known"},
             {"only set-up under --strict", "~JSN^XA^MNW^LS0" + fine.substr(3), "--strict", 0, 1, ""},
             {"unknown command under --strict", "^XA^ZZ^FDx^FS^XZ", "--strict", 3, 1, "^ZZ"},
             {"nothing found under --strict", fine, "--strict", 0, 1, ""},
             {"a number past 32 bits when drawn", "^XA^FB99999999999^FDx^FS^XZ" + fine, "", 0, 1,
              "^FB: the number \"99999999999\" is out of range"},
             {"a number past 32 bits when read", fine + "^XA^PQ2147483648^FDx^FS^XZ" + fine, "", 0, 2,
              "^PQ: the number \"2147483648\" is out of range"},
             {"millions of copies", "^XA^PQ99999999^FDx^FS^XZ", "--copies 3", 0, 3, "of 99999999 copies 3 are drawn"},
             {"the largest group count", "^XA^PQ2,99999999,99999999^FDx^FS^XZ", "", 0, 2, ""},
             {"a pause behind each of millions", "^XA^PQ99999999,1^FDx^FS^XZ", "--copies 1", 0, 1, nullptr},
             {"a counted graphic that is not there", fine + "^XA^GFB,4294967295,4294967295,1,0123456789", "", 0, 1,
              "ends inside a format"},
             {"a graphic of impossible size", "^XA^GFA,9,2147483647,2147483647,FF^FS^XZ" + fine, "", 0, 1, "large"},
             {"text that is not UTF-8", "^XA^CI28^FD\xC3(\xFF^FS^XZ" + fine, "", 0, 2, nullptr},
         }) {
        SCOPED_TRACE(row.name);
        auto const run = Render(row.stream, row.options);
        EXPECT_EQ(run.code, row.code);
        EXPECT_EQ(Files().size(), row.pages);
        std::string_view const line = row.line ? row.line : "";
        if (!line.empty()) {
            EXPECT_THAT(run.err, HasSubstr(line));
            EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        } else if (row.line) {
            EXPECT_EQ(run.err, "");
        }
        for (auto const& file : Files()) std::filesystem::remove_all(folder_ / file);
    }
}

TEST_F(ZplProgram, LimitsThePageAndNotTheStream) {
    auto const run = Render("^XA^PW32000^LL32000^FO20,20^FDx^FS^XZ^XA^PW100^LL100^FDy^FS^XZ");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(Files().size(), 2U);
    EXPECT_THAT(run.out, HasSubstr("in-2.png  100 x 100"));
    EXPECT_THAT(run.err, HasSubstr("too large"));
}

TEST_F(ZplProgram, DrawsTwoMillionFields) {
    std::string stream = "^XA";
    for (int i = 0; i < 2'000'000 / SanitizerFactor; ++i) stream += "^FO1,1^FDx^FS";
    auto const run = Render(stream + "^XZ");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(Files().size(), 1U);
}

TEST_F(ZplProgram, SaysWhatCannotBeReadOrWritten) {
    WriteFileAtomically(folder_ / "good.zpl", TwoLabels);
    auto const missing = Run("render missing.zpl good.zpl");
    EXPECT_EQ(missing.code, 2);
    EXPECT_EQ(missing.err, "zpl: cannot read missing.zpl: No such file or directory\n");
    EXPECT_TRUE(std::filesystem::exists(folder_ / "good-3.png")) << "the other input is drawn all the same";

    auto const folder = Run("render .");
    EXPECT_EQ(folder.code, 2);
    EXPECT_EQ(folder.err, "zpl: cannot read .: Is a directory\n");

    auto const out = Run("render good.zpl --out good.zpl/pages");
    EXPECT_EQ(out.code, 2);
    EXPECT_THAT(out.err, StartsWith("zpl: cannot write good.zpl/pages: Not a directory"));

    auto const usage = Run("render");
    EXPECT_EQ(usage.code, 2);
    EXPECT_EQ(std::count(usage.err.begin(), usage.err.end(), '\n'), 1);
    EXPECT_EQ(Run("paint good.zpl").code, 2);
    EXPECT_THAT(Run("check --job in.zpl").err, HasSubstr("--job is an option of zpl render;"));
    EXPECT_EQ(Run("--help").code, 0);
    EXPECT_THAT(Run("--version").out, testing::MatchesRegex("zpl [0-9.]+\n"));
}

TEST_F(ZplProgram, EveryCommandTellsItsOptionsAsHelpAndAsManualPage) {
    struct Row {
        std::string command;
        std::string ownOption;
        std::string otherOption;
    };
    for (auto const& [command, own, other] : {Row{"render", "--printer-dpi", "--speed"},
                                              Row{"check", "--time", "--out"}, Row{"serve", "--speed", "--strict"}}) {
        SCOPED_TRACE(command);
        std::string const help = Run(command + " --help").out;
        EXPECT_THAT(help, testing::AllOf(HasSubstr("  " + own + " "), testing::Not(HasSubstr("  " + other + " "))));
        for (std::size_t end = 0, start = 0; (end = help.find('\n', start)) != std::string::npos; start = end + 1)
            EXPECT_LE(end - start, 80U) << help.substr(start, end - start);
        EXPECT_EQ(Run("help " + command).out, help);
        // As roff prints a hyphen that may be copied.
        std::string page = Run("man " + command).out;
        page.erase(std::remove(page.begin(), page.end(), '\\'), page.end());
        EXPECT_THAT(page, testing::AllOf(StartsWith(".TH ZPL-"), HasSubstr(".B " + own + " "),
                                         testing::Not(HasSubstr(".B " + other))));
    }
    EXPECT_THAT(Run("man").out, HasSubstr("zpl\\-serve (1)"));
}

TEST_F(ZplProgram, ShellsCompleteWhatIsTyped) {
    // As bash asks for it: an equals sign is a word of its own.
    std::string const script = R"(
        . ./script
        complete_words() { COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _zpl; echo "${COMPREPLY[*]}"; }
        complete_words zpl re
        complete_words zpl render --dpi 3
        complete_words zpl serve --dpi = 6
        complete_words zpl render --format pn
        complete_words zpl check --st
        complete_words zpl render --out some
        complete_words zpl render lab
        complete_words zpl completion z
    )";
    std::filesystem::create_directory(folder_ / "some folder");
    WriteFileAtomically(folder_ / "label.zpl", "");
    WriteFileAtomically(folder_ / "script", Run("completion bash").out);
    WriteFileAtomically(folder_ / "try", script);
    Run("--version >/dev/null", "bash ./try;");
    EXPECT_EQ(ReadRegularFile(folder_ / ".out"), "render\n300\n600\npng\n--strict\nsome folder\nlabel.zpl\nzsh\n");
    EXPECT_THAT(Run("completion zsh").out, testing::AllOf(StartsWith("#compdef zpl\n"), HasSubstr("'*--dpi=[")));
}

TEST_F(ZplProgram, AFullDiskKeepsWhatIsFinishedAndLeavesNothingHalf) {
    // The first page is small; the second holds noise and passes the limit of what a file may grow to.
    std::string noise;
    for (unsigned i = 0, x = 1; i < 40'000; ++i) noise += "0123456789ABCDEF"[(x = x * 1664525U + 1013904223U) >> 28];
    WriteFileAtomically(folder_ / "in.zpl", "^XA^FDsmall^FS^XZ^XA^PW800^LL200^GFA,20000,20000,100," + noise + "^FS^XZ");
    auto const run = Run("render in.zpl --size 1x1in", "trap '' XFSZ; ulimit -f 8;");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "zpl: cannot write in-2.png: File too large\n");
    EXPECT_EQ(Files(), std::vector<std::string>{"in-1.png"});
    auto const job = Run("render in.zpl --size 1x1in --job --out jobs", "trap '' XFSZ; ulimit -f 8;");
    EXPECT_EQ(job.code, 2);
    EXPECT_THAT(job.err, HasSubstr("/1: File too large\n"));
}

TEST_F(ZplProgram, EndsWithTheWorstOfSeveralInputs) {
    WriteFileAtomically(folder_ / "fine.zpl", "^XA^FDx^FS^XZ");
    WriteFileAtomically(folder_ / "bad.zpl", "^XA^ZZ^FDx^FS^XZ");
    WriteFileAtomically(folder_ / "none.zpl", "^XA^XZ");
    for (auto const& [inputs, code] : {std::pair("fine.zpl bad.zpl none.zpl", 3),
                                       {"bad.zpl fine.zpl", 3},
                                       {"none.zpl fine.zpl", 0},
                                       {"fine.zpl none.zpl", 0},
                                       {"none.zpl", 1},
                                       {"bad.zpl missing.zpl", 2},
                                       {"missing.zpl bad.zpl", 2}}) {
        EXPECT_EQ(Run("render --strict " + std::string(inputs)).code, code) << inputs;
        EXPECT_EQ(Run("check --strict " + std::string(inputs)).code, code) << inputs;
    }
}

TEST_F(ZplProgram, EndsWhenNobodyReadsItsLines) {
    auto const run = Render(TwoLabels, ">/dev/full");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "zpl: standard output cannot be written\n");
    EXPECT_EQ(Files(), std::vector<std::string>{"in-1.png"});
}

TEST_F(ZplProgram, NamesTheInputOfALineWhereThereAreSeveral) {
    WriteFileAtomically(folder_ / "in.zpl", "^XA^FDone^FS^ZZ^XZ");
    std::filesystem::create_directory(folder_ / "other");
    WriteFileAtomically(folder_ / "other/in.zpl", "^XA^CVY^BEN^FDtwo^FS^FDthree^FS^XZ");
    auto const run = Run("check in.zpl other/in.zpl");
    EXPECT_EQ(run.out,
              "in.zpl: label 1: 1 copy, ends at byte 15, says one\n"
              "other/in.zpl: label 1: 1 copy, ends at byte 31, says three\n"
              "2 inputs: 2 labels, 2 with findings\n");
    EXPECT_THAT(run.err, StartsWith("zpl: in.zpl: label 1, byte 12, line 1, column 13: command ^ZZ"));
    EXPECT_THAT(run.err, HasSubstr("zpl: other/in.zpl: label 1, byte"));
}

TEST_F(ZplProgram, ChecksWithoutDrawing) {
    WriteFileAtomically(folder_ / "in.zpl", "~JSN^XA^PQ4^FDbox^FS\n^LS5^XZ^XA^FDopen");
    auto const run = Run("check in.zpl");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "label 1: 4 copies, ends at byte 25, says box\n");
    EXPECT_THAT(run.err, HasSubstr("byte 0, line 1, column 1: command ~JS is not known (backfeed sequence)"));
    EXPECT_THAT(run.err, HasSubstr("label 1, byte 21, line 2, column 1: command ^LS is not known: on other printers it "
                                   "moves the page 5 dots"));
    EXPECT_THAT(run.err, HasSubstr("byte 38, line 2, column 18: the stream ends inside a format"));
    EXPECT_TRUE(Files().empty());
    EXPECT_EQ(Run("check in.zpl --strict").code, 3);
}

}  // namespace
