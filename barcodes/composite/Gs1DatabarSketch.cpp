#include "barcodes/composite/Gs1DatabarSketch.h"

#include <algorithm>

#include "barcodes/frame/BitmapPainter.h"

namespace Scripting {

SketchedBitmap GraphicHelper::SketchGS1Barcode(Barcode::Model::GS1BarcodeModel const& model, unsigned module,
                                               unsigned moduleHeight, unsigned separatorHeight, unsigned barHeight,
                                               unsigned componentRowHeight, Dpi dpi, unsigned long designResolution) {
    using Height = Barcode::Model::GS1BarcodeModel::Height;
    SketchScale const toPixels(dpi, designResolution);
    auto const heightOf = [&](auto const& fragment, auto const& scale) -> std::uint64_t {
        switch (fragment.height) {
            case Height::Separator: return scale(separatorHeight);
            case Height::Bars: return scale(barHeight);
            case Height::Component: return scale(componentRowHeight);
            case Height::Modules: break;
        }
        return fragment.modules * scale(moduleHeight);
    };
    auto const inDots = [](unsigned dots) { return std::uint64_t{dots}; };
    std::uint64_t width = 0, height = 0, logicalHeight = 0;
    for (auto const& fragment : model.GetFragments()) {
        width = std::max<std::uint64_t>(width, fragment.blocks.size());
        height += heightOf(fragment, toPixels);
        logicalHeight += heightOf(fragment, inDots);
    }
    auto bitmap = MakeBitmap(width * toPixels(module), height);
    bitmap.logicalWidth = width * module;
    bitmap.logicalHeight = logicalHeight;
    if (bitmap.rows->empty()) return bitmap;
    std::size_t y = 0;
    for (auto const& fragment : model.GetFragments()) {
        std::uint64_t const rows = heightOf(fragment, toPixels);
        if (rows == 0) continue;
        PaintBlocks(RowAt(bitmap, y), fragment.blocks, toPixels(module), 2 * toPixels(module));
        RepeatRow(bitmap, y, rows);
        y += rows;
    }
    return bitmap;
}

}  // namespace Scripting
