#pragma once

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
/// Copies row `first` over the `count` - 1 rows below it.
void RepeatRow(SketchedBitmap& bitmap, std::size_t first, std::size_t count);

}  // namespace Scripting
