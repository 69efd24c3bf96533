#pragma once

#include "frontend/handlers/CommandHandler.h"

/// `^BR`: GS1 DataBar and composite symbols. Type 1 to 12, magnification, height of separators, height of linear bars,
/// segments in a row.
class Gs1DatabarBarcodeHandler : public HandlerFor<CommandId("BR")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};
