#include "barcodes/composite/Tlc39Sketch.h"

#include <algorithm>

#include "barcodes/frame/BitmapPainter.h"

namespace Scripting {

namespace {

/// Sizes of one symbol, in dots or in pixels.
struct Tlc39Sizes {
    std::uint64_t code39;  ///< widths
    std::uint64_t stacked;
    std::uint64_t stackedHeight;
    std::uint64_t blank;   ///< below the MicroPDF417
    std::uint64_t linker;  ///< height of the bars under that

    std::uint64_t Width() const { return std::max(code39, stacked); }
    std::uint64_t Code39Top() const { return stackedHeight + blank + linker; }

    template <typename Scale>
    static Tlc39Sizes Of(Barcode::Model::Tlc39BarcodeModel const& model, Scale const& scaled, unsigned narrow,
                         unsigned wide, unsigned module, unsigned rowHeight) {
        std::uint64_t const m = scaled(module);
        auto const& rows = model.GetMicroPDF417().GetBlocks();
        Tlc39Sizes sizes{};
        sizes.code39 = GraphicHelper::GetLinearRowWidth(model.GetCode39().GetBlocks(), scaled(narrow), scaled(wide));
        if (rows.empty()) return sizes;
        sizes.stacked = GraphicHelper::GetLinearRowWidth(rows[0], m, 2 * m);
        sizes.stackedHeight = rows.size() * scaled(rowHeight);
        sizes.blank = m;
        sizes.linker = 3 * m;
        return sizes;
    }
};

void PaintRow(SketchedBitmap& bitmap, std::vector<Barcode::Model::Block> const& blocks, std::uint64_t narrow,
              std::uint64_t wide, std::uint64_t width, std::uint64_t top, std::uint64_t height) {
    if (height == 0) return;
    PaintBlocks(RowAt(bitmap, top), blocks, narrow, wide, (bitmap.bitmapWidth - width) / 2);
    RepeatRow(bitmap, top, height);
}

}  // namespace

SketchedBitmap GraphicHelper::SketchTLC39Barcode(Barcode::Model::Tlc39BarcodeModel const& model, unsigned narrow,
                                                 unsigned wide, unsigned height, unsigned module, unsigned rowHeight,
                                                 Dpi dpi, unsigned long designResolution) {
    SketchScale const toPixels(dpi, designResolution);
    auto const inDots = [](unsigned dots) { return std::uint64_t{dots}; };
    auto const dots = Tlc39Sizes::Of(model, inDots, narrow, wide, module, rowHeight);
    auto const pixels = Tlc39Sizes::Of(model, toPixels, narrow, wide, module, rowHeight);
    auto bitmap = MakeBitmap(pixels.Width(), pixels.Code39Top() + toPixels(height));
    bitmap.logicalWidth = dots.Width();
    bitmap.logicalHeight = dots.Code39Top() + height;
    if (bitmap.rows->empty()) return bitmap;
    std::uint64_t const n = toPixels(narrow), w = toPixels(wide), m = toPixels(module), row = toPixels(rowHeight);
    auto const& stacked = model.GetMicroPDF417().GetBlocks();
    for (std::size_t r = 0; r < stacked.size(); ++r)
        PaintRow(bitmap, stacked[r], m, 2 * m, pixels.stacked, r * row, row);
    PaintRow(bitmap, model.GetLinkerBars(), n, w, pixels.code39, pixels.stackedHeight + pixels.blank, pixels.linker);
    PaintRow(bitmap, model.GetCode39().GetBlocks(), n, w, pixels.code39, pixels.Code39Top(), toPixels(height));
    return bitmap;
}

}  // namespace Scripting
