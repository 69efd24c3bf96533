#include "barcodes/BarcodeHandlers.h"

#include "barcodes/composite/CompositeBarcodeHandlers.h"
#include "barcodes/frame/BarcodeDefaultHandlers.h"
#include "barcodes/linear/LinearBarcodeHandlers.h"
#include "barcodes/matrix/MatrixBarcodeHandlers.h"
#include "barcodes/postal/PostalBarcodeHandlers.h"
#include "barcodes/retail/RetailBarcodeHandlers.h"
#include "barcodes/stacked/StackedBarcodeHandlers.h"

void AddBarcodeHandlers(CommandHandlerPool& pool) {
    AddBarcodeDefaultHandlers(pool);
    AddCodaBlockBarcodeHandler(pool);
    AddCode128BarcodeHandler(pool);
    AddGs1DatabarBarcodeHandler(pool);
    AddLinearBarcodeHandlers(pool);
    AddMatrixBarcodeHandlers(pool);
    AddPostalBarcodeHandlers(pool);
    AddRetailBarcodeHandlers(pool);
    AddStackedBarcodeHandlers(pool);
    AddTlc39BarcodeHandler(pool);
}
