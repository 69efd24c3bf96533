#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "barcodes/frame/GraphicHelper.h"

/// What the sketch operations paint with. Positions and sizes are pixels.
namespace Scripting {

/// Dots to whole pixels.
class SketchScale {
public:
    SketchScale(Dpi dpi, unsigned long designResolution)
        : scale_(designResolution ? static_cast<double>(dpi.Value()) / static_cast<double>(designResolution) : 1) {}

    std::uint64_t operator()(std::uint64_t dots) const;

private:
    double scale_;
};

using BitmapRow = std::span<std::uint8_t>;

/// An all-white bitmap. Throws std::length_error past the largest size.
SketchedBitmap MakeBitmap(std::uint64_t width, std::uint64_t height);
BitmapRow RowAt(SketchedBitmap& bitmap, std::size_t y);
/// Sets the pixels from `begin` up to `end` of a row: one mask for the first byte, one for the last, 0xFF between.
void PaintRun(BitmapRow row, std::uint64_t begin, std::uint64_t end);
/// Paints the black blocks, from pixel `x` on.
void PaintBlocks(BitmapRow row, std::vector<Barcode::Model::Block> const& blocks, std::uint64_t narrow,
                 std::uint64_t wide, std::uint64_t x = 0);
/// Paints rows of cells of equal width, as a stream of bits: which of them are dark cannot be foreseen, so that a step
/// for each run would mostly be one too many or too few for the processor.
class CellPainter {
public:
    /// Of cells as wide as `pixels`.
    explicit CellPainter(std::uint64_t pixels);

    /// Paints a white row; what lies beyond it is left out.
    void Paint(BitmapRow row, std::vector<bool> const& cells) const;

private:
    static constexpr std::size_t Group = 4;          ///< cells that are painted at once
    static constexpr std::uint64_t MostPixels = 16;  ///< of a cell in a group

    void PaintGroups(BitmapRow row, std::vector<bool> const& cells) const;
    void PaintRuns(BitmapRow row, std::vector<bool> const& cells) const;

    std::uint64_t pixels_;
    std::array<std::uint64_t, 1 << Group> groups_{};  ///< the pixels of each group, in the lowest bits
};

/// Copies row `first` over the `count` - 1 rows below it.
void RepeatRow(SketchedBitmap& bitmap, std::size_t first, std::size_t count);

}  // namespace Scripting
