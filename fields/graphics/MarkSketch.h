#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace ZplCore {

/// A 1-bit picture of marks: rows of (width + 7) / 8 bytes, most significant bit left, a set bit is black.
struct MarkSketch {
    unsigned width = 0;   ///< dots
    unsigned height = 0;  ///< dots
    std::vector<std::uint8_t> rows;
};

/// The marks of a graphic symbol field side by side, each in a cell of `width` x `height` dots: A registered, B
/// copyright, C trade mark, D listed by an approval body (UL in a ring), E certified by another (SA in an open ring).
/// Other letters stand for nothing. Nothing if no mark is left, or all together pass the limit of a picture (reported).
std::optional<MarkSketch> SketchMarks(std::string_view letters, unsigned width, unsigned height);

}  // namespace ZplCore
