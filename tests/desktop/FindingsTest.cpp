#include "desktop/Findings.h"

#include <gtest/gtest.h>

namespace {

std::vector<std::string> Lines(Findings const& findings) {
    std::vector<std::string> lines;
    for (auto const& finding : findings.List()) lines.push_back(finding.Describe());
    return lines;
}

TEST(Findings, NameThePlaceInTheStream) {
    Findings findings("^XA\n^QQ\n  ^LS5^XZ~JS");
    findings.AddUnknownCommand({"QQ", false, {}}, 4, 1);
    findings.AddUnknownCommand({"LS", false, {"5"}}, 10, 1);
    findings.AddUnknownCommand({"QQ", false, {}}, 16, 1);  // again
    findings.AddUnknownCommand({"JS", true, {}}, 17, 0);
    findings.AddUnknownCommand({"\xC3\xA9", true, {}}, 99, 0);
    findings.AddNotice("a notice", 2);
    EXPECT_EQ(Lines(findings),
              (std::vector<std::string>{
                  "label 1, byte 4, line 2, column 1: command ^QQ is not known and was left out",
                  "label 1, byte 10, line 3, column 3: command ^LS is not known: on other printers it moves the page "
                  "to the left, so "
                  "the page may differ",
                  "byte 17, line 3, column 10: command ~JS is not known (backfeed sequence): no effect on the page",
                  "byte 99, line 3, column 13: command ~\\xC3\\xA9 is not known and was left out",
                  "label 2: a notice",
              }));
}

TEST(Findings, OfANoticeAreNoFault) {
    Findings findings("");
    findings.AddNotice("a font is missing", 1);
    EXPECT_FALSE(findings.HasFaults());
    findings.AddReport(LogTopic::BarcodeRefused, "refused", 1);
    EXPECT_TRUE(findings.HasFaults());
}

}  // namespace
