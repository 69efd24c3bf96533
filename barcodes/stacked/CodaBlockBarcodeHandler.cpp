#include "barcodes/stacked/StackedBarcodeHandlers.h"

#include <algorithm>

#include "barcodes/frame/BarcodeArithmetic.h"
#include "barcodes/frame/BarcodeError.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "barcodes/frame/SymbolFrame.h"
#include "barcodes/stacked/CodaBlockEncoders.h"
#include "barcodes/stacked/StackedSketch.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ZplParse.h"

namespace {

using namespace Barcode::Encoder;
using namespace ZplCore;
using Barcode::Model::StackedBarcodeModel;

struct CodaBlockOptions {
    std::optional<unsigned> rowHeight;  ///< modules
    bool withCheck;
    CodaBlockLayout layout;
    char mode;
};

Scripting::SketchedBitmap Sketch(ContextProcessor const& processor, StackedBarcodeModel const& model,
                                 CodaBlockOptions const& options) {
    using namespace Scripting::GraphicHelper;
    unsigned const module = processor.at(ZplContextKeys::BarcodeModuleWidth);
    // Without a row height the symbol is as tall as the barcodes of its label, the lines between its rows included.
    unsigned const height = processor.at(ZplContextKeys::BarcodeHeight);
    unsigned const rows = model.GetRows();
    unsigned const lines = std::min(height, (rows + 1) * module);
    unsigned const rowHeight = options.rowHeight ? *options.rowHeight * module : (height - lines) / rows;
    auto const [printer, design] = SketchResolution::Of(processor);
    if (options.mode != 'A') return SketchCodaBlockFEBarcode(model, rowHeight, module, printer, design);
    unsigned const wide = ComputeWideBarWidth(module, processor.at(ZplContextKeys::BarcodeRatio));
    return SketchCodaBlockABarcode(model, module, wide, rowHeight, printer, design);
}

void RenderCodaBlock(ContextProcessor& processor, CodaBlockOptions const& options) {
    if (!processor.GetGraphicContext()) return;
    bool const isA = options.mode == 'A';
    std::string const data =
        isA ? ConvertToUpper(processor.at(ZplContextKeys::FieldData)) : processor.at(ZplContextKeys::FieldData);
    auto status =
        isA ? CodaBlockAEncoder::Validate(data, options.layout) : CodaBlockFEncoder::Validate(data, options.layout);
    StackedBarcodeModel model(0, 0);
    if (status == ValidationStatus::Valid) {
        model = isA ? CodaBlockAEncoder::Encode(data, options.layout, options.withCheck)
                    : CodaBlockFEncoder::Encode(data, options.layout, options.mode == 'E');
        if (model.GetRows() == 0) status = ValidationStatus::TooLong;
    }
    if (auto const message = GetBarcodeErrorMessage(status)) return HandleBarcodeError(processor, *message, false);
    auto const symbol = Sketch(processor, model, options);
    RenderSimpleBarcode(processor, *symbol.rows, symbol.logicalWidth, symbol.logicalHeight, symbol.bitmapWidth);
}

/// `^BB`: CODABLOCK. Row height in modules, security, characters in a row, rows, mode A, E or F.
class CodaBlockBarcodeHandler : public HandlerFor<CommandId("BB")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreBarcodeOrientation(current, command, processor);
        CodaBlockOptions options;
        constexpr unsigned LeastRow = 2;
        constexpr unsigned MostRow = 32000;  // modules
        if (auto const height = ZplParse<unsigned>(command, 1))
            options.rowHeight = std::clamp(*height, LeastRow, MostRow);
        options.withCheck = ParseFlag(command, 2, true);
        char const mode = ParseLetter(command, 5, 'F');
        options.mode = mode == 'A' || mode == 'E' ? mode : 'F';
        unsigned const fewest = options.mode == 'A' ? 2 : 4;
        options.layout.columns = ZplParse<unsigned>(command, 3)
                                     .Where([](unsigned n) { return n >= 2 && n <= 62; })
                                     .Map([=](unsigned n) { return std::max(n, fewest); })
                                     .ValueOr(0);
        unsigned const most = options.mode == 'A' ? 22 : 44;
        options.layout.rows =
            ZplParse<unsigned>(command, 4).Where([=](unsigned n) { return n >= 1 && n <= most; }).ValueOr(0);
        return StoreBarcodeRender(
            current, processor, [=](ContextProcessor& at) { RenderCodaBlock(at, options); }, "CODABLOCK",
            [=](ContextProcessor const& at, FieldNotes& notes) {
                notes.Add("mode", options.mode);
                notes.Add("module", at.at(ZplContextKeys::BarcodeModuleWidth), "dots");
                if (options.rowHeight) {
                    notes.Add("row height", *options.rowHeight, "modules");
                } else {
                    notes.Add("height", at.at(ZplContextKeys::BarcodeHeight), "dots");
                }
            });
    }
};

}  // namespace

void AddCodaBlockBarcodeHandler(CommandHandlerPool& pool) { pool.AddToCache<CodaBlockBarcodeHandler>(); }
