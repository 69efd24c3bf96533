#include "foundation/AppSettings.h"

#include <charconv>
#include <cstdlib>

#include "foundation/Files.h"
#include "foundation/Json.h"

namespace {

constexpr unsigned DefaultSubscriptionTimeoutMS = 5000;

std::filesystem::path DefaultStorageDir() {
    if (char const* state = std::getenv("XDG_STATE_HOME"); state && *state)
        return std::filesystem::path(state) / "zplhost";
    if (char const* home = std::getenv("HOME"); home && *home)
        return std::filesystem::path(home) / ".local/state/zplhost";
    return "/var/tmp/zplhost";
}

}  // namespace

AppSettings::AppSettings() : storageDir_(DefaultStorageDir()) {}

AppSettings& AppSettings::GetInstance() {
    static AppSettings instance;
    return instance;
}

std::filesystem::path AppSettings::AppBin() const {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

std::filesystem::path AppSettings::SystemFontsDir() const {
    std::string const named = Value("SystemFontsDir");
    return named.empty() ? "/usr/share/fonts" : named;
}

unsigned AppSettings::ExternalPropertySubscriptionTimeoutMS() const {
    std::string const named = Value("ExternalPropertySubscriptionTimeoutMS");
    unsigned value = DefaultSubscriptionTimeoutMS;
    std::from_chars(named.data(), named.data() + named.size(), value);
    return value;
}

bool AppSettings::LoadFile(std::filesystem::path const& file) {
    return ReadJsonSettings(ReadRegularFile(file), [this](std::string_view name, std::string_view value) {
        values_[std::string(name)] = value;
    });
}

std::string AppSettings::Value(std::string const& name) const {
    auto const found = values_.find(name);
    return found == values_.end() ? std::string() : found->second;
}
