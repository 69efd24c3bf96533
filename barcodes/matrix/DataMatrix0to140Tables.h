#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

/// ISO/IEC 16022:2000, annexes for the levels ECC 000 to 140.
namespace Barcode::Encoder {

/// Shift registers that take a group of input bits in each step; a mask's bit d taps the bit of d steps ago.
struct ConvolutionalCoder {
    unsigned inputs = 0;  ///< none: the stream is not coded
    unsigned outputs = 0;
    std::uint32_t masks[4][3] = {};  ///< of each output, for each input line
};

struct Level {
    unsigned ecc;
    std::string_view prefix;  ///< its identification, first bit first
    unsigned tailBits;        ///< zeros behind the data, which empty the registers
    ConvolutionalCoder coder;
};

/// Of a level that there is.
Level const& LevelOf(unsigned ecc);

/// Is exclusive-ored with the modules, from each byte's most significant bit on.
extern std::array<std::uint8_t, 277> const MasterRandomStream;

constexpr unsigned SmallestDataMatrix = 9;
constexpr unsigned LargestDataMatrix = 49;
constexpr std::size_t DataMatrixSizes = (LargestDataMatrix - SmallestDataMatrix) / 2 + 1;

/// Where a size stands in the tables.
constexpr std::size_t SizeIndex(unsigned size) { return (size - SmallestDataMatrix) / 2; }

/// The data modules of each size, (size - 2)^2.
constexpr std::array<std::size_t, DataMatrixSizes> MaxBitsPerSize = [] {
    std::array<std::size_t, DataMatrixSizes> bits{};
    for (std::size_t i = 0; i < bits.size(); ++i) bits[i] = (7 + 2 * i) * (7 + 2 * i);
    return bits;
}();

/// The placement grid of each size: the index of the bit that each data module shows, row by row.
std::array<std::vector<std::uint16_t>, DataMatrixSizes> const& MPGTables();

}  // namespace Barcode::Encoder
