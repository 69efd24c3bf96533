#include "barcodes/postal/PostalSketch.h"

#include <algorithm>

#include "barcodes/frame/BitmapPainter.h"

namespace Scripting {

namespace {

/// The pitch of postal bars, in dots and in pixels.
struct Pitch {
    std::uint64_t logical;
    std::uint64_t bar;
    std::uint64_t gap;

    Pitch(std::uint64_t spacing, SketchScale const& toPixels)
        : logical(spacing / 2 + 2 * spacing), bar(toPixels(spacing)), gap(toPixels(spacing + spacing / 2)) {}
};

}  // namespace

SketchedBitmap GraphicHelper::SketchUSPS2Barcode(Barcode::Model::USPS2StateBarcodeModel const& model,
                                                 unsigned long spacing, unsigned height, Dpi dpi,
                                                 unsigned long designResolution) {
    SketchScale const toPixels(dpi, designResolution);
    Pitch const pitch(spacing, toPixels);
    auto const& bars = model.GetBars();
    auto bitmap = MakeBitmap(bars.size() * (pitch.bar + pitch.gap), toPixels(height));
    bitmap.logicalWidth = bars.size() * pitch.logical;
    bitmap.logicalHeight = height;
    if (bitmap.rows->empty()) return bitmap;
    // Short bars are two fifths of the height, as far as it is made of whole steps of five dots.
    std::uint64_t const step = std::max<std::uint64_t>(toPixels(5), 1);
    std::uint64_t const wholeSteps = bitmap.bitmapHeight / step * step;
    auto const shortTop =
        static_cast<std::uint64_t>(static_cast<double>(bitmap.bitmapHeight) - static_cast<double>(wholeSteps) * 0.4);
    for (std::size_t i = 0; i < bars.size(); ++i) {
        std::uint64_t const x = i * (pitch.bar + pitch.gap);
        if (bars[i]) PaintRun(RowAt(bitmap, 0), x, x + pitch.bar);
        if (shortTop < bitmap.bitmapHeight) PaintRun(RowAt(bitmap, shortTop), x, x + pitch.bar);
    }
    RepeatRow(bitmap, 0, shortTop);
    if (shortTop < bitmap.bitmapHeight) RepeatRow(bitmap, shortTop, bitmap.bitmapHeight - shortTop);
    return bitmap;
}

SketchedBitmap GraphicHelper::SketchIntelligentMailBarcode(Barcode::Model::IntelligentMailBarcodeModel const& model,
                                                           unsigned long spacing, unsigned height, Dpi dpi,
                                                           unsigned long designResolution) {
    SketchScale const toPixels(dpi, designResolution);
    Pitch const pitch(spacing, toPixels);
    std::uint64_t const third = toPixels(height / 3);
    auto const& bars = model.GetBars();
    auto bitmap = MakeBitmap(bars.size() * (pitch.bar + pitch.gap), 3 * third);
    bitmap.logicalWidth = bars.size() * pitch.logical;
    bitmap.logicalHeight = height;
    if (bitmap.rows->empty()) return bitmap;
    for (std::size_t i = 0; i < bars.size(); ++i) {
        std::uint64_t const x = i * (pitch.bar + pitch.gap);
        if (bars[i].ascender) PaintRun(RowAt(bitmap, 0), x, x + pitch.bar);
        PaintRun(RowAt(bitmap, third), x, x + pitch.bar);
        if (bars[i].descender) PaintRun(RowAt(bitmap, 2 * third), x, x + pitch.bar);
    }
    for (std::uint64_t const top : {std::uint64_t{0}, third, 2 * third}) RepeatRow(bitmap, top, third);
    return bitmap;
}

}  // namespace Scripting
