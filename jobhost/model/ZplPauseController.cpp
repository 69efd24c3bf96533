#include "jobhost/model/ZplPauseController.h"

#include "Scripting/PrinterContextInterface.h"
#include "jobhost/model/JobQueueInterface.h"
#include "jobhost/model/ZPLProcessorInterface.h"

void ZplPauseController::UnPause(unsigned page) {
    queue_.HandleUnpauseRequested(
        model_.GetCurrentJobPath(), page, model_.PrintOnDemandToggle(),
        [&model = model_, page] { model.UpdateCurrentMetaData(page); },
        [&printer = printerContext_] { printer.Reset(); }, [&model = model_, page] { model.SignalPrinting(page); });
}
