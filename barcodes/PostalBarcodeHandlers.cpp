#include "barcodes/PostalBarcodeHandlers.h"

#include "frontend/handlers/CommandHandlerPool.h"

void AddPostalBarcodeHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<PlanetCodeBarcodeHandler>();
    pool.AddToCache<PostalBarcodeHandler>();
}
