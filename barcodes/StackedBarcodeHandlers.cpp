#include "barcodes/StackedBarcodeHandlers.h"

#include "frontend/handlers/CommandHandlerPool.h"

void AddStackedBarcodeHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<Code49BarcodeHandler>();
    pool.AddToCache<Pdf417BarcodeHandler>();
    pool.AddToCache<CodaBlockBarcodeHandler>();
    pool.AddToCache<MicroPdfBarcodeHandler>();
    pool.AddToCache<Tlc39BarcodeHandler>();
}
