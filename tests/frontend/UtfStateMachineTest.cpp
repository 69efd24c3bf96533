#include "frontend/stream/UtfStateMachine.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "tests/support/CommandDump.h"

namespace {

constexpr auto Single = Encoding::SingleByte;
constexpr auto Utf8 = Encoding::Utf8;
constexpr auto Le = Encoding::Utf16Le;
constexpr auto Be = Encoding::Utf16Be;

/// What each byte gives: a code point, or "." while none is complete; "=2:" in front of a change of encoding to 2.
std::string Decode(UtfStateMachine& machine, std::string_view bytes, Encoding encoding, bool inBinaryMode) {
    std::string dump;
    for (char const byte : bytes) {
        auto const result = machine.Consume(byte, encoding, inBinaryMode);
        if (!dump.empty()) dump += ' ';
        if (result.encoding != encoding) dump += '=' + std::to_string(static_cast<int>(result.encoding)) + ':';
        encoding = result.encoding;
        char text[16];
        std::snprintf(text, sizeof text, "%X", static_cast<unsigned>(result.character));
        dump += result.complete ? text : ".";
    }
    return dump;
}

}  // namespace

TEST(UtfStateMachine, DecodesByTheEncodingInForce) {
    struct Row {
        char const* name;
        Encoding encoding;
        bool inBinaryMode;
        std::string bytes;
        char const* expected;
    };
    Row const rows[] = {
        {"single bytes are unsigned", Single, false, "A\x80\xFF", "41 80 FF"},
        {"UTF-8 of all lengths", Utf8, false, "A\xC3\xA4\xE9\x85\x8D\xF0\x9F\x98\x80", "41 . E4 . . 914D . . . 1F600"},
        {"UTF-16, low byte first", Le, false,
         "A\x01"
         "B\x02",
         ". 141 . 242"},
        {"UTF-16, high byte first", Be, false,
         "\x01"
         "A\x02"
         "B",
         ". 141 . 242"},
        {"surrogates are not combined", Be, false, "\xD8\x3D\xDE\x01", ". D83D . DE01"},
        {"UTF-8 mark", Single, false, "\xEF\xBB\xBF\xC3\xA4", "EF BB =1:BF . E4"},
        {"low byte first mark", Single, false,
         "x\xFF\xFE"
         "A\x01",
         "78 FF =2:FE . 141"},
        {"high byte first mark", Utf8, false,
         "\xFE\xFF\x01"
         "A",
         ". =3:FF . 141"},
        {"mark of the encoding in force", Utf8, false, "\xEF\xBB\xBFz", ". . BF 7A"},
        {"the mark itself is no text in UTF-16", Le, false,
         "\xFF\xFE"
         "A\x01",
         ". FE . 141"},
        {"UTF-8 mark ends UTF-16", Be, false, "\xEF\xBB\xBFz", ". . =1:BF 7A"},
        {"no mark in binary runs", Single, true, "\xEF\xBB\xBF\xFF\xFE", "EF BB BF FF FE"},
        {"a mark is text in a binary run", Utf8, true, "\xEF\xBB\xBF", ". . FEFF"},
        {"half a mark stops UTF-16 for good", Be, false,
         "\xEF\xBB"
         "ABCDEF",
         ". . . . . . . ."},
        {"until there is a mark", Be, false,
         "\xEF\xBB"
         "ABCD\xFE\xFF"
         "\x01"
         "A",
         ". . . . . . . FF . 141"},
        {"a stray byte waits to be pushed out", Utf8, false,
         "\xE4"
         "abcdef",
         ". . . . 61 65 66"},
        {"a cut sequence too", Utf8, false,
         "\xE2\x82"
         "abcdef",
         ". . . . . 61 65 66"},
        {"surrogates in UTF-8 are no characters", Utf8, false,
         "\xED\xA0\x80"
         "abcde",
         ". . . . . . 61 65"},
    };
    for (auto const& row : rows) {
        UtfStateMachine machine;
        EXPECT_EQ(Decode(machine, row.bytes, row.encoding, row.inBinaryMode), row.expected) << row.name;
    }
}

TEST(UtfStateMachine, ForgetsHeldBytesWhenTheCallerChangesTheEncoding) {
    UtfStateMachine machine;
    EXPECT_EQ(Decode(machine, "^X\xEF\xBB", Single, false), "5E 58 EF BB");
    EXPECT_EQ(Decode(machine, "\xBF", Utf8, false), ".");
    EXPECT_EQ(Decode(machine, "Q", Single, false), "51");
    EXPECT_EQ(Decode(machine,
                     "\x01"
                     "A\x02",
                     Le, false),
              ". 4101 .");
}

TEST(UtfStateMachine, SkippingARunLeavesTheSameBehind) {
    for (std::string const run : {"", "a", "ab", "\xEF\xBB", "abcdef\xEF\xBB", "abc\xFE"}) {
        UtfStateMachine consuming;
        UtfStateMachine skipping;
        Decode(consuming, "xy\xEF", Single, true);
        Decode(skipping, "xy\xEF", Single, true);
        Decode(consuming, run, Single, true);
        skipping.SkipRun(run, Single);
        EXPECT_EQ(Decode(skipping,
                         "\xBF\xFF\xFE"
                         "A\x01",
                         Single, false),
                  Decode(consuming,
                         "\xBF\xFF\xFE"
                         "A\x01",
                         Single, false))
            << HexDump(run);
    }
}
