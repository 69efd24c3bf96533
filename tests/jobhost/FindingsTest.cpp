#include "jobhost/model/Findings.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "jobhost/model/StreamFindings.h"

namespace {

std::vector<std::string> Lines(Findings const& findings) {
    std::vector<std::string> lines;
    for (auto const& finding : findings.List()) lines.push_back(finding.Describe());
    return lines;
}

TEST(Findings, NameThePlaceInTheStream) {
    Findings findings("^XA\n^QQ\n  ^QR^XZ~JS");
    findings.AddUnknownCommand({"QQ", false, {}}, 4, 0);
    findings.AddUnknownCommand({"QR", false, {}}, 10, 0);
    findings.AddUnknownCommand({"QQ", false, {}}, 16, 0);  // again
    findings.AddUnknownCommand({"JS", true, {}}, 17, {});
    findings.AddUnknownCommand({"\xC3\xA9", true, {}}, 99, {});
    findings.AddNotice("a notice", 20);
    findings.AddReport(LogTopic::BarcodeCut, "a barcode", 20);
    findings.AddNotice("a notice of a format without page", 30);
    findings.NumberLabel(0, 1);
    findings.NumberLabel(20, 2);
    EXPECT_EQ(Lines(findings),
              (std::vector<std::string>{
                  "label 1, byte 4, line 2, column 1: command ^QQ is not known and was left out",
                  "label 1, byte 10, line 3, column 3: command ^QR is not known and was left out",
                  "byte 17, line 3, column 10: command ~JS is not known (backfeed sequence): no effect on the page",
                  "label 2: a barcode",
                  "label 2: a notice",
                  "byte 99, line 3, column 12: command ~\\xC3\\xA9 is not known and was left out",
                  "a notice of a format without page",
              }));
}

TEST(Findings, TellWhatACommandDoesElsewhereAndWhetherItCounts) {
    struct Row {
        ZplCommand command;
        std::string text;
        bool counts = false;
    };
    std::string const moves = ": on other printers it moves the page ";
    for (auto const& row : std::vector<Row>{
             {{"LS", false, {"0"}}, " (a shift of the page by no dots): no effect on the page"},
             {{"LS", false, {}}, " (a shift of the page by no dots): no effect on the page"},
             {{"LS", false, {" 50"}}, moves + "50 dots to the left, so the page may differ", true},
             {{"LS", false, {"-20"}}, moves + "20 dots to the right, so the page may differ", true},
             {{"LS", false, {"99999999999"}}, moves + "off its media, so the page may differ", true},
             {{"PA", false, {"0", "1", "1", "0"}}, " (shaping of text): no effect on the page"},
             {{"JL", true, {}}, " (length of the label): no effect on the page"},
             {{"ND", false, {"2", "A"}}, " (network settings): no effect on the page"},
             {{"RF", false, {"W"}}, ": it takes a tag encoder, which --tag brings", true},
         }) {
        Findings findings("");
        findings.AddUnknownCommand(row.command, 0, {});
        auto const list = findings.List();
        std::string const name = (row.command.isControl ? "~" : "^") + row.command.command;
        EXPECT_EQ(list.front().text, "command " + name + " is not known" + row.text);
        EXPECT_EQ(findings.HasFaults(), row.counts) << row.text;
        findings.AddUnknownCommand({"LS", false, {"7"}}, 9, {});
        EXPECT_EQ(findings.List().size(), 2U) << "another value is told too";
    }
}

TEST(Findings, TellACommandOnceAndAFaultOfAFieldInEachLabel) {
    Findings findings("");
    for (std::uint64_t format = 0; format < 3; ++format) {
        findings.AddUnknownCommand({"MN", false, {}}, format, format);
        findings.AddUnknownCommand({"QQ", false, {}}, format, format);
        findings.AddReport(LogTopic::BarcodeRefused, "refused", format, format);
    }
    std::string kinds;
    for (auto const& finding : findings.List()) kinds += std::string(NameOf(finding.kind)) + ' ';
    EXPECT_EQ(kinds, "barcode-refused setup-command unknown-command barcode-refused barcode-refused ");
}

TEST(Findings, HaveAKindThatSaysWhetherTheyAreFaults) {
    for (auto const& [topic, kind, isFault] : {std::tuple(LogTopic::BarcodeRefused, "barcode-refused", true),
                                               {LogTopic::NotDrawn, "barcode-refused", true},
                                               {LogTopic::BarcodeCut, "barcode-cut", true},
                                               {LogTopic::Dropped, "dropped", true},
                                               {LogTopic::OffPage, "off-page", false},
                                               {LogTopic::Data, "notice", false}}) {
        Findings findings("");
        findings.AddReport(topic, "text", 0);
        EXPECT_EQ(NameOf(findings.List().at(0).kind), kind);
        EXPECT_EQ(findings.HasFaults(), isFault) << kind;
    }
}

TEST(Findings, OfANoticeAreNoFaultAndNeverHideOne) {
    Findings findings("");
    for (int i = 0; i < 2000; ++i) findings.AddNotice("notice " + std::to_string(i), 1);
    EXPECT_FALSE(findings.HasFaults());
    findings.AddReport(LogTopic::BarcodeRefused, "refused", 1);
    EXPECT_TRUE(findings.HasFaults());
    EXPECT_EQ(findings.List().front().text, "refused");
    EXPECT_LT(findings.List().size(), 1010U);
}

// What is told of a stream that goes by in pieces is what is told of it as a whole.
TEST(Findings, AreToldLabelByLabelOfAStreamThatIsNotKept) {
    std::string const stream = "^XA\n^QQ^FDa^FS\n^XZ\n^XA^QQ\n ^FDb^FS^XZ\n^XA\n^QR";
    std::vector<std::string> told;
    Zpl::Host::StreamFindings live([&told](std::string const& text) {
        auto const message = Zpl::Host::FindingMessage::Parse(text);
        ASSERT_TRUE(message) << text;
        EXPECT_EQ(message->session, 7U);
        told.push_back(message->job + ": " + message->finding.Describe());
    });
    Findings whole(stream);
    auto const each = [&](auto&& add) { add(live.Collected()), add(whole); };
    live.Append(7, stream.substr(0, 9));
    each([](Findings& findings) { findings.AddUnknownCommand({"QQ", false, {}}, 4, 0); });
    live.Append(7, stream.substr(9));
    each([](Findings& findings) {
        for (int replay = 0; replay < 2; ++replay) findings.AddReport(LogTopic::BarcodeCut, "a", 0, 7);
    });
    live.EndLabel("job", 0, 14);
    each([](Findings& findings) {
        findings.AddUnknownCommand({"QQ", false, {}}, 21, 18);
        findings.AddReport(LogTopic::BarcodeCut, "a", 18, 26);
    });
    live.EndLabel("job", 18, 33);
    each([](Findings& findings) { findings.AddUnknownCommand({"QR", false, {}}, 41, 37); });
    live.EndStream("job");
    whole.NumberLabel(0, 1);
    whole.NumberLabel(18, 2);
    std::vector<std::string> wanted;
    for (auto const& line : Lines(whole)) wanted.push_back("job: " + line);
    std::sort(wanted.begin(), wanted.end());
    std::sort(told.begin(), told.end());
    EXPECT_EQ(told, wanted);

    live.Append(7, "\n^XZ");
    live.Collected().AddNotice("of the next stream", {}, 1);
    live.EndStream("");
    EXPECT_EQ(told.back(), ": byte 1, line 2, column 1: of the next stream");
}

}  // namespace
