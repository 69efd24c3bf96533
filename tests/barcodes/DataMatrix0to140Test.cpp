#include "barcodes/matrix/DataMatrix0to140Encoder.h"

#include <gtest/gtest.h>

#include <sstream>

#include "barcodes/matrix/DataMatrix0to140Tables.h"

using namespace Barcode::Encoder;

namespace {

std::string Dump(Barcode::Model::MatrixBarcodeModel const& model) {
    std::ostringstream text;
    for (auto const& row : model.GetCells()) {
        unsigned number = 0;
        for (bool const dark : row) number = number << 1 | (dark ? 1 : 0);
        text << std::hex << number << ' ';
    }
    return text.str();
}

std::string Dump(DataMatrixBits const& bits) {
    std::string text;
    for (bool const bit : bits) text += bit ? '1' : '0';
    return text;
}

// One message at every level, worked out by hand; a row is a number, its first cell the highest bit.
struct WorkedExample {
    int ecc;
    char const* symbol;
};
constexpr WorkedExample Examples[] = {
    {0, "555 62a 799 7d2 7a1 4b8 60d 5ae 757 5de 7ff "},
    {50, "1555 1d32 195b 1b94 1dd5 1618 1e9b 127c 1af3 17d4 193d 136e 1fff "},
    {80, "5555 66d2 578f 5b44 538f 7a7c 4b8f 7c50 56bb 4d20 5053 695a 6dc7 4156 7fff "},
    {100, "15555 1cf46 12349 1e2c4 1d021 16f1a 1d1cf 1dca0 180ad 14476 1f7c9 12d1c 1751b 1e1e4 1287f 1392e 1ffff "},
    {140,
     "155555 1867f2 1048d5 10670e 16ad7f 10e320 17a01f 159ff2 1c1935 11b5da 19596b 1cfb3e 18d68d 192944 "
     "1ad1b3 173426 1ac289 13fb12 1e0871 17e1f2 1fffff "},
};

TEST(DataMatrix0to140, WorkedExamples) {
    for (auto const& [ecc, symbol] : Examples)
        EXPECT_EQ(Dump(DataMatrix0to140Encoder::Encode("AB12-X", ecc, 0, 3)), symbol) << ecc;
}

TEST(DataMatrix0to140, PacksGroups) {
    struct {
        void (*encode)(DataMatrixBits&, std::string const&);
        char const* data;
        char const* bits;
    } const rows[] = {
        {Base11Encode, "2024 7", "000010100010001111001"},
        {Base11Encode, "50", "1000100"},
        {Base27Encode, "ZEBU", "01001111001010100110"},
        {Base27Encode, "LABELS", "00101001101010110100011011001"},
        {Base41Encode, "AB12-X", "001001011110110011111011111111110"},
        {Base37Encode, "R2D2", "000011011100000101101"},
    };
    for (auto const& [encode, data, expected] : rows) {
        DataMatrixBits bits;
        encode(bits, data);
        EXPECT_EQ(Dump(bits), expected) << data;
    }
}

TEST(DataMatrix0to140, Validates) {
    struct {
        std::string data;
        unsigned ecc, size, format;
        ValidationStatus status;
    } const rows[] = {
        {"AB", 0, 10, 6, ValidationStatus::InvalidParameter},
        {"AB", 0, 51, 6, ValidationStatus::InvalidParameter},
        {"AB", 0, 7, 6, ValidationStatus::InvalidParameter},
        {"AB", 60, 0, 6, ValidationStatus::InvalidParameter},
        {"AB", 0, 0, 7, ValidationStatus::InvalidParameter},
        {"AB", 0, 0, 0, ValidationStatus::InvalidParameter},
        {"Ab", 0, 0, 3, ValidationStatus::InvalidCharacter},
        {"A,B", 0, 0, 4, ValidationStatus::InvalidCharacter},
        {"A,B", 0, 0, 3, ValidationStatus::Valid},
        {"A1", 0, 0, 1, ValidationStatus::InvalidCharacter},
        {"\x80", 0, 0, 5, ValidationStatus::InvalidCharacter},
        {"\x80", 0, 0, 6, ValidationStatus::Valid},
        {"AB", 0, 9, 6, ValidationStatus::TooLong},
        {"A", 0, 9, 6, ValidationStatus::Valid},
        {std::string(511, '1'), 0, 0, 1, ValidationStatus::Valid},
        {std::string(512, '1'), 0, 0, 1, ValidationStatus::TooLong},
        {std::string(63, 'x'), 140, 0, 6, ValidationStatus::Valid},
        {std::string(64, 'x'), 140, 0, 6, ValidationStatus::TooLong},
    };
    for (auto const& row : rows)
        EXPECT_EQ(DataMatrix0to140Encoder::Validate(row.data, row.ecc, row.size, row.format), row.status)
            << row.data << " " << row.ecc << " " << row.size << " " << row.format;
}

/// Reads the format and the data of a level 000 symbol back: grid, randomisation and packing in reverse.
std::string Decode8Bit(Barcode::Model::MatrixBarcodeModel const& model) {
    auto const& cells = model.GetCells();
    auto const side = static_cast<unsigned>(cells.size());
    auto const& grid = MPGTables()[SizeIndex(side)];
    std::vector<bool> bits(grid.size());
    for (unsigned i = 0; i < grid.size(); ++i) {
        unsigned const bit = grid[i];
        bool const random = (MasterRandomStream[bit / 8] >> (7 - bit % 8) & 1) != 0;
        bits[bit] = cells[1 + i / (side - 2)][1 + i % (side - 2)] != random;
    }
    auto const number = [&](std::size_t at, std::size_t count) {
        unsigned value = 0;
        for (std::size_t i = 0; i < count; ++i) value |= unsigned{bits[at + i]} << i;
        return value;
    };
    constexpr std::size_t Prefix = 7;
    std::string text;
    for (unsigned i = 0, count = number(Prefix + 21, 9); i < count; ++i)
        text += static_cast<char>(number(Prefix + 30 + 8 * std::size_t{i}, 8));
    return text;
}

TEST(DataMatrix0to140, EverySizeIsReadBack) {
    for (int size = 9; size <= 49; size += 2) {
        auto const& grid = MPGTables()[SizeIndex(static_cast<unsigned>(size))];
        std::vector<bool> seen(grid.size());
        for (auto const bit : grid) seen.at(bit) = true;
        EXPECT_EQ(std::count(seen.begin(), seen.end(), true), static_cast<std::ptrdiff_t>(grid.size())) << size;
        std::string data;
        while (DataMatrix0to140Encoder::Validate(data + "x", 0, static_cast<unsigned>(size), 6) ==
               ValidationStatus::Valid)
            data += static_cast<char>(' ' + data.size() * 7 % 90);
        EXPECT_EQ(Decode8Bit(DataMatrix0to140Encoder::Encode(data, 0, size, 6)), data) << size;
    }
}

}  // namespace
