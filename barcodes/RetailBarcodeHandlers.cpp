#include "barcodes/RetailBarcodeHandlers.h"

#include "frontend/handlers/CommandHandlerPool.h"

void AddRetailBarcodeHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<Ean8BarcodeHandler>();
    pool.AddToCache<UpcEBarcodeHandler>();
    pool.AddToCache<Ean13BarcodeHandler>();
    pool.AddToCache<Gs1DatabarBarcodeHandler>();
    pool.AddToCache<UpcEanExtensionsBarcodeHandler>();
    pool.AddToCache<UpcABarcodeHandler>();
}
