#include "plugin/surfaces/DriverOrders.h"

#include "propertybus/PICLServerAgent.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

namespace {

constexpr char const* Driver = ComponentIdentifiers::FirmwareDriver;
constexpr char const* Group = PropertyGroups::PrintOperations;

}  // namespace

bool DriverOrders::IsThere(char const* property) {
    return !agent_ || agent_->WaitUntilAvailable({Driver, Group, property}, {});
}

bool DriverOrders::Write(bool isPause) {
    // Not before somebody asks: the printer's start does not wait for it. Who goes on may mean a pause that was not
    // asked for by this property, so each write counts.
    auto const pause = properties_->Follow<BoolProperty>(
        Driver, ExternalAppRegistration::EveryWrite,
        PropertyName{PropertyNames::PausePrinting, PropertyNameStrings::PausePrinting, Group}, false);
    if (!IsThere(PropertyNames::PausePrinting)) return false;
    pause->Set(isPause);
    return true;
}

bool DriverOrders::Cancel(std::string const& jobFolder) {
    auto const job = properties_->Follow<StringProperty>(
        Driver, ExternalAppRegistration::EveryWrite,
        PropertyName{PropertyNames::JobToCancel, PropertyNameStrings::JobToCancel, Group}, "");
    if (!IsThere(PropertyNames::JobToCancel)) return false;
    job->Set(jobFolder);
    return true;
}
