#pragma once

#include <memory>

#include "PrintEngine/PartManagement/PrinterLabelPartManager.h"
#include "propertybus/Property.h"

class PICLServerAgent;
class PublishingPropertyManager;

/// The model of the surfaces: what the print driver reports of the job that prints, and the label part in use. It
/// follows properties and writes none, so it needs no agent of the server.
class TWSProcessorInterface {
public:
    static std::shared_ptr<TWSProcessorInterface> Create(std::shared_ptr<PublishingPropertyManager> manager,
                                                         std::shared_ptr<PICLServerAgent> const& agent);

    std::shared_ptr<StringProperty> GetPrintJobStatusProperty() const { return printJobStatus_; }
    std::shared_ptr<StringProperty> GetCurrentJobPathProperty() const { return jobToPrintPathName_; }
    std::shared_ptr<UInt32Property> GetCurrentPrintingPageProperty() const { return currentPrintingPageNumber_; }
    /// Where the driver of a desk keeps the pages that it has printed; empty on a printer.
    std::shared_ptr<StringProperty> GetPrintedPagesProperty() const { return printedPages_; }

    PrintEngine::PartManagement::LabelPart GetLabelPart() const { return partManager_.GetLabelPart(); }

private:
    explicit TWSProcessorInterface(PublishingPropertyManager& manager);

    std::shared_ptr<StringProperty> printJobStatus_;
    std::shared_ptr<StringProperty> jobToPrintPathName_;
    std::shared_ptr<UInt32Property> currentPrintingPageNumber_;
    std::shared_ptr<StringProperty> printedPages_;
    PrintEngine::PartManagement::PrinterLabelPartManager partManager_;
};
