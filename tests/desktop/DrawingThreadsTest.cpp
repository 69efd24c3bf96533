#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "desktop/PageFile.h"
#include "foundation/Files.h"
#include "tests/support/TemporaryDirectory.h"

// What threads draw is what one thread draws: the same files, and the same lines and findings in the same order.
namespace {

std::string Repeated(unsigned times, std::string const& text) {
    std::string result;
    for (unsigned i = 0; i < times; ++i) {
        std::string part = text;
        for (std::size_t at = 0; (at = part.find('$', at)) != std::string::npos;)
            part.replace(at, 1, std::to_string(i * 7919 % 1000));
        result += part;
    }
    return result;
}

/// Runs a script of the shell in a folder of its own; there `zpl` is the program. Gives the files that it leaves, by
/// name; those of a job without the parts that are another each time.
std::map<std::string, std::string> FilesOf(std::string const& stream, std::string const& script) {
    TemporaryDirectory const folder;
    WriteFileAtomically(folder / "in.zpl", stream);
    WriteFileAtomically(folder / "script", "zpl() { '" ZPL_PROGRAM "' \"$@\"; }\n" + script);
    EXPECT_NE(std::system(("cd '" + folder.Path().string() + "' && sh ./script </dev/null").c_str()), -1);
    std::string jobFolder;
    std::map<std::string, std::string> files;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder.Path())) {
        std::string const name = entry.path().filename().string();
        if (entry.is_directory()) jobFolder = name;
        bool const isMetaData = name == "MetaData" || name == "TransferDone";
        if (entry.is_regular_file() && name != "script")
            files[name] = isMetaData ? std::string() : ReadRegularFile(entry.path());
    }
    auto& lines = files["out"];
    for (std::size_t at = 0; !jobFolder.empty() && (at = lines.find(jobFolder)) != std::string::npos;)
        lines.replace(at, jobFolder.size(), "JOB");
    return files;
}

