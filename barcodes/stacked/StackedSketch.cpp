#include "barcodes/stacked/StackedSketch.h"

#include <algorithm>

#include "barcodes/frame/BitmapPainter.h"

namespace Scripting {

namespace {

/// The elements of rows that lines part, and the blank on both sides, in pixels.
struct PartedRows {
    std::uint64_t narrow;
    std::uint64_t wide;
    std::uint64_t height;
    std::uint64_t left = 0;
    std::uint64_t right = 0;
};

/// Rows parted by lines one narrow element high, over their whole width.
SketchedBitmap SketchParted(Barcode::Model::StackedBarcodeModel const& model, PartedRows const& pixels) {
    auto const& rows = model.GetBlocks();
    std::uint64_t const width = rows.empty() ? 0
                                             : GraphicHelper::GetLinearRowWidth(rows[0], pixels.narrow, pixels.wide) +
                                                   pixels.left + pixels.right;
    auto bitmap = MakeBitmap(width, rows.empty() ? 0 : rows.size() * pixels.height + (rows.size() + 1) * pixels.narrow);
    if (bitmap.rows->empty() || pixels.narrow == 0) return bitmap;
    for (std::size_t r = 0; r <= rows.size(); ++r) {
        std::size_t const y = r * (pixels.height + pixels.narrow);
        PaintRun(RowAt(bitmap, y), 0, bitmap.bitmapWidth);
        RepeatRow(bitmap, y, pixels.narrow);
        if (r == rows.size() || pixels.height == 0) continue;
        PaintBlocks(RowAt(bitmap, y + pixels.narrow), rows[r], pixels.narrow, pixels.wide, pixels.left);
        RepeatRow(bitmap, y + pixels.narrow, pixels.height);
    }
    return bitmap;
}

}  // namespace

SketchedBitmap GraphicHelper::SketchCode49Barcode(Barcode::Model::StackedBarcodeModel const& model, unsigned rowHeight,
                                                  unsigned module, Dpi dpi, unsigned long designResolution) {
    constexpr std::uint64_t LeftQuiet = 10, RightQuiet = 1;  // modules
    SketchScale const toPixels(dpi, designResolution);
    std::uint64_t const m = toPixels(module);
    auto bitmap = SketchParted(model, {m, 2 * m, toPixels(rowHeight), LeftQuiet * m, RightQuiet * m});
    std::uint64_t const rows = model.GetRows();
    if (rows == 0) return bitmap;
    bitmap.logicalWidth = (GetLinearRowWidth(model.GetBlocks()[0], 1, 2) + LeftQuiet + RightQuiet) * module;
    bitmap.logicalHeight = module * (rows + 1) + rows * rowHeight;
    return bitmap;
}

SketchedBitmap GraphicHelper::SketchCodaBlockABarcode(Barcode::Model::StackedBarcodeModel const& model, unsigned narrow,
                                                      unsigned wide, unsigned rowHeight, Dpi dpi,
                                                      unsigned long designResolution) {
    SketchScale const toPixels(dpi, designResolution);
    std::uint64_t const n = toPixels(narrow);
    auto bitmap = SketchParted(model, {n, toPixels(wide), std::max(toPixels(rowHeight), 2 * n)});
    std::uint64_t const rows = model.GetRows();
    if (rows == 0) return bitmap;
    bitmap.logicalWidth = GetLinearRowWidth(model.GetBlocks()[0], narrow, wide);
    bitmap.logicalHeight = narrow * (rows + 1) + rows * std::max<std::uint64_t>(rowHeight, 2 * std::uint64_t{narrow});
    return bitmap;
}

SketchedBitmap GraphicHelper::SketchCodaBlockFEBarcode(Barcode::Model::StackedBarcodeModel const& model,
                                                       unsigned rowHeight, unsigned module, Dpi dpi,
                                                       unsigned long designResolution) {
    return SketchCodaBlockABarcode(model, module, 2 * module, rowHeight, dpi, designResolution);
}

}  // namespace Scripting
