#pragma once

#include "frontend/handlers/CommandHandler.h"

/// `^BC`: Code 128, in the modes N (subsets by invocations), U (shipping container), A (automatic) and D (GS1).
class Code128BarcodeHandler : public HandlerFor<CommandId("BC")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};
