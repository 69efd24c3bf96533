#pragma once

#include "barcodes/UndrawnBarcodeHandler.h"

class CommandHandlerPool;

// Symbologies of several rows of bars.

/// `^B4`: Code 49.
class Code49BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("B4")> {
public:
    Code49BarcodeHandler() : UndrawnBarcodeHandler("Code 49") {}
};

/// `^B7`: PDF417.
class Pdf417BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("B7")> {
public:
    Pdf417BarcodeHandler() : UndrawnBarcodeHandler("PDF417") {}
};

/// `^BB`: CODABLOCK.
class CodaBlockBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BB")> {
public:
    CodaBlockBarcodeHandler() : UndrawnBarcodeHandler("CODABLOCK") {}
};

/// `^BF`: MicroPDF417.
class MicroPdfBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BF")> {
public:
    MicroPdfBarcodeHandler() : UndrawnBarcodeHandler("MicroPDF417") {}
};

/// `^BT`: TLC39.
class Tlc39BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BT")> {
public:
    Tlc39BarcodeHandler() : UndrawnBarcodeHandler("TLC39") {}
};

void AddStackedBarcodeHandlers(CommandHandlerPool& pool);
