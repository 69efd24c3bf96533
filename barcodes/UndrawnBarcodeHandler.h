#pragma once

#include <string_view>

#include "barcodes/BarcodeParameters.h"
#include "frontend/handlers/CommandHandler.h"

namespace ZplCore {

/// Stores a render function that draws nothing. `isReported` belongs to the handler: a symbology is reported once, at
/// the first field that is drawn.
void StoreUndrawnBarcode(Context& current, ContextProcessor& processor, std::string_view symbology, bool& isReported);

/// A position that no command has: the symbology takes no height in dots.
inline constexpr std::size_t NoHeight = 0;

/// A symbology whose orientation and height are kept, and which is not drawn.
template <std::uint64_t Id, std::size_t HeightIndex = NoHeight>
class UndrawnBarcodeHandler : public HandlerFor<Id> {
public:
    explicit UndrawnBarcodeHandler(std::string_view symbology) : symbology_(symbology) {}

    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreBarcodeOrientation(current, command, processor);
        if constexpr (HeightIndex != NoHeight) StoreBarcodeHeight(current, command, HeightIndex, processor);
        StoreUndrawnBarcode(current, processor, symbology_, isReported_);
        return true;
    }

private:
    std::string_view symbology_;
    bool isReported_ = false;
};

}  // namespace ZplCore
