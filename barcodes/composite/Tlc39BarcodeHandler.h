#pragma once

#include "frontend/handlers/CommandHandler.h"

/// `^BT`: TLC39. Narrow bar, ratio and height of the Code 39, module and row height of the MicroPDF417.
class Tlc39BarcodeHandler : public HandlerFor<CommandId("BT")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};
