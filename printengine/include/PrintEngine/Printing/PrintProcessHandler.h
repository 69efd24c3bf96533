#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "Scripting/Api.h"

class PICLServerAgent;
class PublishingPropertyManager;

namespace PrintEngine::Printing {

/// The print set-up of the process. What is set here counts for every drawing target of the process.
class PRINTENGINE_API PrintProcessHandler {
public:
    static PrintProcessHandler* GetInstance();

    /// Makes the drawing of pages ready that no screen shows. Cheap when called again.
    void InitializeOffscreenDrawing();

    /// Resolution of the print head, in dots per inch.
    void SetPrinterDPI(unsigned dpi) { printerDpi_ = dpi; }
    unsigned PrinterDPI() const { return printerDpi_; }
    /// Hands over the printer's services. The desk's engine only writes files and asks for none of them.
    void SetupForPrinting(std::shared_ptr<PICLServerAgent> const& agent,
                          std::shared_ptr<PublishingPropertyManager> const& properties);
    /// Is told the index of each page that has been written into a job folder.
    void SetPageReceiver(std::function<void(unsigned)> receiver) { pageReceiver_ = std::move(receiver); }
    void NotePage(unsigned page) const {
        if (pageReceiver_) pageReceiver_(page);
    }

    /// The folder below which each job gets its own.
    void SetJobsFolder(std::filesystem::path folder);
    std::filesystem::path const& JobsFolder() const { return jobsFolder_; }

    /// The font file that draws a font letter, or an object name without its device, in place of the installed one.
    void SetFontFile(std::string font, std::filesystem::path file);

    /// Receives one line for each thing the engine had to leave out or replace (a font that is not there, a page that
    /// cannot be written). Without a receiver the lines are dropped.
    void SetWarningReceiver(std::function<void(std::string_view)> receiver);
    void Warn(std::string_view line) const;

private:
    PrintProcessHandler() = default;

    std::filesystem::path jobsFolder_;
    std::function<void(std::string_view)> receiver_;
    std::function<void(unsigned)> pageReceiver_;
    unsigned printerDpi_ = 203;
};

}  // namespace PrintEngine::Printing
