#pragma once

#include <cstdint>
#include <span>

namespace PrintEngine::Pages {

/// Lengths in bits of the codes that write each symbol as often as `counts` says in as few bits as prefix codes can
/// (Huffman), none longer than `mostBits`, which is enough to number all symbols. 0 stands for an unused symbol. The
/// code is complete (RFC 1951, 3.2.7): where fewer than two symbols are counted, others get codes too. At most 288
/// symbols.
void MakeCodeLengths(std::span<std::uint32_t const> counts, int mostBits, std::span<std::uint8_t> lengths);

/// The canonical codes of these lengths (RFC 1951, 3.2.2), their first bit lowest, as a stream takes them.
void MakeCodes(std::span<std::uint8_t const> lengths, std::span<std::uint16_t> codes);

}  // namespace PrintEngine::Pages
