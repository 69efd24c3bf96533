#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "Scripting/Api.h"

class PICLServerAgent;
class PublishingPropertyManager;

namespace PrintEngine::Printing {

/// The print set-up of the process. What is set here counts for every drawing target of the process, and is set by the
/// program before there is any.
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

private:
    PrintProcessHandler() = default;

    std::function<void(unsigned)> pageReceiver_;
    unsigned printerDpi_ = 203;
};

}  // namespace PrintEngine::Printing
