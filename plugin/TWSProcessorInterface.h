#pragma once

#include <memory>

#include "PrintEngine/PartManagement/PrinterLabelPartManager.h"
#include "propertybus/Property.h"

class PICLServerAgent;
class PublishingPropertyManager;

/// The model of the surfaces: what the print driver reports of the job that prints, and the label part in use.
class TWSProcessorInterface {
public:
    static std::shared_ptr<TWSProcessorInterface> Create(std::shared_ptr<PublishingPropertyManager> manager,
                                                         std::shared_ptr<PICLServerAgent> agent);

    std::shared_ptr<StringProperty> GetPrintJobStatusProperty() const { return printJobStatus_; }
    std::shared_ptr<StringProperty> GetCurrentJobPathProperty() const { return jobToPrintPathName_; }
    std::shared_ptr<UInt32Property> GetCurrentPrintingPageProperty() const { return currentPrintingPageNumber_; }

    PrintEngine::PartManagement::LabelPart GetLabelPart() const { return partManager_.GetLabelPart(); }

private:
    TWSProcessorInterface(PublishingPropertyManager& manager, std::shared_ptr<PICLServerAgent> agent);

    std::shared_ptr<StringProperty> printJobStatus_;
    std::shared_ptr<StringProperty> jobToPrintPathName_;
    std::shared_ptr<UInt32Property> currentPrintingPageNumber_;
    std::shared_ptr<PICLServerAgent> agent_;
    PrintEngine::PartManagement::PrinterLabelPartManager partManager_;
};
