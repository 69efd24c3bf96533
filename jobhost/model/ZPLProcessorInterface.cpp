#include "jobhost/model/ZPLProcessorInterface.h"

#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

namespace {

constexpr char const* DefaultDelimiter = ",";
constexpr char const* DefaultFormatPrefix = "^";
constexpr char const* DefaultControlPrefix = "~";
constexpr std::uint32_t DefaultContinuousLength = 500;  // thousandths of an inch
constexpr std::uint32_t SmartSubstrate = 2;

}  // namespace

std::shared_ptr<ZPLProcessorInterface> ZPLProcessorInterface::Create(std::shared_ptr<PublishingPropertyManager> manager,
                                                                     std::shared_ptr<PICLServerAgent> /*agent*/) {
    return std::shared_ptr<ZPLProcessorInterface>(new ZPLProcessorInterface(*manager));
}

// In this order: it is the order in which the properties appear on the bus.
ZPLProcessorInterface::ZPLProcessorInterface(PublishingPropertyManager& manager) {
    namespace Id = PropertyNames;
    namespace Label = PropertyNameStrings;
    using namespace PropertyGroups;
    missingCommands_ =
        manager.Create<StringProperty>({Id::ZPLMissingCommands, Label::ZPLMissingCommands, AnalyticsLifetime}, "");
    lifetimeScriptCount_ = manager.Create<UInt32Property>(
        {Id::ZPLLifetimeScriptCount, Label::ZPLLifetimeScriptCount, AnalyticsLifetime}, 0U);
    delimiter_ = manager.Create<StringProperty>(
        {Id::ZPLDelimiterCharacter, Label::ZPLDelimiterCharacter, PrintOperations}, DefaultDelimiter);
    formatPrefix_ = manager.Create<StringProperty>({Id::ZPLFormatCharacter, Label::ZPLFormatCharacter, PrintOperations},
                                                   DefaultFormatPrefix);
    controlPrefix_ = manager.Create<StringProperty>(
        {Id::ZPLControlCharacter, Label::ZPLControlCharacter, PrintOperations}, DefaultControlPrefix);
    continuousLabelLength_ = manager.Create<UInt32Property>(
        {Id::DefaultZplContinuousLabelLength, Label::DefaultZplContinuousLabelLength, PrintOperations},
        DefaultContinuousLength);
    substrateMode_ = manager.Create<UInt32Property>(
        {Id::SubstrateMode, Label::SubstrateMode, SubstratePrinterProperties}, SmartSubstrate);
    lowMemoryError_ = manager.Create<BoolProperty>({Id::ZPLLowMemoryError, Label::ZPLLowMemoryError, Error}, false);
}

void ZPLProcessorInterface::ResetStreamCharacters() {
    delimiter_->Set(DefaultDelimiter);
    formatPrefix_->Set(DefaultFormatPrefix);
    controlPrefix_->Set(DefaultControlPrefix);
}
