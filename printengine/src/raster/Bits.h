#pragma once

#include <bit>
#include <cstdint>

namespace PrintEngine::Drawing {

/// Turns a word between the machine's byte order and that of packed rows, whose first byte is the leftmost.
constexpr std::uint64_t BigEndian(std::uint64_t word) {
    if constexpr (std::endian::native == std::endian::little) return __builtin_bswap64(word);
    return word;
}

/// The 64 bits in opposite order.
constexpr std::uint64_t Reversed(std::uint64_t word) {
    word = ((word >> 1) & 0x5555555555555555) | ((word & 0x5555555555555555) << 1);
    word = ((word >> 2) & 0x3333333333333333) | ((word & 0x3333333333333333) << 2);
    word = ((word >> 4) & 0x0F0F0F0F0F0F0F0F) | ((word & 0x0F0F0F0F0F0F0F0F) << 4);
    return __builtin_bswap64(word);
}

/// Swaps rows and columns of 64 x 64 bits, of which the most significant bit of word 0 is the upper left.
constexpr void Transpose(std::uint64_t (&block)[64]) {
    std::uint64_t mask = 0x00000000FFFFFFFF;
    for (int step = 32; step != 0; step >>= 1, mask ^= mask << step) {
        for (int i = 0; i < 64; i = ((i | step) + 1) & ~step) {
            std::uint64_t const swapped = (block[i] ^ (block[i | step] >> step)) & mask;
            block[i] ^= swapped;
            block[i | step] ^= swapped << step;
        }
    }
}

}  // namespace PrintEngine::Drawing
