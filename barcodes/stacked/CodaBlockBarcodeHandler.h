#pragma once

#include "frontend/handlers/CommandHandler.h"

/// `^BB`: CODABLOCK. Row height in modules, security, characters in a row, rows, mode A, E or F.
class CodaBlockBarcodeHandler : public HandlerFor<CommandId("BB")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};