TEST(DrawingThreads, MakeWhatOneThreadMakes) {
    struct Row {
        char const* what;
        std::string stream;
        char const* options = "";
        char const* line = "";  ///< that must be among the lines
    };
    std::string const fonts =
        "^XA^FO9,9^A0N,30^FDn$^FS^FO9,40^AAN,18^FDn$^FS^XZ^XA^FO9,9^AEN^FD$^FS^FO99,9^AFR^FDb^FS^XZ"
        "^XA^FO9,9^AQN,20^FD\xE8\xAA\x9E$^FS^FO9,99^AZN,20^FDx^FS^XZ";
    std::string const stores =
        "~DGR:P,8,2,F0$F0F00FF00$0F^XA^DFR:F^FO9,9^A0N,30^FN1^FS^FO60,60^XGP,5,5^FS^XZ"
        "^XA^XFR:F^FN1^FDfirst $^FS^XZ~DGR:P,8,2,00$FF00FF00$FF^XA^DFR:F^FO90,9^ABN,20^FN1^FS^XZ"
        "^XA^FO9,9^XGR:P,9,9^FS^XZ^XA^XFR:F^FN1^FDsecond^FS^XZ^XA^FO9,9^GB$,9^FS^ISR:Q,N^XZ"
        "^XA^FO9,9^XGR:Q,1,1^FS^XZ";
    std::string const pictures =
        "^XA^MCN^FO9,9^FDkept $^FS^FV^FO9,90^FDvar^FS^XZ^XA^PQ2^FO9,50^FDon it^FS^XZ^XA^MCY"
        "^FO60,90^FDlast^FS^XZ^XA^FDnone^FS^XZ^XA^FDfree $^FS^XZ";
    std::string const copies =
        "^XA^PQ40^FO9,9^A0N,30^SN$,3,Y^FS^XZ^XA^PQ3^FO9,9^BEN,50^SN$,777,Y^FS^XZ^XA^FDone^FS^XZ"
        "^XA^PQ3^FO9,9^A0N,30^FN1^FS^FO9,60^BCN,40^FN1^FS^FT9,150^A0N,20^FN2^FS^FN1^SN$,3,Y^FS^FN2^FDb^FS^XZ";
    std::string const shapes =
        "^XA^PW$^LL90^FO9,9^GB300,80,3^FS^XZ^XA^PON^LL300^PW200^FO9,9^A0N,30^FDturned "
        "$^FS^POI^XZ^XA^PON^PMY^FO9,9^FD$^FS^XZ"
        "^XA^PMN^PQ2^PW150^FO9,9^A0N,30^SN$^FS^FO100,2500^GB99,99,9^FS^XZ^XA^JMB^FO9,9^FDlarge "
        "$^FS^XZ^XA^JMA^FO9,9^FD$^FS^XZ";
    std::string const faults =
        "^XA^FD1^FS^ZZ^XZ^XA^FOx,1^B7N,3^FD2^FS^FO900,9^FDfar^FS^XZ^XA^FO9,9^BEN^FDno$^FS^XZ"
        "^XA^FO99999999999^FDdropped^FS^XZ^KQ^XA^PW32000^FD4^FS^XZ^XA^FO9,9^XGE:NONE^FS^FD5^FS^XZ";
    std::string const characters = "^XA^FO9,9^A0N,30^FH!^FD!41$^FS^XZ^CC!!XA!FO9,9!A0N,30!FH!FD_41!FS!XZ!CC^";
    Row const rows[] = {
        {"fonts that are first used on one thread or another", "^XA^CI28^XZ" + Repeated(20, fonts), "", "in-60.png"},
        {"stored objects that change between labels", Repeated(20, stores), "--format pbm", "in-80.pbm"},
        {"pictures that labels keep for the next", Repeated(10, pictures), "--format pdf", "page 60"},
        {"pages that are chosen and turned", Repeated(5, pictures + copies),
         "--pages 3-4,30,44-70,200- --rotate 90 --json", "in-264.png"},
        {"copies that are alike", Repeated(9, copies + "^XA^PQ9^FDsame^FS^XZ"), "--distinct --format pdf",
         "prints 9 times"},
        {"copies that count on", Repeated(5, copies), "--format pdf --split", "in-235.pdf"},
        {"sizes that change", Repeated(9, shapes), "", "in-63.png"},
        {"fields of copies and of pages that are turned", Repeated(9, copies + shapes), "--copies 5 --json",
         "\"label\":90"},
        {"what a tag says",
         Repeated(9, "^XA^PQ2^FO9,9^A0N,30^FN1^FS^FN1^RFR,H,0,4^FS^XZ^XA^RFW,H,0,4^FD$^FS^FDw$^FS^XZ"),
         "--tag epc=0A0B0C0D0E0F1011", "in-27.png"},
        {"findings", Repeated(20, faults) + "^XA^FDopen", "--strict --json", "\"label\":100"},
        {"fields, some of formats that are stored anew", Repeated(5, stores + fonts), "--json", "\"label\":35"},
        {"fields of a job", Repeated(9, fonts), "--job --json", "\"label\":27"},
        {"prefixes that change", Repeated(20, characters), "--copies 2", "in-40.png"},
        {"a job", Repeated(4, fonts + copies + stores + faults), "--job --copies 9 --strict", "copy 9 of 40"},
        {"a job on kept pictures", Repeated(4, copies + pictures), "--job --copies 2", "copy 2 of 40"},
        {"nothing", "^XA^XZ"},
    };
    for (auto const& [what, stream, options, line] : rows) {
        SCOPED_TRACE(what);
        auto const draw = [&](char const* threads) {
            return FilesOf(stream, "zpl render in.zpl --size 1x1in --time 2026-03-31T14:05:00 " + std::string(options) +
                                       " --threads " + threads + " >out 2>err; echo $? >code");
        };
        auto const one = draw("1");
        EXPECT_THAT(one.at("out"), testing::HasSubstr(line));
        for (auto const* threads : {"2", "7"}) {
            auto const many = draw(threads);
            ASSERT_EQ(many.size(), one.size());
            for (auto const& [name, content] : one)
                EXPECT_TRUE(many.contains(name) && many.at(name) == content) << name;
        }
    }
}

TEST(DrawingThreads, LeaveWholePagesInTheirOrderWhenTheRunIsInterrupted) {
    // More lines than a pipe holds, so that the run cannot have ended before the signal.
    std::string const stream = Repeated(5000, "^XA^PQ2^FO9,9^A0N,30^FD$^FS^XZ");
    for (auto const* threads : {"1", "4"}) {
        auto const files = FilesOf(
            stream, "mkfifo lines; '" ZPL_PROGRAM "' render in.zpl --size 1x1in --threads " + std::string(threads) +
                        " 2>err >lines & exec 3<lines; read first <&3; kill -INT $!; cat <&3 >rest; wait $!;"
                        "echo $? >code; echo \"$first\" | cat - rest >out; rm lines rest");
        EXPECT_EQ(files.at("code"), "130\n");
        auto const& lines = files.at("out");
        auto const pages = static_cast<std::size_t>(std::count(lines.begin(), lines.end(), '\n'));
        EXPECT_EQ(files.size(), pages + 4) << "in.zpl, out, err and code";
        for (std::size_t page = 1; page <= pages; ++page) {
            auto const file = files.find("in-" + std::to_string(page) + ".png");
            ASSERT_TRUE(file != files.end() && PageFile::Parse(file->second)) << page;
        }
    }
}

}  // namespace
