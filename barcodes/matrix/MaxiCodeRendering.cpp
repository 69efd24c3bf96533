#include "barcodes/matrix/MaxiCodeRendering.h"

#include "barcodes/frame/BarcodeError.h"
#include "barcodes/frame/Memoizer.h"
#include "barcodes/frame/SymbolFrame.h"
#include "barcodes/matrix/MaxiCodeEncoder.h"
#include "barcodes/matrix/MaxiCodeSketch.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

void RenderMaxiCode(ContextProcessor& processor, MaxiCodeOptions const& options) {
    thread_local Memoizer<10, decltype(&MaxiCodeEncoder::Encode), std::string, unsigned, unsigned, unsigned> encode(
        &MaxiCodeEncoder::Encode);
    if (!processor.GetGraphicContext()) return;
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    auto status = MaxiCodeEncoder::Validate(data, options.mode);
    auto const* model =
        status == BarcodeStatus::Valid ? &encode(data, options.mode, options.index, options.count) : nullptr;
    if (model != nullptr && model->GetModules().empty()) status = BarcodeStatus::TooLong;
    if (auto const message = GetBarcodeErrorMessage(status)) return HandleBarcodeError(processor, *message, false);
    auto const resolution = SketchResolution::Of(processor);
    auto const symbol = Scripting::GraphicHelper::SketchMaxiCodeBarcode(*model, resolution.printer, resolution.design);
    RenderSimpleBarcode(processor, *symbol.rows, symbol.logicalWidth, symbol.logicalHeight, symbol.bitmapWidth);
}

}  // namespace ZplCore
