#include "barcodes/composite/CompositeBarcodeHandlers.h"

#include <cmath>

#include "barcodes/composite/Tlc39Encoder.h"
#include "barcodes/composite/Tlc39Sketch.h"
#include "barcodes/frame/BarcodeArithmetic.h"
#include "barcodes/frame/BarcodeError.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "barcodes/frame/Memoizer.h"
#include "barcodes/frame/SymbolFrame.h"
#include "fields/placement/UnitConversion.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ZplParse.h"

namespace {

using namespace Barcode::Encoder;
using namespace ZplCore;

/// Sizes in dots, with the defaults of 200, 300 and 600 dpi.
struct Tlc39Options {
    unsigned narrow;
    unsigned height;
    unsigned module;
    unsigned rowHeight;
    float ratio = 2.0F;

    static Tlc39Options DefaultsAt(unsigned dpi) {
        if (dpi >= 600) return {4, 120, 4, 8};
        return dpi >= 300 ? Tlc39Options{2, 60, 2, 4} : Tlc39Options{2, 40, 2, 4};
    }
};

void RenderTlc39(ContextProcessor& processor, Tlc39Options const& options) {
    thread_local Memoizer<10, decltype(&Tlc39Encoder::Encode), std::string> encode(&Tlc39Encoder::Encode);
    if (!processor.GetGraphicContext()) return;
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    if (auto const message = GetBarcodeErrorMessage(Tlc39Encoder::Validate(data)))
        return HandleBarcodeError(processor, *message, false);
    auto const [printer, design] = SketchResolution::Of(processor);
    auto const symbol = Scripting::GraphicHelper::SketchTLC39Barcode(
        encode(data), options.narrow, ComputeWideBarWidth(options.narrow, options.ratio), options.height,
        options.module, options.rowHeight, printer, design);
    RenderSimpleBarcode(processor, *symbol.rows, symbol.logicalWidth, symbol.logicalHeight, symbol.bitmapWidth);
}

/// `^BT`: TLC39. Narrow bar, ratio and height of the Code 39, module and row height of the MicroPDF417.
class Tlc39BarcodeHandler : public HandlerFor<CommandId("BT")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreBarcodeOrientation(current, command, processor);
        auto options = Tlc39Options::DefaultsAt(DesignDpi(processor));
        auto const read = [&](std::size_t index, unsigned most, unsigned& dots) {
            dots = ZplParse<double>(command, index)
                       .Map(ToDotsScaled(processor))
                       .Where([=](unsigned sent) { return sent >= 1 && sent <= most; })
                       .ValueOr(dots);
        };
        read(1, 10, options.narrow);
        options.ratio = ZplParse<std::string>(command, 2).Map(ParseRatio).Where(CheckRatio).ValueOr(options.ratio);
        read(3, 9999, options.height);
        read(4, 10, options.module);
        read(5, 255, options.rowHeight);
        return StoreBarcodeRender(
            current, processor, [=](ContextProcessor& at) { RenderTlc39(at, options); }, "TLC39",
            [=](ContextProcessor const&, FieldNotes& notes) {
                notes.Add("module", options.narrow, "dots")
                    .Add("ratio", std::round(double{options.ratio} * 10) / 10)
                    .Add("height", options.height, "dots")
                    .Add("component module", options.module, "dots")
                    .Add("component row height", options.rowHeight, "dots");
            });
    }
};

}  // namespace

void AddTlc39BarcodeHandler(CommandHandlerPool& pool) { pool.AddToCache<Tlc39BarcodeHandler>(); }
