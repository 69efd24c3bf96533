#include "jobhost/model/ZPLProcessorInterface.h"

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "PrintEngine/Printing/JobMetaData.h"
#include "propertybus/PICLServerAgent.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

namespace {

constexpr char const* DefaultDelimiter = ",";
constexpr char const* DefaultFormatPrefix = "^";
constexpr char const* DefaultControlPrefix = "~";
constexpr std::uint32_t DefaultContinuousLength = 500;  // thousandths of an inch
constexpr std::uint32_t DefaultDpi = 203;

/// On the printer nothing makes sense before the driver is there.
void WaitForDriver(PICLServerAgent& agent, Features const& features) {
    using namespace PropertyNames;
    auto const wait = [&](char const* component, char const* property) {
        PICLGetSetHelper::WaitUntilPropertyAvailable(agent, component, PropertyGroups::PrintOperations, property);
    };
    wait(ComponentIdentifiers::FirmwareDriver, PrintJobStatus);
    wait(ComponentIdentifiers::FirmwareDriver, JobToPrintPathName);
    if (!features.Has(FeatureNames::spooledPrintManager)) return;
    wait(ComponentIdentifiers::PerMainAndApps, ZPLCancelAllJobs);
    wait(ComponentIdentifiers::PerMainAndApps, PrintingUnPaused);
}

}  // namespace

#define NAME(property, group) \
    PropertyName { PropertyNames::property, PropertyNameStrings::property, PropertyGroups::group }

std::shared_ptr<ZPLProcessorInterface> ZPLProcessorInterface::Create(std::shared_ptr<PublishingPropertyManager> manager,
                                                                     std::shared_ptr<PICLServerAgent> agent,
                                                                     MachineSettings const& machine) {
    return std::shared_ptr<ZPLProcessorInterface>(
        new ZPLProcessorInterface(std::move(manager), std::move(agent), machine));
}

// In this order: it is the order in which the properties appear on the bus.
ZPLProcessorInterface::ZPLProcessorInterface(std::shared_ptr<PublishingPropertyManager> manager,
                                             std::shared_ptr<PICLServerAgent> agent, MachineSettings const& machine)
    : manager_(std::move(manager)), agent_(std::move(agent)) {
    if (agent_ && machine.runningOnTarget) WaitForDriver(*agent_, machine.features);
    CreateStreamProperties(*manager_);
    CreatePrintProperties(*manager_);
    renderingJob_ = std::dynamic_pointer_cast<BoolProperty>(manager_->Find(PropertyNames::ZPLRenderingJob));
}

void ZPLProcessorInterface::CreateStreamProperties(PublishingPropertyManager& manager) {
    using namespace ComponentIdentifiers;
    using enum ExternalAppRegistration;
    missingCommands_ = manager.CreateArchived<StringProperty>(NAME(ZPLMissingCommands, AnalyticsLifetime), "");
    lifetimeScriptCount_ = manager.CreateArchived<UInt32Property>(NAME(ZPLLifetimeScriptCount, AnalyticsLifetime), 0U);
    delimiter_ = manager.CreateArchived<StringProperty>(NAME(ZPLDelimiterCharacter, PrintOperations), DefaultDelimiter);
    formatPrefix_ =
        manager.CreateArchived<StringProperty>(NAME(ZPLFormatCharacter, PrintOperations), DefaultFormatPrefix);
    controlPrefix_ =
        manager.CreateArchived<StringProperty>(NAME(ZPLControlCharacter, PrintOperations), DefaultControlPrefix);
    continuousLabelLength_ = manager.CreateArchived<UInt32Property>(
        NAME(DefaultZplContinuousLabelLength, PrintOperations), DefaultContinuousLength);
    substrateMode_ = manager.Follow<UInt32Property>(
        FirmwareDriver, Plain, NAME(SubstrateMode, SubstratePrinterProperties), SubstrateModes::Smart);
    auto const dpi = manager.Follow<UInt32Property>(FirmwareDriver, Plain, NAME(DotsPerInch, General), DefaultDpi);
    emulatedDpi_ = manager.CreateArchived<UInt32Property>(NAME(ZPLEmulatedDpi, PrintOperations), dpi->Get());
    lowMemoryError_ = manager.Create<BoolProperty>(NAME(ZPLLowMemoryError, Error), false);
    zplUnPause_ = manager.Create<UInt32Property>(NAME(ZplUnPause, PrintOperations), NoUnPause);
    commandToProcess_ =
        manager.Follow<StringProperty>(JobHandler, EveryWrite, NAME(ZPLCommandToProcess, PrintOperations), "");
    responseToProcess_ =
        manager.Follow<StringProperty>(JobHandler, EveryWrite, NAME(ZPLResponseToProcess, PrintOperations), "");
}

