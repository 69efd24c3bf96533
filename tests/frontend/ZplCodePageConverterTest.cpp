#include "frontend/context/ZplCodePageConverter.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <string>

#include "frontend/context/CharacterSets.h"

namespace {

std::string Convert(unsigned set, std::string_view data) {
    ZplCodePageConverter converter;
    EXPECT_TRUE(converter.SelectCodePage(set));
    return converter.ConvertThroughCodePage(data);
}

std::string ByLibrary(char const* name, std::string data) {
    iconv_t const descriptor = iconv_open("UTF-8", name);
    std::string text(64, '\0');
    char* input = data.data();
    char* output = text.data();
    std::size_t inputLeft = data.size();
    std::size_t outputLeft = text.size();
    iconv(descriptor, &input, &inputLeft, &output, &outputLeft);
    iconv_close(descriptor);
    return text.substr(0, text.size() - outputLeft);
}

}  // namespace

TEST(ZplCodePageConverter, KnowsWhichSetsThereAre) {
    std::string known;
    for (unsigned set = 0; set < 300; ++set) {
        ZplCodePageConverter converter(27);
        converter.SetEncoding(Encoding::Utf16Be);
        if (converter.SelectCodePage(set)) {
            known += std::to_string(set);
            if (converter.GetEncoding() != Encoding::SingleByte) {
                known += ':' + std::to_string(static_cast<int>(converter.GetEncoding()));
            }
            known += ' ';
        } else {
            EXPECT_EQ(converter.CodePage(), 27U);
            EXPECT_EQ(converter.GetEncoding(), Encoding::Utf16Be);
        }
    }
    EXPECT_EQ(known, "0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 24 26 27 28:1 29:3 30:2 31 33 34 35 36 ");
}

TEST(ZplCodePageConverter, ConvertsToUtf8) {
    struct Row {
        unsigned set;
        std::string data;
        char const* expected;
    };
    Row const rows[] = {
        {0, "a\\^~\x84\x15", "a\\^~ä€"},
        {2, "#~", "£‾"},
        {13, "#@[\\]^`{|}~\x9C\xE1", "#@[\\]^`{|}~£ß"},
        {27, "\x80\xE4\x81\xFC", "€äü"},  // 81h is no character
        {27, "\x15", "\x15"},             // the euro stands here only in the sets of code page 850
        {31, "\xF5", "ő"},
        {33, "\xCF\xF0", "Пр"},
        {34, "\xE1", "α"},
        {35, "\xDE", "Ş"},
        {36, "\xE0\xC7\xE1", "אַב"},
        {24, "\xA1", "ก"},
        {15, "\x94\x7A\x92\x42\\\xB1", "配達\\ｱ"},
        {16, "\xC7\xDB\xC3\xA3z", "配達z"},
        {26, "\xC5\xE4\xCB\xCDz", "配送z"},
        {14, "\xC5\xE4\xCB\xCDz", "配送z"},
        {17, std::string("\x91\x4D\0z", 4), "配z"},
        {15, "a\x94", "a"},                // cut off
        {26, "\xFF\xC5\xE4\xFFz", "配z"},  // what is no character is left out
        {28, "\xC3\xA4\xFFz", "ä\xEF\xBF\xBDz"},
    };
    for (auto const& row : rows) EXPECT_EQ(Convert(row.set, row.data), row.expected) << "set " << row.set;
    EXPECT_EQ(Convert(27, std::string("a\0b", 3)), "ab");
    EXPECT_EQ(Convert(26, std::string(1000, '\xC5') + std::string(999, 'x')).size(),
              Convert(26, std::string(1000, '\xC5')).size() + 999);
}

TEST(ZplCodePageConverter, ShowsNationalCharacters) {
    std::string positions;
    for (auto const position : NationalPositions) positions += static_cast<char>(position);
    std::pair<unsigned, char const*> const variants[] = {
        {0, "ASCII"},      {1, "ASCII"},  {2, "ISO646-GB"},  {4, "ISO646-NO"},
        {5, "ISO646-SE2"}, {11, "ASCII"}, {12, "ISO646-JP"}, {13, "ASCII"},
    };
    for (auto const& [set, name] : variants) EXPECT_EQ(Convert(set, positions), ByLibrary(name, positions)) << set;
    EXPECT_EQ(Convert(6, "Stra~e [\x84]"), "Straße ÄäÜ");
}

TEST(ZplCodePageConverter, RemapsPositions) {
    ZplCodePageConverter converter;
    converter.Remap(0x15, '$');  // the euro sign where hosts send a dollar
    converter.Remap('$', 'x');   // what the position shows by itself
    converter.Remap(' ', 'y');
    converter.Remap('z', ' ');
    EXPECT_EQ(converter.ConvertThroughCodePage("$x y"), "€$ y");

    ZplCodePageConverter const copy = converter;
    converter.ClearRemaps();
    EXPECT_EQ(converter.ConvertThroughCodePage("$x"), "$x");
    EXPECT_EQ(copy.ConvertThroughCodePage("$x"), "€$");
    EXPECT_NE(copy, converter);
}

TEST(ZplCodePageConverter, LeavesDecodedStreamsAlone) {
    ZplCodePageConverter converter;
    converter.SetEncoding(Encoding::Utf8);  // as a byte order mark does
    EXPECT_EQ(converter.ConvertThroughCodePage("\xC3\xA4~"), "ä~");
}
