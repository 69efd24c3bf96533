#include "barcodes/composite/CompositeBarcodeHandlers.h"

#include <algorithm>

#include "barcodes/composite/Gs1DatabarEncoder.h"
#include "barcodes/composite/Gs1DatabarSketch.h"
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

struct Gs1Options {
    Gs1Type type;
    unsigned module;           ///< dots
    unsigned separatorHeight;  ///< modules
    unsigned barHeight;        ///< dots
    unsigned segments;
};

void RenderGs1(ContextProcessor& processor, Gs1Options const& options) {
    thread_local Memoizer<10, decltype(&EncodeGs1), std::string, Gs1Type, unsigned> encode(&EncodeGs1);
    if (!processor.GetGraphicContext()) return;
    auto const& symbol = encode(processor.at(ZplContextKeys::FieldData), options.type, options.segments);
    if (auto const message = GetBarcodeErrorMessage(symbol.status))
        return HandleBarcodeError(processor, *message, false, symbol.reason);
    if (!symbol.shortened.empty()) ReportRepairedBarcode(processor, symbol.shortened, BarcodeStatus::TooLong);
    auto const resolution = SketchResolution::Of(processor);
    // ISO/IEC 24723: rows of CC-A and CC-B are two modules tall, those of CC-C three.
    unsigned const componentRow = (options.type == Gs1Type::Gs1128WithCcC ? 3 : 2) * options.module;
    auto const sketch = Scripting::GraphicHelper::SketchGS1Barcode(
        symbol.model, options.module, options.module, options.separatorHeight * options.module, options.barHeight,
        componentRow, resolution.printer, resolution.design);
    RenderSimpleBarcode(processor, *sketch.rows, sketch.logicalWidth, sketch.logicalHeight, sketch.bitmapWidth);
}

std::string_view NameOf(Gs1Type type) {
    switch (type) {
        case Gs1Type::Omnidirectional: return "GS1 DataBar Omnidirectional";
        case Gs1Type::Truncated: return "GS1 DataBar Truncated";
        case Gs1Type::Stacked: return "GS1 DataBar Stacked";
        case Gs1Type::StackedOmnidirectional: return "GS1 DataBar Stacked Omnidirectional";
        case Gs1Type::Limited: return "GS1 DataBar Limited";
        case Gs1Type::Expanded: return "GS1 DataBar Expanded";
        case Gs1Type::UPCA: return "UPC-A composite";
        case Gs1Type::UPCE: return "UPC-E composite";
        case Gs1Type::EAN13: return "EAN-13 composite";
        case Gs1Type::EAN8: return "EAN-8 composite";
        case Gs1Type::Gs1128WithCcAb: return "GS1-128 with CC-A or CC-B";
        case Gs1Type::Gs1128WithCcC: return "GS1-128 with CC-C";
    }
    return "GS1 symbol of no known type";
}

/// `^BR`: GS1 DataBar and composite symbols. Type 1 to 12, magnification, height of separators, height of linear bars,
/// segments in a row.
class Gs1DatabarBarcodeHandler : public HandlerFor<CommandId("BR")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned SingleRow = 22;
        StoreBarcodeOrientation(current, command, processor);
        auto const toDots = ToDotsScaled(processor);
        // Two, three and six dots by the density of the head; the default of the other symbols of cells is the same.
        unsigned const byDensity =
            std::max(2U, MagnificationDefaultDPIConversion(Scripting::Dpi(DesignDpi(processor))));
        Gs1Options options;
        options.type = static_cast<Gs1Type>(ZplParse<unsigned>(command, 1).ValueOr(1));
        options.module = ZplParse<double>(command, 2)
                             .Map(toDots)
                             .Where([](unsigned dots) { return dots >= 1 && dots <= 100; })
                             .ValueOr(byDensity);
        options.separatorHeight = ZplParse<char>(command, 3).ValueOr('1') == '2' ? 2 : 1;
        options.barHeight = ZplParse<double>(command, 4).Map(toDots).Map(ClampBarcodeHeight).ValueOr(25);
        options.segments = ZplParse<unsigned>(command, 5)
                               .Where([](unsigned n) { return n >= 2 && n <= SingleRow && n % 2 == 0; })
                               .ValueOr(SingleRow);
        return StoreBarcodeRender(
            current, processor, [=](ContextProcessor& at) { RenderGs1(at, options); }, NameOf(options.type),
            [=](ContextProcessor const&, FieldNotes& notes) {
                notes.Add("module", options.module, "dots")
                    .Add("height", options.barHeight, "dots")
                    .Add("separator height", options.separatorHeight, "modules");
                if (options.type == Gs1Type::Expanded) notes.Add("segments", options.segments);
            });
    }
};

}  // namespace

void AddGs1DatabarBarcodeHandler(CommandHandlerPool& pool) { pool.AddToCache<Gs1DatabarBarcodeHandler>(); }
