#pragma once

#include <array>
#include <string_view>

/// Names of months (January first) and days (Sunday first) in one language, in UTF-8.
struct ClockNames {
    std::string_view language;  ///< two letters of ISO 639-1
    std::array<std::string_view, 12> months;
    std::array<std::string_view, 7> days;
};

/// The names of a language; those of English if it is not known. Only the first two letters of `culture` count.
ClockNames const& FindClockNames(std::string_view culture);
