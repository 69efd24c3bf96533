#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>

#include "frontend/stream/ZplParse.h"

/// The numbers that a parameter may have, both limits included.
template <typename T>
struct Range {
    // A limit is of the type of the value, whatever the other one is.
    std::type_identity_t<T> low;
    std::type_identity_t<T> high;
    /// Of the limits, if it is not that of the parameter; " dots", say, or nothing.
    std::string_view unit = {};

    Range<std::int64_t> Told() const { return {static_cast<std::int64_t>(low), static_cast<std::int64_t>(high), unit}; }
};

/// Reports that the parameter at `index` is out of its range, and what stands for it; nothing if it is left out.
void ReportOutOfRange(ZplCommand const& command, std::size_t index, Range<std::int64_t> range,
                      std::optional<std::int64_t> taken);

/// The value read from a parameter, or the nearest limit, which is reported.
template <typename T>
T Bounded(ZplCommand const& command, std::size_t index, T value, Range<T> range) {
    T const bounded = std::clamp(value, range.low, range.high);
    if (bounded != value) ReportOutOfRange(command, index, range.Told(), static_cast<std::int64_t>(bounded));
    return bounded;
}

/// The value read from a parameter if it lies in its range; otherwise no value, which is reported.
template <typename T>
ZplParseResult<T> OnlyWithin(ZplCommand const& command, std::size_t index, ZplParseResult<T> const& value,
                             Range<T> range) {
    if (!value || (*value >= range.low && *value <= range.high)) return value;
    ReportOutOfRange(command, index, range.Told(), std::nullopt);
    return {};
}
