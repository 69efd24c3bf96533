#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

/// `^BY`: module width, ratio and height of the barcodes that follow, also on later labels.
class BarcodeFieldDefaultHandler : public HandlerFor<CommandId("BY")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^CV`: whether refused barcode data are printed as an error. Off unless it says yes.
class BarcodeValidationHandler : public HandlerFor<CommandId("CV")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

void AddBarcodeDefaultHandlers(CommandHandlerPool& pool);
