#pragma once

#include <filesystem>

/// Where the other components of the platform are met.
namespace PlatformStrings::ComponentPaths {

/// The Unix domain socket of the property server: the setting "PropertyServerSocket", else a name in the store.
std::filesystem::path PropertyServer();

}  // namespace PlatformStrings::ComponentPaths
