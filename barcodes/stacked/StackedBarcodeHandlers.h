#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

// Symbologies of several rows of bars.

/// `^B4`: Code 49. Multiplier of the row height; line N, A above or B below; starting mode, which follows from the
/// data.
class Code49BarcodeHandler : public HandlerFor<CommandId("B4")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^B7`: PDF417. Row height in dots, security level, columns, rows, truncation.
class Pdf417BarcodeHandler : public HandlerFor<CommandId("B7")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BF`: MicroPDF417. Row height in dots, mode.
class MicroPdfBarcodeHandler : public HandlerFor<CommandId("BF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

void AddStackedBarcodeHandlers(CommandHandlerPool& pool);
