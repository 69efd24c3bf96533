#include "frontend/processor/CreateHandlers.h"

#include "barcodes/BarcodeHandlers.h"
#include "fields/FieldHandlers.h"
#include "labels/LabelHandlers.h"
#include "rfid/RfidHandlers.h"

CommandHandlerPool CreateHandlers(bool rfidEncoderSupport, bool disablePausing) {
    CommandHandlerPool pool;
    AddLabelHandlers(pool, disablePausing);
    AddFieldHandlers(pool);
    AddBarcodeHandlers(pool);
    if (rfidEncoderSupport) AddRfidHandlers(pool);
    return pool;
}
