#include "frontend/context/ObjectName.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Dump(std::string_view text) {
    auto const name = ObjectName::Parse(text, 'R', "UNKNOWN", "GRF");
    return name ? name->Path().string() : "-";
}

}  // namespace

TEST(ObjectName, ReadsPaths) {
    struct Row {
        char const* name;
        std::string text;
        char const* expected;
    };
    Row const rows[] = {
        {"whole", "E:LOGO.PNG", "E/LOGO.PNG"},
        {"lower case", "e:logo.png", "E/LOGO.PNG"},
        {"no device", "LOGO.PNG", "R/LOGO.PNG"},
        {"no extension", "B:LOGO", "B/LOGO.GRF"},
        {"an empty extension", "B:LOGO.", "B/LOGO.GRF"},
        {"no name", "A:.ZPL", "A/UNKNOWN.ZPL"},
        {"nothing", "", "R/UNKNOWN.GRF"},
        {"a device alone", "Z:", "Z/UNKNOWN.GRF"},
        {"blanks behind", "R:LOGO  .PNG ", "R/LOGO.PNG"},
        {"blanks before", "R: LOGO.PNG", "-"},
        {"blanks inside", "R:LO GO.PNG", "-"},
        {"other allowed characters", "R:A-B_1.Z64", "R/A-B_1.Z64"},
        {"16 letters", "R:ABCDEFGHIJKLMNOP.PNG", "R/ABCDEFGHIJKLMNOP.PNG"},
        {"17 letters", "R:ABCDEFGHIJKLMNOPQ.PNG", "-"},
        {"a long extension", "R:LOGO.JPEG", "-"},
        {"an unknown device", "C:LOGO.PNG", "-"},
        {"a parent folder", "R:../LOGO.PNG", "-"},
        {"a parent as the name", "R:...", "-"},
        {"a folder", "R:A/B.PNG", "-"},
        {"an absolute path", "/etc/passwd", "-"},
        {"backslashes", "R:A\\B.PNG", "-"},
        {"two extensions", "R:A.B.C", "-"},
        {"wildcards", "R:*.*", "-"},
        {"a zero byte", std::string("R:A\0B.PNG", 9), "-"},
        {"beyond 7 bits", "R:L\xD6GO.PNG", "-"},
    };
    for (auto const& row : rows) EXPECT_EQ(Dump(row.text), row.expected) << row.name;
}
