#pragma once

#include "barcodes/UndrawnBarcodeHandler.h"

class CommandHandlerPool;

// EAN and UPC symbols, and what goes with them at the till.

/// `^B8`: EAN-8.
class Ean8BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("B8"), 1> {
public:
    Ean8BarcodeHandler() : UndrawnBarcodeHandler("EAN-8") {}
};

/// `^B9`: UPC-E.
class UpcEBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("B9"), 1> {
public:
    UpcEBarcodeHandler() : UndrawnBarcodeHandler("UPC-E") {}
};

/// `^BE`: EAN-13.
class Ean13BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BE"), 1> {
public:
    Ean13BarcodeHandler() : UndrawnBarcodeHandler("EAN-13") {}
};

/// `^BR`: GS1 DataBar.
class Gs1DatabarBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BR")> {
public:
    Gs1DatabarBarcodeHandler() : UndrawnBarcodeHandler("GS1 DataBar") {}
};

/// `^BS`: UPC/EAN extensions.
class UpcEanExtensionsBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BS"), 1> {
public:
    UpcEanExtensionsBarcodeHandler() : UndrawnBarcodeHandler("UPC/EAN extensions") {}
};

/// `^BU`: UPC-A.
class UpcABarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BU"), 1> {
public:
    UpcABarcodeHandler() : UndrawnBarcodeHandler("UPC-A") {}
};

void AddRetailBarcodeHandlers(CommandHandlerPool& pool);
