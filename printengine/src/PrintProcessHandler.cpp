#include "PrintEngine/Printing/PrintProcessHandler.h"

namespace PrintEngine::Printing {

PrintProcessHandler* PrintProcessHandler::GetInstance() {
    static PrintProcessHandler handler;
    return &handler;
}

// The desk draws every page into memory, so there is no screen to be made independent of.
void PrintProcessHandler::InitializeOffscreenDrawing() {}

void PrintProcessHandler::SetupForPrinting(std::shared_ptr<PICLServerAgent> const&,
                                           std::shared_ptr<PublishingPropertyManager> const&) {}

}  // namespace PrintEngine::Printing
