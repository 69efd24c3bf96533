#include "fields/data/ClockFields.h"

#include <algorithm>

#include "fields/data/ClockNames.h"
#include "frontend/context/Utf8Text.h"

namespace ZplCore::ClockFields {

namespace {

using namespace std::chrono;

std::string Padded(long value, std::size_t width) {
    std::string const digits = std::to_string(value);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

/// The first three characters of a name; names of that length or less stay whole.
std::string Short(std::string_view name) {
    constexpr std::size_t Length = 3;
    return FromCodePoints(ToCodePoints(name).substr(0, Length));
}

/// One instant in its parts.
struct Parts {
    explicit Parts(TimePoint time)
        : day(floor<days>(time)), date(day), weekDay(day), time(floor<seconds>(time - day)) {}

    sys_days day;
    year_month_day date;
    weekday weekDay;
    hh_mm_ss<seconds> time;

    long DayOfYear() const { return (day - sys_days(date.year() / January / 1)).count(); }
    long Hour() const { return time.hours().count(); }
    /// The week of the year, of which the first begins with the first `start`; the days before it are week 0.
    long Week(weekday start) const { return (DayOfYear() + 7 - (weekDay - start).count()) / 7; }
};

}  // namespace

std::optional<std::string> Format(char code, TimePoint time, std::string_view culture) {
    Parts const parts(time);
    auto const year = static_cast<int>(parts.date.year());
    auto const month = static_cast<unsigned>(parts.date.month());
    auto const monthName = [&] { return FindClockNames(culture).months[month - 1]; };
    auto const dayName = [&] { return FindClockNames(culture).days[parts.weekDay.c_encoding()]; };
    switch (code) {
        case 'Y': return Padded(year, 4);
        case 'y': return Padded(year % 100, 2);
        case 'm': return Padded(month, 2);
        case 'd': return Padded(static_cast<unsigned>(parts.date.day()), 2);
        case 'B': return std::string(monthName());
        case 'b': return Short(monthName());
        case 'A': return std::string(dayName());
        case 'a': return Short(dayName());
        case 'H': return Padded(parts.Hour(), 2);
        case 'I': return Padded((parts.Hour() + 11) % 12 + 1, 2);
        case 'M': return Padded(parts.time.minutes().count(), 2);
        case 'S': return Padded(parts.time.seconds().count(), 2);
        case 'p': return parts.Hour() < 12 ? "AM" : "PM";
        case 'j': return Padded(parts.DayOfYear() + 1, 3);
        case 'U': return Padded(parts.Week(Sunday), 2);
        case 'W': return Padded(parts.Week(Monday), 2);
        case 'w': return std::to_string(parts.weekDay.c_encoding());
        default: return std::nullopt;
    }
}

TimePoint Shift(TimePoint time, ZplContextKeys::ClockOffset const& offset) {
    auto const day = floor<days>(time);
    year_month_day date(day);
    constexpr int MostYears = 400;
    date += years(std::clamp(offset.years, -MostYears, MostYears));
    date += months(std::clamp(offset.months, -12 * MostYears, 12 * MostYears));
    // A clock counts nanoseconds in 64 bits, which end in the year 2262; the other offsets add a century at most.
    date = std::clamp(date.year(), year(1800), year(2150)) / date.month() / date.day();
    if (!date.ok()) date = date.year() / date.month() / last;
    return sys_days(date) + (time - day) + days(offset.days) + hours(offset.hours) + minutes(offset.minutes) +
           seconds(offset.seconds);
}

}  // namespace ZplCore::ClockFields
