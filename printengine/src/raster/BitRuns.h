#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

namespace PrintEngine::Drawing {

/// Sets pixels [left, right) of a row of words; what lies beyond the row is left out.
inline void SetRun(std::span<std::uint64_t> row, std::size_t left, std::size_t right) {
    right = std::min(right, row.size() * 64);
    while (left < right) {
        std::size_t const bit = left % 64;
        std::size_t const count = std::min<std::size_t>(64 - bit, right - left);
        row[left / 64] |= (~std::uint64_t{0} << (64 - count)) >> bit;
        left += count;
    }
}

/// Calls `paint(left, right)` for runs of set pixels, which together are all of them. A run ends at a word's end.
template <typename Paint>
void ForRuns(std::span<std::uint64_t const> row, Paint paint) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        std::uint64_t rest = row[i];
        while (rest != 0) {
            auto const start = static_cast<std::size_t>(std::countl_zero(rest));
            auto const end = start + static_cast<std::size_t>(std::countl_one(rest << start));
            paint(i * 64 + start, i * 64 + end);
            rest = end < 64 ? rest & (~std::uint64_t{0} >> end) : 0;
        }
    }
}

}  // namespace PrintEngine::Drawing
