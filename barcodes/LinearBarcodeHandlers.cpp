#include "barcodes/LinearBarcodeHandlers.h"

#include "frontend/handlers/CommandHandlerPool.h"

void AddLinearBarcodeHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<Code11BarcodeHandler>();
    pool.AddToCache<Interleaved2of5BarcodeHandler>();
    pool.AddToCache<Code39BarcodeHandler>();
    pool.AddToCache<Code93BarcodeHandler>();
    pool.AddToCache<Industrial2of5BarcodeHandler>();
    pool.AddToCache<Standard2of5BarcodeHandler>();
    pool.AddToCache<AnsiCodabarBarcodeHandler>();
    pool.AddToCache<LogmarsBarcodeHandler>();
    pool.AddToCache<MsiBarcodeHandler>();
    pool.AddToCache<PlesseyBarcodeHandler>();
}