void ZPLProcessorInterface::CreatePrintProperties(PublishingPropertyManager& manager) {
    using namespace ComponentIdentifiers;
    using enum ExternalAppRegistration;
    printJobStatus_ = manager.Follow<StringProperty>(FirmwareDriver, Plain, NAME(PrintJobStatus, PrintOperations), "");
    printingIsStopped_ =
        manager.Follow<BoolProperty>(FirmwareDriver, Plain, NAME(PrintingIsStopped, PrintOperations), false);
    jobToPrintPathName_ = manager.Follow<StringProperty>(
        FirmwareDriver, Plain, NAME(JobToPrintPathName, PrintOperations), JobFileSystemStrings::NoPage);
    currentPrintingPageNumber_ =
        manager.Follow<UInt32Property>(FirmwareDriver, Plain, NAME(CurrentPrintingPageNumber, PrintOperations), 0U);
    printOnDemandToggle_ =
        manager.Follow<BoolProperty>(PerMainAndApps, Plain, NAME(PrintOnDemandToggle, PrintingPreferences), false);
    printStyle_ = manager.Follow<UInt32Property>(PerMainAndApps, Plain, NAME(PrintStyle, PrintingPreferences), 0U);
    cancelAllJobs_ =
        manager.Follow<BoolProperty>(PerMainAndApps, Plain, NAME(ZPLCancelAllJobs, PrintOperations), false);
    printingUnPaused_ =
        manager.Follow<UInt32Property>(PerMainAndApps, Plain, NAME(PrintingUnPaused, PrintOperations), 0U);
    rfidReadCommandResponse_ =
        manager.Subscribe<StringProperty>(FirmwareDriver, NAME(RfidReadCommandResponse, RfidEncoderOperations), "");
    canSendCurrentJob_ =
        manager.Subscribe<StringProperty>(PrintSpooler, NAME(CanSendCurrentJobToPrintResponse, PrintOperations), "");
}

#undef NAME

void ZPLProcessorInterface::Write(char const* component, char const* property, std::string const& value) {
    if (agent_) agent_->SetProperty(component, PropertyGroups::PrintOperations, property, value);
}

void ZPLProcessorInterface::SetNetworkResponseState(zpl::NetworkResponse::Status status,
                                                    std::optional<std::string> data) {
    Write(ComponentIdentifiers::JobHandler, PropertyNames::ZPLResponseToProcess,
          zpl::NetworkResponse::Create(status, std::move(data)));
}

void ZPLProcessorInterface::TellFinding(std::string const& message) {
    Write(ComponentIdentifiers::JobHandler, PropertyNames::ZPLFinding, message);
}

void ZPLProcessorInterface::SetCancelAllJobs(bool cancel) {
    Write(ComponentIdentifiers::PrintSpooler, PropertyNames::CancelAllPrintJobs, TarvoBoolToString(cancel));
}

void ZPLProcessorInterface::SetCancelAllZplJobs(bool cancel) {
    Write(ComponentIdentifiers::PerMainAndApps, PropertyNames::ZPLCancelAllJobs, TarvoBoolToString(cancel));
}

void ZPLProcessorInterface::SetZplUnPause(unsigned value) {
    Write(ComponentIdentifiers::ZplHost, PropertyNames::ZplUnPause, std::to_string(value));
}

void ZPLProcessorInterface::SignalPrinting(unsigned page) {
    if (!agent_) return;
    using namespace ComponentIdentifiers;
    if (PrintOnDemandToggle()) {
        Write(FirmwareDriver, PropertyNames::PrintOnDemandModeUpdateLastPage, "true");
        Write(PerMainAndApps, PropertyNames::PrintingUnPaused, std::to_string(page));
    } else {
        Write(FirmwareDriver, PropertyNames::ResumePrintingFromPageNumber, std::to_string(page));
        Write(FirmwareDriver, PropertyNames::ResumePrinting, "true");
    }
}

void ZPLProcessorInterface::UpdateCurrentMetaData(unsigned page) {
    std::filesystem::path const path = GetCurrentJobPath();
    auto metaData = PrintEngine::Printing::JobMetaData::Read(path);
    if (!metaData) return;
    metaData->firstPage = page;
    metaData->Write(path);
}

void ZPLProcessorInterface::ResetStreamCharacters() {
    delimiter_->Set(DefaultDelimiter);
    formatPrefix_->Set(DefaultFormatPrefix);
    controlPrefix_->Set(DefaultControlPrefix);
}

PrintEngine::PartManagement::LabelPart ZPLProcessorInterface::GetLabelPart() const {
    constexpr double LengthPerInch = 1000;
    auto part = partManager_.GetLabelPart();
    if (part.GetIsContinuous() && substrateMode_->Get() != SubstrateModes::Smart)
        part.SetHeight(continuousLabelLength_->Get() / LengthPerInch);
    return part;
}
