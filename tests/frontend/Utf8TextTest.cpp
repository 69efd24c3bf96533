#include "frontend/context/Utf8Text.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/CommandDump.h"

TEST(Utf8Text, MendsInvalidSequences) {
    struct Row {
        char const* name;
        std::string text;
        std::string expected;  // "?" stands for U+FFFD
    };
    Row const rows[] = {
        {"valid text stays", "a\xC3\xA4\xE9\x85\x8D\xF0\x9F\x98\x80", "a\xC3\xA4\xE9\x85\x8D\xF0\x9F\x98\x80"},
        {"empty", "", ""},
        {"a continuation byte alone", "a\200b", "a?b"},
        {"no first byte of anything", "\xFF\376b", "??b"},
        {"cut off at the end", "ab\xE9\x85", "ab?"},
        {"as long as the first byte says", "\344bcde", "?de"},
        {"two bytes", "\xC3(x", "?x"},
        {"four bytes", "\360abcd", "?d"},
        {"overlong", "\xC0\x80z", "?z"},
        {"surrogates", "\xED\xA0\xBD\xED\xB8\x80", "??"},
        {"beyond Unicode", "\xF7\xBF\xBF\xBFz", "?z"},
        {"zero bytes are text", std::string("a\0b", 3), std::string("a\0b", 3)},
    };
    for (auto const& [name, text, expected] : rows) {
        std::string mended;
        std::string shortened;
        for (char const c : expected) {
            mended += c == '?' ? "\xEF\xBF\xBD" : std::string(1, c);
            if (c != '?') shortened += c;
        }
        EXPECT_EQ(HexDump(HandleInvalidUTF8(text)), HexDump(mended)) << name;
        EXPECT_EQ(HexDump(HandleInvalidUTF8(text, true)), HexDump(shortened)) << name;
        EXPECT_EQ(CountCodePoints(mended), expected.empty() ? 0 : ToCodePoints(text).size()) << name;
        EXPECT_EQ(FromCodePoints(ToCodePoints(text)), mended) << name;
    }
    EXPECT_EQ(ToCodePoints("a\xC3\xA4\xF0\x9F\x98\x80\xFF"), U"aä\U0001F600\uFFFD");
}
