#include "barcodes/RowSymbols.h"

#include <algorithm>

#include "Barcode/Encoder/ModuleEncoder.h"
#include "barcodes/BitmapPainter.h"

namespace Barcode::Encoder {

namespace {

Model::StackedBarcodeModel ToStacked(ModuleRequest const& request) {
    auto const rows = EncodeModules(request).rows;
    Model::StackedBarcodeModel model(static_cast<unsigned>(rows.size()),
                                     rows.empty() ? 0 : static_cast<unsigned>(rows[0].size()));
    for (std::size_t r = 0; r < rows.size(); ++r) {
        for (bool const dark : rows[r]) model.GetBlocks()[r].emplace_back(false, dark);
    }
    return model;
}

}  // namespace

Model::StackedBarcodeModel Code49Encoder::Encode(std::string const& data) {
    ModuleRequest request;
    request.symbology = ModuleSymbology::Code49;
    request.data = data;
    return ToStacked(request);
}

Model::StackedBarcodeModel CodaBlockFEncoder::Encode(std::string const& data, unsigned columns, unsigned rows) {
    ModuleRequest request;
    request.symbology = ModuleSymbology::CodablockF;
    request.data = data;
    request.columns = columns;
    request.rows = columns == 0 && rows == 0 ? 1 : rows;
    return ToStacked(request);
}

}  // namespace Barcode::Encoder

namespace Scripting {

namespace {

/// Rows parted by lines one module high, with blank modules on both sides.
SketchedBitmap SketchParted(Barcode::Model::StackedBarcodeModel const& model, std::uint64_t rowPixels,
                            std::uint64_t pixelModule, std::uint64_t left, std::uint64_t right) {
    auto const& rows = model.GetBlocks();
    std::uint64_t const modules = rows.empty() ? 0 : GraphicHelper::GetLinearRowWidth(rows[0], 1, 2) + left + right;
    auto bitmap =
        MakeBitmap(modules * pixelModule, rows.empty() ? 0 : rows.size() * rowPixels + (rows.size() + 1) * pixelModule);
    if (bitmap.rows->empty() || pixelModule == 0) return bitmap;
    for (std::size_t r = 0; r <= rows.size(); ++r) {
        std::size_t const y = r * (rowPixels + pixelModule);
        PaintRun(RowAt(bitmap, y), 0, bitmap.bitmapWidth);
        RepeatRow(bitmap, y, pixelModule);
        if (r == rows.size() || rowPixels == 0) continue;
        PaintBlocks(RowAt(bitmap, y + pixelModule), rows[r], pixelModule, 2 * pixelModule, left * pixelModule);
        RepeatRow(bitmap, y + pixelModule, rowPixels);
    }
    return bitmap;
}

}  // namespace

SketchedBitmap GraphicHelper::SketchCode49Barcode(Barcode::Model::StackedBarcodeModel const& model, unsigned rowHeight,
                                                  unsigned module, Dpi dpi, unsigned long designResolution) {
    constexpr std::uint64_t LeftQuiet = 10, RightQuiet = 1;
    PixelScale const toPixels(dpi, designResolution);
    auto bitmap = SketchParted(model, toPixels(rowHeight), toPixels(module), LeftQuiet, RightQuiet);
    std::uint64_t const rows = model.GetRows();
    if (rows == 0) return bitmap;
    bitmap.logicalWidth = (GetLinearRowWidth(model.GetBlocks()[0], 1, 2) + LeftQuiet + RightQuiet) * module;
    bitmap.logicalHeight = module * (rows + 1) + rows * rowHeight;
    return bitmap;
}

SketchedBitmap GraphicHelper::SketchCodaBlockFEBarcode(Barcode::Model::StackedBarcodeModel const& model,
                                                       unsigned rowHeight, unsigned module, Dpi dpi,
                                                       unsigned long designResolution) {
    PixelScale const toPixels(dpi, designResolution);
    std::uint64_t const pixelModule = toPixels(module);
    auto bitmap = SketchParted(model, std::max(toPixels(rowHeight), 2 * pixelModule), pixelModule, 0, 0);
    std::uint64_t const rows = model.GetRows();
    if (rows == 0) return bitmap;
    bitmap.logicalWidth = GetLinearRowWidth(model.GetBlocks()[0], 1, 2) * module;
    bitmap.logicalHeight = module * (rows + 1) + rows * std::max<std::uint64_t>(rowHeight, 2 * std::uint64_t{module});
    return bitmap;
}

}  // namespace Scripting
