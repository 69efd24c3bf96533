#include "plugin/DebugZoneSetupHelper.h"

#include <cstdio>

#include "foundation/DebugZones.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

namespace {

/// The zones have one identifier with their number, in the order of the list, as its last digits.
std::string IdentifierOf(std::size_t number) {
    char text[40];
    std::snprintf(text, sizeof text, "5D3C0E0A-6C1F-4B58-9E0B-0C6A4D0F%04zX", number + 1);
    return text;
}

void ConnectDebugZone(PublishingPropertyManager& properties, DebugZone const& zone, std::string identifier) {
    auto const property = properties.Create<BoolProperty>(
        PropertyName{std::move(identifier), zone.name, PropertyGroups::DebugZone}, zone.flag->load());
    property->AddCallback([flag = zone.flag](std::shared_ptr<Property> const& changed) {
        *flag = std::static_pointer_cast<BoolProperty>(changed)->Get();
    });
}

}  // namespace

void DebugZoneSetupHelper::ConnectDebugZones(std::shared_ptr<PublishingPropertyManager> const& properties) {
    auto const& zones = DebugZones();
    for (std::size_t i = 0; i < zones.size(); ++i) ConnectDebugZone(*properties, zones[i], IdentifierOf(i));
}
