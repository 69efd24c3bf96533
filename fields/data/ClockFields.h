#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/context/ZplValueTypes.h"

/// What clock indicators in field data stand for.
namespace ZplCore::ClockFields {

using TimePoint = std::chrono::system_clock::time_point;

/// The text of clock code `code` (as `Y`, `m`, `B`) at a local wall time, in UTF-8; names of months and days in the
/// language of `culture`, as "de-DE", or in English if that is not known. Nothing if the letter is no clock code.
std::optional<std::string> Format(char code, TimePoint time, std::string_view culture);

/// `time` moved by years and months on the calendar, the day brought into its month, and then by the rest. The
/// result stays between the years 1700 and 2261.
TimePoint Shift(TimePoint time, ZplContextKeys::ClockOffset const& offset);

}  // namespace ZplCore::ClockFields
