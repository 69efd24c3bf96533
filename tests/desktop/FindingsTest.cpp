#include "desktop/Findings.h"

#include <gtest/gtest.h>

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

TEST(Findings, OfANoticeAreNoFaultAndNeverHideOne) {
    Findings findings("");
    for (int i = 0; i < 2000; ++i) findings.AddNotice("notice " + std::to_string(i), 1);
    EXPECT_FALSE(findings.HasFaults());
    findings.AddReport(LogTopic::BarcodeRefused, "refused", 1);
    EXPECT_TRUE(findings.HasFaults());
    EXPECT_EQ(findings.List().front().text, "refused");
    EXPECT_LT(findings.List().size(), 1010U);
}

}  // namespace
