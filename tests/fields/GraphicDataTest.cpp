#include "fields/graphics/GraphicData.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

#include "../support/FieldBench.h"
#include "foundation/Base64.h"

using namespace ZplCore;

namespace {

/// The rows of a picture as digits, parted by blanks.
std::string Dump(Picture const& picture) {
    constexpr char Digits[] = "0123456789ABCDEF";
    std::string text;
    for (std::size_t i = 0; i < picture.rows.size(); ++i) {
        if (i > 0 && i % picture.bytesPerRow == 0) text += ' ';
        text += Digits[picture.rows[i] >> 4];
        text += Digits[picture.rows[i] & 15];
    }
    return text;
}

std::string Decode(std::string_view data, unsigned total, unsigned bytesPerRow) {
    auto picture = MakePicture(total, bytesPerRow);
    if (!picture) return "none";
    DecodeTextData(data, *picture);
    return Dump(*picture);
}

TEST(GraphicData, HexWithRepeatCodes) {
    struct Row {
        char const* name;
        char const* data;
        char const* expected;  ///< of a picture of 4 rows of 2 bytes; white rows at the end are not stored
    };
    constexpr Row rows[] = {
        {"plain digits", "1234ABCDabcdF00F", "1234 ABCD ABCD F00F"},
        {"blanks between digits", "12 34\nAB\tCD", "1234 ABCD"},
        {"surplus data", "1111222233334444555", "1111 2222 3333 4444"},
        {"missing data", "11112", "1111 2000"},
        {"repeat counts", "JF", "FFFF"},
        {"counts add up", "GGGGF", "FFFF"},
        {"a count of twenty", "g1", "1111 1111 1111 1111"},
        {"a repeat runs over the row", "1L2", "1222 2220"},
        {"fill with white", "8,4,,1", "8000 4000 0000 1000"},
        {"fill with black", "0!!1!", "0FFF FFFF 1FFF"},
        {"fill behind a full row makes a row", "1234,5", "1234 0000 5000"},
        {"odd digits before a fill", "123,F", "1230 F000"},
        {"repeat the row", "1234::", "1234 1234 1234"},
        {"repeat of a begun row fills it first", "12:", "1200 1200"},
        {"repeat of a white row", "1,,:1", "1000 0000 0000 1000"},
        {"repeat without a row above", ":1", "0000 1000"},
        {"a count before a fill is dropped", "J,1", "0000 1000"},
        {"repeat behind the last row", "1111:::::::", "1111 1111 1111 1111"},
        {"unknown characters", "1#2%3?4", "1234"},
        {"odd repeat", "0I1H2", "0111 2200"},
        {"counts without a digit", "zzz", ""},
        {"nothing", "", ""},
    };
    for (auto const& row : rows) EXPECT_EQ(Decode(row.data, 8, 2), row.expected) << row.name;
}

TEST(GraphicData, LastRowNeedNotBeFull) { EXPECT_EQ(Decode("112233", 3, 2), "1122 3300"); }

TEST(GraphicData, CountsOutOfRange) {
    FieldBench bench;  // receives the reports
    EXPECT_EQ(Decode("FF", 0, 1), "none");
    EXPECT_EQ(Decode("FF", 1, 0), "none");
    EXPECT_TRUE(bench.reports.empty());
    EXPECT_EQ(Decode("FF", 65 * 1024 * 1024, 8), "none");
    EXPECT_EQ(Decode("FF", 100000, 50000), "none");
    EXPECT_EQ(bench.reports.size(), 2U);
    EXPECT_EQ(Decode("FF", 1, 4000000000U), "none");
}

TEST(GraphicData, MemoryFollowsTheData) {
    auto picture = MakePicture(64 * 1024 * 1024, 8);
    DecodeTextData(std::string(2000000, ','), *picture);
    EXPECT_EQ(picture->rows.capacity(), 0U);
    EXPECT_EQ(picture->Height(), 8U * 1024 * 1024);
}

TEST(GraphicData, CheckSum) { EXPECT_EQ(Crc16("123456789"), 0x31C3); }

std::string Pack(std::string const& bytes) {
    uLongf size = compressBound(bytes.size());
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<Bytef const*>(bytes.data()),
             bytes.size());
    packed.resize(size);
    return packed;
}

