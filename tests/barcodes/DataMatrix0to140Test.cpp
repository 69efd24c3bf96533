#include "barcodes/matrix/DataMatrix0to140Encoder.h"

#include <gtest/gtest.h>

#include "barcodes/matrix/DataMatrix0to140Tables.h"

using namespace Barcode::Encoder;

namespace {

std::string Dump(Barcode::Model::MatrixBarcodeModel const& model) {
    std::string text;
    for (auto const& row : model.GetCells()) {
        for (bool const dark : row) text += dark ? '1' : '0';
        text += '\n';
    }
    return text;
}

std::string Dump(DataMatrixBits const& bits) {
    std::string text;
    for (bool const bit : bits) text += bit ? '1' : '0';
    return text;
}

// One message at every level, worked out by hand.
struct WorkedExample {
    int ecc;
    char const* symbol;
};
constexpr WorkedExample Examples[] = {
    {0,
     "10101010101\n"
     "11000101010\n"
     "11110011001\n"
     "11111010010\n"
     "11110100001\n"
     "10010111000\n"
     "11000001101\n"
     "10110101110\n"
     "11101010111\n"
     "10111011110\n"
     "11111111111\n"},
    {50,
     "1010101010101\n"
     "1110100110010\n"
     "1100101011011\n"
     "1101110010100\n"
     "1110111010101\n"
     "1011000011000\n"
     "1111010011011\n"
     "1001001111100\n"
     "1101011110011\n"
     "1011111010100\n"
     "1100100111101\n"
     "1001101101110\n"
     "1111111111111\n"},
    {80,
     "101010101010101\n"
     "110011011010010\n"
     "101011110001111\n"
     "101101101000100\n"
     "101001110001111\n"
     "111101001111100\n"
     "100101110001111\n"
     "111110001010000\n"
     "101011010111011\n"
     "100110100100000\n"
     "101000001010011\n"
     "110100101011010\n"
     "110110111000111\n"
     "100000101010110\n"
     "111111111111111\n"},
    {100,
     "10101010101010101\n"
     "11100111101000110\n"
     "10010001101001001\n"
     "11110001011000100\n"
     "11101000000100001\n"
     "10110111100011010\n"
     "11101000111001111\n"
     "11101110010100000\n"
     "11000000010101101\n"
     "10100010001110110\n"
     "11111011111001001\n"
     "10010110100011100\n"
     "10111010100011011\n"
     "11110000111100100\n"
     "10010100001111111\n"
     "10011100100101110\n"
     "11111111111111111\n"},
    {140,
     "101010101010101010101\n"
     "110000110011111110010\n"
     "100000100100011010101\n"
     "100000110011100001110\n"
     "101101010110101111111\n"
     "100001110001100100000\n"
     "101111010000000011111\n"
     "101011001111111110010\n"
     "111000001100100110101\n"
     "100011011010111011010\n"
     "110010101100101101011\n"
     "111001111101100111110\n"
     "110001101011010001101\n"
     "110010010100101000100\n"
     "110101101000110110011\n"
     "101110011010000100110\n"
     "110101100001010001001\n"
     "100111111101100010010\n"
     "111100000100001110001\n"
     "101111110000111110010\n"
     "111111111111111111111\n"},
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
