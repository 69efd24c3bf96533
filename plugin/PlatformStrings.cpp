#include "plugin/PlatformStrings.h"

#include "foundation/AppSettings.h"

std::filesystem::path PlatformStrings::ComponentPaths::PropertyServer() {
    auto const& settings = AppSettings::GetInstance();
    std::string const named = settings.Value("PropertyServerSocket");
    return named.empty() ? settings.StorageDir() / "PropertyServer" : std::filesystem::path(named);
}
