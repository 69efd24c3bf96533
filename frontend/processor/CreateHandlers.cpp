#include "barcodes/BarcodeHandlers.h"
#include "fields/FieldHandlers.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "labels/LabelHandlers.h"
#include "rfid/RfidHandlers.h"

void CommandHandlerPool::CreateHandlers(bool rfidEncoderSupport, bool disablePausing) {
    if (!handlers_.empty()) return;
    AddLabelHandlers(*this, disablePausing);
    AddFieldHandlers(*this);
    AddBarcodeHandlers(*this);
    if (rfidEncoderSupport) AddRfidHandlers(*this);
}
