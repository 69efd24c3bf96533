#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "PrintEngine/PartManagement/PrinterLabelPartManager.h"
#include "foundation/MachineSettings.h"
#include "jobhost/model/NetworkResponse.h"
#include "propertybus/Property.h"

class PICLServerAgent;
class PublishingPropertyManager;

/// How the machine knows its media.
namespace SubstrateModes {
inline constexpr std::uint32_t Unknown = 0;
inline constexpr std::uint32_t NotPresent = 1;
inline constexpr std::uint32_t Smart = 2;  ///< it senses them itself
inline constexpr std::uint32_t Manual = 3;
}  // namespace SubstrateModes

/// The model of the interpreter: the properties that the process publishes or follows, and the label part in use.
class ZPLProcessorInterface {
public:
    /// Without a server agent the properties belong to this process alone. On a printer it waits for the driver.
    static std::shared_ptr<ZPLProcessorInterface> Create(std::shared_ptr<PublishingPropertyManager> manager,
                                                         std::shared_ptr<PICLServerAgent> agent,
                                                         MachineSettings const& machine = {});

    std::shared_ptr<StringProperty> GetMissingZplCommandsProperty() const { return missingCommands_; }
    std::shared_ptr<UInt32Property> GetLifetimeZplScriptsCountProperty() const { return lifetimeScriptCount_; }
    std::shared_ptr<StringProperty> GetZPLDelimiterProperty() const { return delimiter_; }
    std::shared_ptr<StringProperty> GetZPLFormatProperty() const { return formatPrefix_; }
    std::shared_ptr<StringProperty> GetZPLControlProperty() const { return controlPrefix_; }
    /// Thousandths of an inch.
    std::shared_ptr<UInt32Property> GetDefaultZplContinuousLabelLengthProperty() const {
        return continuousLabelLength_;
    }
    /// One of SubstrateModes.
    std::shared_ptr<UInt32Property> GetSubstrateMode() const { return substrateMode_; }
    std::shared_ptr<BoolProperty> GetLowMemoryErrorProperty() const { return lowMemoryError_; }

    /// The resolution that labels are designed for, in dots per inch.
    std::shared_ptr<UInt32Property> GetEmulatedDpiProperty() const { return emulatedDpi_; }
    /// The page to go on from after a pause; NoUnPause while nobody asks.
    std::shared_ptr<UInt32Property> GetZplUnPauseProperty() const { return zplUnPause_; }
    std::shared_ptr<StringProperty> GetCommandToProcessProperty() const { return commandToProcess_; }
    std::shared_ptr<StringProperty> GetResponseToProcessProperty() const { return responseToProcess_; }
    std::shared_ptr<StringProperty> GetPrintJobStatusProperty() const { return printJobStatus_; }
    std::shared_ptr<BoolProperty> GetPrintingStoppedProperty() const { return printingIsStopped_; }
    std::shared_ptr<StringProperty> GetCurrentJobPathProperty() const { return jobToPrintPathName_; }
    std::shared_ptr<UInt32Property> GetCurrentPrintingPageProperty() const { return currentPrintingPageNumber_; }
    std::shared_ptr<BoolProperty> GetCancelAllZPLJobsProperty() const { return cancelAllJobs_; }
    std::shared_ptr<UInt32Property> GetPrintingUnPausedProperty() const { return printingUnPaused_; }
    std::shared_ptr<StringProperty> GetRfidReadCommandResponseProp() const { return rfidReadCommandResponse_; }
    std::shared_ptr<StringProperty> GetCanSendCurrentJobToPrintResponse() const { return canSendCurrentJob_; }

    /// Whether a job is being rendered; null unless another part of the process has made the property.
    std::shared_ptr<BoolProperty> GetRenderingJobProperty() const { return renderingJob_; }
    std::shared_ptr<PublishingPropertyManager> const& GetPropertyManager() const { return manager_; }

    bool PrintOnDemandToggle() const { return printOnDemandToggle_ && printOnDemandToggle_->Get(); }
    /// The folder of the job that prints.
    std::string GetCurrentJobPath() const { return jobToPrintPathName_->Get(); }

    /// Write properties of other components; nothing without a server agent.
    void SetNetworkResponseState(zpl::NetworkResponse::Status status, std::optional<std::string> data);
    /// Tells who takes print streams of something in a stream; see FindingMessage.
    void TellFinding(std::string const& message);
    void SetCancelAllJobs(bool cancel);
    void SetCancelAllZplJobs(bool cancel);
    void SetZplUnPause(unsigned value);
    /// Tells the firmware driver to go on with a page.
    void SignalPrinting(unsigned page);
    /// Notes in the metadata of the current job that it goes on from `page`; nothing if there is no such file.
    void UpdateCurrentMetaData(unsigned page);

    /// The value by which nobody asks for the end of a pause.
    static constexpr unsigned NoUnPause = 4294967295U;

    PrintEngine::PartManagement::PrinterLabelPartManager& PartManager() { return partManager_; }
    /// The media as it was loaded last. A roll without gaps has labels of the length that the property says, unless
    /// the machine senses the media itself.
    PrintEngine::PartManagement::LabelPart GetLabelPart() const;

    /// Gives caret, tilde and comma back their meaning.
    void ResetStreamCharacters();

private:
    ZPLProcessorInterface(std::shared_ptr<PublishingPropertyManager> manager, std::shared_ptr<PICLServerAgent> agent,
                          MachineSettings const& machine);
    void CreateStreamProperties(PublishingPropertyManager& manager);
    void CreatePrintProperties(PublishingPropertyManager& manager);
    void Write(char const* component, char const* property, std::string const& value);

    std::shared_ptr<StringProperty> missingCommands_;
    std::shared_ptr<UInt32Property> lifetimeScriptCount_;
    std::shared_ptr<StringProperty> delimiter_;
    std::shared_ptr<StringProperty> formatPrefix_;
    std::shared_ptr<StringProperty> controlPrefix_;
    std::shared_ptr<UInt32Property> continuousLabelLength_;
    std::shared_ptr<UInt32Property> substrateMode_;
    std::shared_ptr<BoolProperty> lowMemoryError_;
    std::shared_ptr<UInt32Property> emulatedDpi_;
    std::shared_ptr<UInt32Property> zplUnPause_;
    std::shared_ptr<StringProperty> commandToProcess_;
    std::shared_ptr<StringProperty> responseToProcess_;
    std::shared_ptr<StringProperty> printJobStatus_;
    std::shared_ptr<BoolProperty> printingIsStopped_;
    std::shared_ptr<StringProperty> jobToPrintPathName_;
    std::shared_ptr<UInt32Property> currentPrintingPageNumber_;
    std::shared_ptr<BoolProperty> printOnDemandToggle_;
    std::shared_ptr<UInt32Property> printStyle_;
    std::shared_ptr<BoolProperty> cancelAllJobs_;
    std::shared_ptr<UInt32Property> printingUnPaused_;
    std::shared_ptr<StringProperty> rfidReadCommandResponse_;
    std::shared_ptr<StringProperty> canSendCurrentJob_;
    std::shared_ptr<BoolProperty> renderingJob_;
    std::shared_ptr<PublishingPropertyManager> manager_;
    std::shared_ptr<PICLServerAgent> agent_;
    PrintEngine::PartManagement::PrinterLabelPartManager partManager_;
};
