#include "foundation/DebugZones.h"

#include <sys/uio.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <utility>

#define ZPL_DEFINE_ZONE(name) std::atomic<bool> debugZone##name{false};
ZPL_DEBUG_ZONES(ZPL_DEFINE_ZONE)
#undef ZPL_DEFINE_ZONE

namespace {

std::string& LogName() {
    static std::string name;
    return name;
}

[[maybe_unused]] bool const onAtStart = [] {
    debugZoneError = true;
    debugZoneWarning = true;
    return true;
}();

}  // namespace

std::array<DebugZone, 24> const& DebugZones() {
#define ZPL_LIST_ZONE(name) DebugZone{"DebugZone" #name, &debugZone##name},
    static std::array<DebugZone, 24> const zones{ZPL_DEBUG_ZONES(ZPL_LIST_ZONE)};
#undef ZPL_LIST_ZONE
    return zones;
}

void SetDebugLogName(std::string name) { LogName() = std::move(name); }

void WriteDebugLine(std::string_view zone, std::string const& text) {
    auto const now = std::chrono::system_clock::now();
    std::time_t const seconds = std::chrono::system_clock::to_time_t(now);
    auto const milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm local{};
    ::localtime_r(&seconds, &local);
    char stamp[40];
    std::size_t const length = std::strftime(stamp, sizeof stamp, "%F %T", &local);
    std::snprintf(stamp + length, sizeof stamp - length, ".%03d ", static_cast<int>(milliseconds));

    std::string line = stamp + LogName();
    line += '[' + std::to_string(::getpid()) + "] ";
    line += zone;
    line += ": " + text + '\n';
    // One call, so that lines of several threads and processes do not mix. A log that cannot be written is no reason to
    // stop.
    [[maybe_unused]] auto const written = ::write(STDERR_FILENO, line.data(), line.size());
}
