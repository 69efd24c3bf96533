#pragma once

#include "barcodes/UndrawnBarcodeHandler.h"

class CommandHandlerPool;

// Symbologies of cells.

/// `^BD`: MaxiCode.
class MaxicodeBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BD")> {
public:
    MaxicodeBarcodeHandler() : UndrawnBarcodeHandler("MaxiCode") {}
};

/// `^BO`: Aztec.
class AztecBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BO")> {
public:
    AztecBarcodeHandler() : UndrawnBarcodeHandler("Aztec") {}
};

/// `^BQ`: QR Code.
class QrCodeBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BQ")> {
public:
    QrCodeBarcodeHandler() : UndrawnBarcodeHandler("QR Code") {}
};

/// `^BX`: Data Matrix.
class DataMatrixBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BX")> {
public:
    DataMatrixBarcodeHandler() : UndrawnBarcodeHandler("Data Matrix") {}
};

void AddMatrixBarcodeHandlers(CommandHandlerPool& pool);
