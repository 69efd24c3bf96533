#include "barcodes/UndrawnBarcodeHandler.h"

#include "foundation/Log.h"
#include "frontend/context/Setting.h"
#include "frontend/context/ZplContextKeys.h"

void ZplCore::StoreUndrawnBarcode(Context& current, ContextProcessor& processor, std::string_view symbology,
                                  bool& isReported) {
    ZplContextKeys::RenderFunction const report = [symbology, &isReported](ContextProcessor&) {
        if (!isReported) Log::Report(LogTopic::NotDrawn, std::string(symbology) + " is not drawn");
        isReported = true;
    };
    StoreSetting(current, processor, ZplContextKeys::FieldRenderFunction, report);
}
