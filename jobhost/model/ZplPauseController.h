#pragma once

namespace Scripting {
class PrinterContextInterface;
}
namespace Zpl::Host {
class JobQueueInterface;
}
class ZPLProcessorInterface;

/// Ends a pause of the current job.
class ZplPauseController {
public:
    /// All of them outlive the controller and the functions that it hands to the queue.
    ZplPauseController(Zpl::Host::JobQueueInterface& queue, ZPLProcessorInterface& model,
                       Scripting::PrinterContextInterface& printerContext)
        : queue_(queue), model_(model), printerContext_(printerContext) {}

    /// Has the current job rendered anew from `page` on, and the driver go on with it.
    void UnPause(unsigned page);

private:
    Zpl::Host::JobQueueInterface& queue_;
    ZPLProcessorInterface& model_;
    Scripting::PrinterContextInterface& printerContext_;
};
