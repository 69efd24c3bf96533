#pragma once

#include <memory>

class PublishingPropertyManager;

/// Puts the debug zones on the bus, so that they can be switched while the process runs.
namespace DebugZoneSetupHelper {

void ConnectDebugZones(std::shared_ptr<PublishingPropertyManager> const& properties);

}  // namespace DebugZoneSetupHelper
