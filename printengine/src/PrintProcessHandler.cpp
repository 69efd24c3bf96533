#include "PrintEngine/Printing/PrintProcessHandler.h"

#include "printengine/src/fonts/FontFiles.h"

namespace PrintEngine::Printing {

PrintProcessHandler* PrintProcessHandler::GetInstance() {
    static PrintProcessHandler handler;
    return &handler;
}

// The desk draws every page into memory, so there is no screen to be made independent of.
void PrintProcessHandler::InitializeOffscreenDrawing() {}

void PrintProcessHandler::SetupForPrinting(std::shared_ptr<PICLServerAgent> const&,
                                           std::shared_ptr<PublishingPropertyManager> const&) {}

void PrintProcessHandler::SetJobsFolder(std::filesystem::path folder) { jobsFolder_ = std::move(folder); }

void PrintProcessHandler::SetFontFile(std::string font, std::filesystem::path file) {
    Fonts::FontFiles::Process().SetFile(std::move(font), std::move(file));
}

void PrintProcessHandler::SetWarningReceiver(std::function<void(std::string_view)> receiver) {
    receiver_ = std::move(receiver);
}

void PrintProcessHandler::Warn(std::string_view line) const {
    if (receiver_) receiver_(line);
}

}  // namespace PrintEngine::Printing
