#include "barcodes/frame/GraphicHelper.h"

#include <algorithm>

#include "barcodes/frame/BitmapPainter.h"

namespace Scripting {

using Barcode::Model::Block;

std::uint64_t GraphicHelper::GetLinearRowWidth(std::vector<Block> const& blocks, std::uint64_t narrow,
                                               std::uint64_t wide) {
    auto const wideCount =
        static_cast<std::uint64_t>(std::count_if(blocks.begin(), blocks.end(), [](Block block) { return block.wide; }));
    return wideCount * wide + (blocks.size() - wideCount) * narrow;
}

SketchedBitmap GraphicHelper::SketchLinearBarcode(Barcode::Model::LinearBarcodeModel const& model, unsigned narrow,
                                                  unsigned wide, unsigned height, Dpi dpi,
                                                  unsigned long designResolution) {
    SketchScale const toPixels(dpi, designResolution);
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
    SketchScale const toPixels(dpi, designResolution);
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
    std::uint64_t const pixelCell = SketchScale(dpi, designResolution)(cellSize);
    auto bitmap = MakeBitmap(columns * pixelCell, cells.size() * pixelCell);
    bitmap.logicalWidth = columns * cellSize;
    bitmap.logicalHeight = cells.size() * std::uint64_t{cellSize};
    if (bitmap.rows->empty()) return bitmap;
    CellPainter const painter(pixelCell);
    for (std::size_t r = 0; r < cells.size(); ++r) {
        painter.Paint(RowAt(bitmap, r * pixelCell), cells[r]);
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
