#include "barcodes/BarcodeHandlers.h"

#include "barcodes/composite/Gs1DatabarBarcodeHandler.h"
#include "barcodes/composite/Tlc39BarcodeHandler.h"
#include "barcodes/frame/BarcodeDefaultHandlers.h"
#include "barcodes/linear/Code128BarcodeHandler.h"
#include "barcodes/linear/LinearBarcodeHandlers.h"
#include "barcodes/matrix/MatrixBarcodeHandlers.h"
#include "barcodes/postal/PostalBarcodeHandlers.h"
#include "barcodes/retail/RetailBarcodeHandlers.h"
#include "barcodes/stacked/StackedBarcodeHandlers.h"
#include "frontend/handlers/CommandHandlerPool.h"

void AddBarcodeHandlers(CommandHandlerPool& pool) {
    AddBarcodeDefaultHandlers(pool);
    pool.AddToCache<Code128BarcodeHandler>();
    pool.AddToCache<Gs1DatabarBarcodeHandler>();
    pool.AddToCache<Tlc39BarcodeHandler>();
    AddLinearBarcodeHandlers(pool);
    AddMatrixBarcodeHandlers(pool);
    AddPostalBarcodeHandlers(pool);
    AddRetailBarcodeHandlers(pool);
    AddStackedBarcodeHandlers(pool);
}
