#include "barcodes/frame/BarcodeDefaultHandlers.h"

#include "barcodes/frame/BarcodeArithmetic.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "fields/placement/UnitConversion.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ParameterRange.h"
#include "frontend/stream/ZplParse.h"

namespace {

/// `^BY`: module width, ratio and height of the barcodes that follow, also on later labels.
class BarcodeFieldDefaultHandler : public HandlerFor<CommandId("BY")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        using namespace ZplCore;
        auto const toDots = ToDotsScaled(processor);
        // Deliberately not clamped to the widths that hosts are told to send.
        if (auto const width = ZplParse<double>(command, 0).Map(toDots))
            processor.set(ContextProcessor::SystemContext, ZplContextKeys::BarcodeModuleWidth, *width);
        auto const ratio = ZplParse<std::string>(command, 1).Map(ParseRatio);
        if (*ratio > 0 && !CheckRatio(*ratio)) ReportOutOfRange(command, 1, {2, 3}, std::nullopt);
        if (CheckRatio(*ratio)) processor.set(ContextProcessor::SystemContext, ZplContextKeys::BarcodeRatio, *ratio);
        if (auto const height = ZplParse<double>(command, 2).Map(toDots).Map(ClampBarcodeHeight))
            processor.set(ContextProcessor::SystemContext, ZplContextKeys::BarcodeHeight, *height);
        return true;
    }
};

/// `^CV`: whether refused barcode data are printed as an error. Off unless it says yes.
class BarcodeValidationHandler : public HandlerFor<CommandId("CV")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        processor.set(ContextProcessor::SystemContext, ZplContextKeys::EnableBarcodeValidation,
                      ZplCore::ParseFlag(command, 0, false));
        return true;
    }
};

}  // namespace

void AddBarcodeDefaultHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<BarcodeFieldDefaultHandler>();
    pool.AddToCache<BarcodeValidationHandler>();
}
