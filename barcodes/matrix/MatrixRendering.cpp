#include "barcodes/matrix/MatrixRendering.h"

#include "barcodes/frame/BarcodeError.h"
#include "barcodes/frame/GraphicHelper.h"
#include "barcodes/frame/SymbolFrame.h"

namespace ZplCore {

using Barcode::Model::MatrixBarcodeModel;

namespace {

void DrawMatrix(ContextProcessor& processor, MatrixBarcodeModel const& model, unsigned cellSize) {
    auto const resolution = SketchResolution::Of(processor);
    auto const symbol =
        Scripting::GraphicHelper::SketchMatrixBarcode(model, cellSize, resolution.printer, resolution.design);
    RenderSimpleBarcode(processor, *symbol.rows, symbol.logicalWidth, symbol.logicalHeight, symbol.bitmapWidth);
}

}  // namespace

void RenderMatrix(ContextProcessor& processor, BarcodeStatus status,
                  std::function<MatrixBarcodeModel const&()> const& encode, unsigned cellSize, bool forceError,
                  std::string_view reason) {
    if (!processor.GetGraphicContext()) return;
    MatrixBarcodeModel const* model = status == BarcodeStatus::Valid ? &encode() : nullptr;
    if (model != nullptr && model->GetCells().empty()) status = BarcodeStatus::TooLong;
    if (auto const message = GetBarcodeErrorMessage(status)) {
        HandleBarcodeError(processor, *message, forceError,
                           status == BarcodeStatus::InvalidCharacter ? reason : std::string_view());
        return;
    }
    DrawMatrix(processor, *model, cellSize);
}

}  // namespace ZplCore
