#include "barcodes/MatrixBarcodeHandlers.h"

#include "frontend/handlers/CommandHandlerPool.h"

void AddMatrixBarcodeHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<MaxicodeBarcodeHandler>();
    // The two spellings of the command are one.
    pool.AddProxyToCache<AztecBarcodeHandler, CommandId("B0")>();
    pool.AddToCache<QrCodeBarcodeHandler>();
    pool.AddToCache<DataMatrixBarcodeHandler>();
}
