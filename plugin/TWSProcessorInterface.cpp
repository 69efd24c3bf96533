#include "plugin/TWSProcessorInterface.h"

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "plugin/InstalledPart.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

std::shared_ptr<TWSProcessorInterface> TWSProcessorInterface::Create(std::shared_ptr<PublishingPropertyManager> manager,
                                                                     std::shared_ptr<PICLServerAgent> const&) {
    return std::shared_ptr<TWSProcessorInterface>(new TWSProcessorInterface(*manager));
}

TWSProcessorInterface::TWSProcessorInterface(PublishingPropertyManager& manager) {
    auto const name = [](char const* property, char const* label) {
        return PropertyName{property, label, PropertyGroups::PrintOperations};
    };
    using namespace PropertyNames;
    using enum ExternalAppRegistration;
    char const* const driver = ComponentIdentifiers::FirmwareDriver;
    printJobStatus_ =
        manager.Follow<StringProperty>(driver, Plain, name(PrintJobStatus, PropertyNameStrings::PrintJobStatus), "");
    jobToPrintPathName_ = manager.Follow<StringProperty>(
        driver, Plain, name(JobToPrintPathName, PropertyNameStrings::JobToPrintPathName), JobFileSystemStrings::NoPage);
    currentPrintingPageNumber_ = manager.Follow<UInt32Property>(
        driver, Plain, name(CurrentPrintingPageNumber, PropertyNameStrings::CurrentPrintingPageNumber), 0U);
    printedPages_ =
        manager.Follow<StringProperty>(driver, Plain, name(PrintedPages, PropertyNameStrings::PrintedPages), "");
    partManager_.SetInstalledPart(InstalledPart());
    partManager_.LoadPartFromPrinter();
}