std::string WithCrc(std::string const& lead, std::string const& text) {
    char crc[8];
    std::snprintf(crc, sizeof crc, ":%04X", Crc16(text));
    return lead + text + crc;
}

TEST(GraphicData, Base64AndPackedForms) {
    FieldBench bench;
    std::string const bytes("\x12\x34\xAB\xCD\xFF", 5);
    EXPECT_EQ(Decode(WithCrc(":B64:", Base64::Encode(bytes)), 6, 2), "1234 ABCD FF00");
    EXPECT_EQ(Decode(" \r\n" + WithCrc(":Z64:", Base64::Encode(Pack(bytes))), 6, 2), "1234 ABCD FF00");
    // Line ends in the text do not count for the check sum.
    std::string folded = WithCrc(":B64:", Base64::Encode(bytes));
    EXPECT_EQ(Decode(folded.insert(9, "\r\n"), 6, 2), "1234 ABCD FF00");
    EXPECT_TRUE(bench.reports.empty());
    // A wrong or missing check sum is reported, and the picture drawn.
    EXPECT_EQ(Decode(":B64:" + Base64::Encode(bytes) + ":0000", 6, 2), "1234 ABCD FF00");
    EXPECT_EQ(Decode(":B64:" + Base64::Encode(bytes), 6, 2), "1234 ABCD FF00");
    EXPECT_EQ(bench.reports.size(), 2U);
}

TEST(GraphicData, InflatesNoMoreThanThePictureHolds) {
    FieldBench bench;
    std::string const bomb = Pack(std::string(20 * 1024 * 1024, '\xFF'));
    EXPECT_EQ(Decode(WithCrc(":Z64:", Base64::Encode(bomb)), 4, 2), "FFFF FFFF");
    EXPECT_EQ(Decode(WithCrc(":Z64:", Base64::Encode("no zlib stream")), 4, 2), "");
    std::string const broken = Pack("\xF0\x0F some more bytes that are cut").substr(0, 12);
    EXPECT_EQ(Decode(WithCrc(":Z64:", Base64::Encode(broken)), 100, 2).substr(0, 4), "F00F");
    EXPECT_EQ(bench.reports.size(), 4U);  // damaged, and ended early
}

/// A slow reader of the repeat codes, digit by digit, to compare with.
std::string DecodeSlowly(std::string_view data, unsigned rowCount, unsigned bytesPerRow) {
    std::string digits;
    std::size_t const row = bytesPerRow * 2;
    unsigned repeat = 0;
    for (char const c : data) {
        if (std::isxdigit(static_cast<unsigned char>(c))) {
            digits.append(std::max(repeat, 1U), static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
            repeat = 0;
        } else if (c >= 'G' && c <= 'Y') {
            repeat += static_cast<unsigned>(c - 'G' + 1);
        } else if (c >= 'g' && c <= 'z') {
            repeat += static_cast<unsigned>(c - 'f') * 20;
        } else if (c == ',' || c == '!') {
            digits.append(row - digits.size() % row, c == '!' ? 'F' : '0');
            repeat = 0;
        } else if (c == ':') {
            if (digits.size() % row != 0) digits.append(row - digits.size() % row, '0');
            digits += digits.size() < row ? std::string(row, '0') : digits.substr(digits.size() - row);
            repeat = 0;
        }
    }
    digits.resize(row * rowCount, '0');
    return digits;
}

TEST(GraphicData, AgreesWithASlowReader) {
    constexpr std::string_view Alphabet = "0123456789ABCDEFabcdefGHKWYghz,,!::";
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        unsigned const bytesPerRow = 1 + random() % 9;
        unsigned const rowCount = 1 + random() % 12;
        std::string data = "0";  // not the lead of a base64 form
        for (unsigned i = random() % 60; i > 0; --i) data += Alphabet[random() % Alphabet.size()];
        std::string actual = Decode(data, rowCount * bytesPerRow, bytesPerRow);
        std::erase(actual, ' ');
        actual.resize(std::size_t{rowCount} * bytesPerRow * 2, '0');
        ASSERT_EQ(actual, DecodeSlowly(data, rowCount, bytesPerRow)) << data << " in rows of " << bytesPerRow;
    }
}

}  // namespace
