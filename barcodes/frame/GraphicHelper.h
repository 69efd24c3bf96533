#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Dpi.h"

namespace Scripting {

/// A symbol as a 1-bit picture. Rows are packed most significant bit first, (bitmapWidth + 7) / 8 bytes each, a set bit
/// is black.
struct SketchedBitmap {
    unsigned long logicalWidth = 0;   ///< dots of the design resolution
    unsigned long logicalHeight = 0;  ///< dots of the design resolution
    unsigned long bitmapWidth = 0;    ///< pixels of the target
    unsigned long bitmapHeight = 0;   ///< pixels of the target
    std::unique_ptr<std::vector<std::uint8_t>> rows;
};

/// Draws the models of symbols. Sizes are dots of the design resolution, `designResolution` is its dpi and `dpi` that
/// of the target. Each size is scaled to whole pixels once, so that a symbol keeps its proportions exactly; logical
/// sizes are sums of the unscaled dots. No quiet zone is added. A bitmap past 64 MiB throws std::length_error.
namespace GraphicHelper {

/// The largest bitmap of a symbol, in bytes.
inline constexpr std::size_t MaximumBitmapBytes = 64UL * 1024 * 1024;

/// Sum of the widths of a row of bars and spaces.
std::uint64_t GetLinearRowWidth(std::vector<Barcode::Model::Block> const& blocks, std::uint64_t narrow,
                                std::uint64_t wide);

SketchedBitmap SketchLinearBarcode(Barcode::Model::LinearBarcodeModel const& model, unsigned narrow, unsigned wide,
                                   unsigned height, Dpi dpi, unsigned long designResolution);
/// Wide blocks are two modules.
SketchedBitmap SketchStackedBarcode(Barcode::Model::StackedBarcodeModel const& model, unsigned module,
                                    unsigned rowHeight, Dpi dpi, unsigned long designResolution);
SketchedBitmap SketchMatrixBarcode(Barcode::Model::MatrixBarcodeModel const& model, unsigned cellSize, Dpi dpi,
                                   unsigned long designResolution);

}  // namespace GraphicHelper

namespace Detail {

/// Clears the pixels of a rectangle, clipped to the bitmap; `stride` is the length of a row in bytes.
void ClearRectangleInBitmap(std::vector<std::uint8_t>& bitmap, unsigned long x, unsigned long y, unsigned long width,
                            unsigned long height, unsigned long stride);

}  // namespace Detail

}  // namespace Scripting
