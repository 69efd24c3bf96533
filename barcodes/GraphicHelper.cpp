#include "barcodes/GraphicHelper.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <stdexcept>

namespace Scripting {

namespace {

using Barcode::Model::Block;
using Row = std::span<std::uint8_t>;

/// Dots to whole pixels.
class PixelScale {
public:
    PixelScale(Dpi dpi, unsigned long designResolution)
        : scale_(designResolution ? static_cast<double>(dpi.Value()) / static_cast<double>(designResolution) : 1) {}

    std::uint64_t operator()(std::uint64_t dots) const {
        return static_cast<std::uint64_t>(std::lround(static_cast<double>(dots) * scale_));
    }

private:
    double scale_;
};

/// An all-white bitmap of a size in pixels.
SketchedBitmap MakeBitmap(std::uint64_t width, std::uint64_t height) {
    std::uint64_t const stride = (width + 7) / 8;
    if (height != 0 && stride > GraphicHelper::MaximumBitmapBytes / height)
        throw std::length_error("cannot create std::vector larger than max_size()");
    SketchedBitmap bitmap;
    bitmap.bitmapWidth = width;
    bitmap.bitmapHeight = height;
    bitmap.rows = std::make_unique<std::vector<std::uint8_t>>(stride * height);
    return bitmap;
}

std::size_t Stride(SketchedBitmap const& bitmap) { return (bitmap.bitmapWidth + 7) / 8; }

Row RowAt(SketchedBitmap& bitmap, std::size_t y) {
    return Row(*bitmap.rows).subspan(y * Stride(bitmap), Stride(bitmap));
}

/// Sets the pixels from `begin` up to `end` of a row: one mask for the first byte, one for the last, 0xFF between.
void PaintRun(Row row, std::uint64_t begin, std::uint64_t end) {
    end = std::min<std::uint64_t>(end, row.size() * 8);
    if (begin >= end) return;
    std::size_t const firstByte = begin / 8;
    std::size_t const lastByte = (end - 1) / 8;
    auto const firstMask = static_cast<std::uint8_t>(0xFF >> begin % 8);
    auto const lastMask = static_cast<std::uint8_t>(0xFF << (7 - (end - 1) % 8));
    if (firstByte == lastByte) {
        row[firstByte] |= firstMask & lastMask;
        return;
    }
    row[firstByte] |= firstMask;
    std::fill(row.begin() + static_cast<std::ptrdiff_t>(firstByte) + 1,
              row.begin() + static_cast<std::ptrdiff_t>(lastByte), std::uint8_t{0xFF});
    row[lastByte] |= lastMask;
}

void PaintBlocks(Row row, std::vector<Block> const& blocks, std::uint64_t narrow, std::uint64_t wide) {
    std::uint64_t x = 0;
    for (Block const block : blocks) {
        std::uint64_t const width = block.wide ? wide : narrow;
        if (block.black) PaintRun(row, x, x + width);
        x += width;
    }
}

/// Copies row `first` over the `count` - 1 rows below it.
void RepeatRow(SketchedBitmap& bitmap, std::size_t first, std::size_t count) {
    Row const source = RowAt(bitmap, first);
    for (std::size_t y = 1; y < count; ++y) std::copy(source.begin(), source.end(), RowAt(bitmap, first + y).begin());
}

}  // namespace

std::uint64_t GraphicHelper::GetLinearRowWidth(std::vector<Block> const& blocks, std::uint64_t narrow,
                                               std::uint64_t wide) {
    auto const wideCount =
        static_cast<std::uint64_t>(std::count_if(blocks.begin(), blocks.end(), [](Block block) { return block.wide; }));
    return wideCount * wide + (blocks.size() - wideCount) * narrow;
}

SketchedBitmap GraphicHelper::SketchLinearBarcode(Barcode::Model::LinearBarcodeModel const& model, unsigned narrow,
                                                  unsigned wide, unsigned height, Dpi dpi,
                                                  unsigned long designResolution) {
    PixelScale const toPixels(dpi, designResolution);
    auto const& blocks = model.GetBlocks();
    auto bitmap = MakeBitmap(GetLinearRowWidth(blocks, toPixels(narrow), toPixels(wide)), toPixels(height));
    bitmap.logicalWidth = GetLinearRowWidth(blocks, narrow, wide);
    bitmap.logicalHeight = height;
    if (bitmap.rows->empty()) return bitmap;
    PaintBlocks(RowAt(bitmap, 0), blocks, toPixels(narrow), toPixels(wide));
    RepeatRow(bitmap, 0, bitmap.bitmapHeight);
    return bitmap;
}

SketchedBitmap GraphicHelper::SketchStackedBarcode(Barcode::Model::StackedBarcodeModel const& model, unsigned module,
                                                   unsigned rowHeight, Dpi dpi, unsigned long designResolution) {
    PixelScale const toPixels(dpi, designResolution);
    auto const& rows = model.GetBlocks();
    // Rows that are wider than the first are clipped.
    std::uint64_t const modules = rows.empty() ? 0 : GetLinearRowWidth(rows[0], 1, 2);
    std::uint64_t const pixelModule = toPixels(module);
    std::uint64_t const pixelHeight = toPixels(rowHeight);
    auto bitmap = MakeBitmap(modules * pixelModule, rows.size() * pixelHeight);
    bitmap.logicalWidth = modules * module;
    bitmap.logicalHeight = rows.size() * std::uint64_t{rowHeight};
    if (bitmap.rows->empty()) return bitmap;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        PaintBlocks(RowAt(bitmap, r * pixelHeight), rows[r], pixelModule, 2 * pixelModule);
        RepeatRow(bitmap, r * pixelHeight, pixelHeight);
    }
    return bitmap;
}

SketchedBitmap GraphicHelper::SketchMatrixBarcode(Barcode::Model::MatrixBarcodeModel const& model, unsigned cellSize,
                                                  Dpi dpi, unsigned long designResolution) {
    auto const& cells = model.GetCells();
    std::uint64_t const columns = cells.empty() ? 0 : cells[0].size();
    std::uint64_t const pixelCell = PixelScale(dpi, designResolution)(cellSize);
    auto bitmap = MakeBitmap(columns * pixelCell, cells.size() * pixelCell);
    bitmap.logicalWidth = columns * cellSize;
    bitmap.logicalHeight = cells.size() * std::uint64_t{cellSize};
    if (bitmap.rows->empty()) return bitmap;
    for (std::size_t r = 0; r < cells.size(); ++r) {
        Row const row = RowAt(bitmap, r * pixelCell);
        for (std::size_t c = 0; c < cells[r].size(); ++c) {
            if (cells[r][c]) PaintRun(row, c * pixelCell, (c + 1) * pixelCell);
        }
        RepeatRow(bitmap, r * pixelCell, pixelCell);
    }
    return bitmap;
}

void Detail::ClearRectangleInBitmap(std::vector<std::uint8_t>& bitmap, unsigned long x, unsigned long y,
                                    unsigned long width, unsigned long height, unsigned long stride) {
    if (width == 0 || height == 0 || stride == 0 || x >= stride * 8) return;
    unsigned long const end = x + std::min(width, stride * 8 - x);
    unsigned long const rows = bitmap.size() / stride;
    unsigned long const bottom = y >= rows ? y : y + std::min(height, rows - y);
    std::vector<std::uint8_t> mask(stride);
    PaintRun(mask, x, end);
    for (; y < bottom; ++y) {
        for (unsigned long i = x / 8; i <= (end - 1) / 8; ++i)
            bitmap[y * stride + i] &= static_cast<std::uint8_t>(~mask[i]);
    }
}

}  // namespace Scripting
