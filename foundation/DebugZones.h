#pragma once

#include <array>
#include <atomic>
#include <string>
#include <string_view>

/// Switches of what the process writes to its log, all of which can be turned while it runs. Errors and warnings are on
/// at start, everything else is off.
#define ZPL_DEBUG_ZONES(ZONE) \
    ZONE(Error)               \
    ZONE(Warning)             \
    ZONE(Info)                \
    ZONE(Property)            \
    ZONE(PropertyWarning)     \
    ZONE(Init)                \
    ZONE(DeInit)              \
    ZONE(PICL)                \
    ZONE(PrintJob)            \
    ZONE(Network)             \
    ZONE(Usb)                 \
    ZONE(BT)                  \
    ZONE(Power)               \
    ZONE(Battery)             \
    ZONE(Mover)               \
    ZONE(Ramp)                \
    ZONE(SSL)                 \
    ZONE(ThreadIds)           \
    ZONE(Upgrade)             \
    ZONE(Manufacturing)       \
    ZONE(PerformanceLogging)  \
    ZONE(LeakTracking)        \
    ZONE(BootTiming)          \
    ZONE(Accelerometer)

#define ZPL_DECLARE_ZONE(name) extern std::atomic<bool> debugZone##name;
ZPL_DEBUG_ZONES(ZPL_DECLARE_ZONE)
#undef ZPL_DECLARE_ZONE

struct DebugZone {
    char const* name;  ///< "DebugZoneError"
    std::atomic<bool>* flag;
};

/// All zones, in a fixed order.
std::array<DebugZone, 24> const& DebugZones();

/// The component whose name the lines of this process carry. Before there are other threads.
void SetDebugLogName(std::string name);

/// Writes one line to standard error: time, component, process, zone, text. Any thread.
void WriteDebugLine(std::string_view zone, std::string const& text);

/// Writes a line if the zone is on; the text is made only then. `DebugLog(PICL, "connected to " + path)`.
#define DebugLog(zone, text)                                \
    do {                                                    \
        if (debugZone##zone) WriteDebugLine(#zone, (text)); \
    } while (false)
