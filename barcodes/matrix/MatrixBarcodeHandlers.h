#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

// Symbologies of cells.

/// `^BD`: MaxiCode. Mode 2 to 6, number of the symbol, number of all symbols. It has one size and stands upright.
class MaxicodeBarcodeHandler : public HandlerFor<CommandId("BD")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BO`: Aztec. Magnification, extended channels, size or error correction, reader set-up, number of symbols, their
/// name.
class AztecBarcodeHandler : public HandlerFor<CommandId("BO")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BQ`: QR Code. Model, magnification, error correction, mask. It always stands upright.
class QrCodeBarcodeHandler : public HandlerFor<CommandId("BQ")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BX`: Data Matrix. Module size, quality, columns, rows, format, escape character, aspect.
class DataMatrixBarcodeHandler : public HandlerFor<CommandId("BX")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

void AddMatrixBarcodeHandlers(CommandHandlerPool& pool);
