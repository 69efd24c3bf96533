#include "library/DeskSettings.h"

#include <cstdio>

std::optional<std::chrono::system_clock::time_point> ReadTime(std::string const& text) {
    using namespace std::chrono;
    int y = 0;
    unsigned mo = 0;
    unsigned d = 0;
    unsigned h = 0;
    unsigned mi = 0;
    unsigned s = 0;
    int length = 0;
    bool const read = std::sscanf(text.c_str(), "%4d-%2u-%2uT%2u:%2u:%2u%n", &y, &mo, &d, &h, &mi, &s, &length) == 6;
    year_month_day const date{year(y), month(mo), day(d)};
    bool const whole = read && static_cast<std::size_t>(length) == text.size();
    if (!whole || !date.ok() || y < 1900 || y > 2200 || h > 23 || mi > 59 || s > 59) return std::nullopt;
    return sys_days(date) + hours(h) + minutes(mi) + seconds(s);
}

std::optional<std::pair<std::string, std::string>> ReadFont(std::string_view text) {
    auto const equals = text.find('=');
    if (equals == std::string_view::npos || equals == 0 || equals + 1 == text.size()) return std::nullopt;
    return std::pair(std::string(text.substr(0, equals)), std::string(text.substr(equals + 1)));
}
