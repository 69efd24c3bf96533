#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Barcode::Encoder {

/// Darkens cells of a white row from `first` on, as the bits of `dark` say from the lowest on. Takes no branch that
/// depends on a cell, of which every other one would be foreseen wrong.
inline void DarkenCells(std::vector<bool>& row, std::size_t first, std::uint64_t dark) {
    for (; dark != 0; dark &= dark - 1) row[first + static_cast<std::size_t>(std::countr_zero(dark))] = true;
}

}  // namespace Barcode::Encoder
