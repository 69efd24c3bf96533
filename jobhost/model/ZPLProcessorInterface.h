#pragma once

#include <memory>

#include "PrintEngine/PartManagement/PrinterLabelPartManager.h"
#include "propertybus/Property.h"

class PICLServerAgent;
class PublishingPropertyManager;

/// The model of the interpreter: the properties that the process publishes or follows, and the label part in use.
class ZPLProcessorInterface {
public:
    /// Without a server agent the properties belong to this process alone.
    static std::shared_ptr<ZPLProcessorInterface> Create(std::shared_ptr<PublishingPropertyManager> manager,
                                                         std::shared_ptr<PICLServerAgent> agent);

    std::shared_ptr<StringProperty> GetMissingZplCommandsProperty() const { return missingCommands_; }
    std::shared_ptr<UInt32Property> GetLifetimeZplScriptsCountProperty() const { return lifetimeScriptCount_; }
    std::shared_ptr<StringProperty> GetZPLDelimiterProperty() const { return delimiter_; }
    std::shared_ptr<StringProperty> GetZPLFormatProperty() const { return formatPrefix_; }
    std::shared_ptr<StringProperty> GetZPLControlProperty() const { return controlPrefix_; }
    /// Thousandths of an inch.
    std::shared_ptr<UInt32Property> GetDefaultZplContinuousLabelLengthProperty() const {
        return continuousLabelLength_;
    }
    /// 0 unknown, 1 not present, 2 smart, 3 manual.
    std::shared_ptr<UInt32Property> GetSubstrateMode() const { return substrateMode_; }
    std::shared_ptr<BoolProperty> GetLowMemoryErrorProperty() const { return lowMemoryError_; }

    PrintEngine::PartManagement::PrinterLabelPartManager& PartManager() { return partManager_; }

    /// Gives caret, tilde and comma back their meaning.
    void ResetStreamCharacters();

private:
    explicit ZPLProcessorInterface(PublishingPropertyManager& manager);

    std::shared_ptr<StringProperty> missingCommands_;
    std::shared_ptr<UInt32Property> lifetimeScriptCount_;
    std::shared_ptr<StringProperty> delimiter_;
    std::shared_ptr<StringProperty> formatPrefix_;
    std::shared_ptr<StringProperty> controlPrefix_;
    std::shared_ptr<UInt32Property> continuousLabelLength_;
    std::shared_ptr<UInt32Property> substrateMode_;
    std::shared_ptr<BoolProperty> lowMemoryError_;
    PrintEngine::PartManagement::PrinterLabelPartManager partManager_;
};
