#pragma once

#include "barcodes/UndrawnBarcodeHandler.h"

class CommandHandlerPool;

// Symbologies of several rows of bars.

/// `^B4`: Code 49.
class Code49BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("B4")> {
public:
    Code49BarcodeHandler() : UndrawnBarcodeHandler("Code 49") {}
};

/// `^B7`: PDF417. Row height in dots, security level, columns, rows, truncation.
class Pdf417BarcodeHandler : public HandlerFor<CommandId("B7")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BB`: CODABLOCK.
class CodaBlockBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BB")> {
public:
    CodaBlockBarcodeHandler() : UndrawnBarcodeHandler("CODABLOCK") {}
};

/// `^BF`: MicroPDF417. Row height in dots, mode.
class MicroPdfBarcodeHandler : public HandlerFor<CommandId("BF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BT`: TLC39.
class Tlc39BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BT")> {
public:
    Tlc39BarcodeHandler() : UndrawnBarcodeHandler("TLC39") {}
};

void AddStackedBarcodeHandlers(CommandHandlerPool& pool);
