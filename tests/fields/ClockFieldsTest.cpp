#include "fields/data/ClockFields.h"

#include <gtest/gtest.h>

#include <ctime>

#include "tests/support/StreamRun.h"

namespace {

using namespace std::chrono;
using ZplCore::ClockFields::Format;
using ZplCore::ClockFields::Shift;

auto At(int y, unsigned m, unsigned d, int h = 0, int min = 0, int s = 0) {
    return system_clock::time_point(sys_days(year(y) / month(m) / day(d)) + hours(h) + minutes(min) + seconds(s));
}

TEST(ClockFields, AgreeWithTheLibraryInEnglish) {
    for (int day = 0; day < 3000; day += 7) {
        auto const time = At(2019, 12, 28, day % 24, day % 60, 59) + days(day);
        std::time_t const seconds = system_clock::to_time_t(time);
        std::tm parts{};
        ::gmtime_r(&seconds, &parts);
        for (char const code : std::string_view("YymdBbAaHIMSpjUWw")) {
            char const pattern[] = {'%', code, 0};
            char expected[64];
            std::strftime(expected, sizeof expected, pattern, &parts);
            EXPECT_EQ(Format(code, time, "en-US"), expected) << code << " on day " << day;
        }
    }
    EXPECT_EQ(Format('Q', At(2026, 1, 1), "en-US"), std::nullopt);
}

TEST(ClockFields, ShiftOnTheCalendar) {
    EXPECT_EQ(Shift(At(2024, 1, 31, 5), {1, 0, 0, 0, 0, 0}), At(2024, 2, 29, 5));
    EXPECT_EQ(Shift(At(2024, 2, 29), {0, 0, 1, 0, 0, 0}), At(2025, 2, 28));
    EXPECT_EQ(Shift(At(2024, 12, 31), {2, 1, 0, -1, 0, 1}), At(2025, 2, 28, 23, 0, 1));
    EXPECT_EQ(Shift(At(2024, 3, 1), {-13, -1, 0, 0, 0, 0}), At(2023, 1, 31));
    for (int const extreme : {32000, -32000}) {
        auto const time = Shift(At(2024, 3, 1), {extreme, extreme, extreme, extreme, extreme, extreme});
        EXPECT_GT(time, At(1700, 1, 1));
        EXPECT_LT(time, At(2261, 1, 1));
    }
}

TEST(ClockFields, InFieldData) {
    DeskSettings options;
    options.time = At(2026, 3, 9, 14, 5, 7);
    Desk desk(options);
    struct Row {
        char const* fields;
        char const* text;
    };
    for (auto const& row : std::vector<Row>{
             {"^FC%^FD%d.%m.%Y %H:%M:%S^FS", "09.03.2026 14:05:07"},
             {"^FD100 %Y^FS", "100 %Y"},
             {"^FC^FD100 % %Q%^FS", "100 % %Q%"},
             {"^FC%^FH^FD_25Y %Y^FS", "%Y 2026"},
             {"^SO2,1,1,1,1,1,1^FC%,{,#^FD%d{d#d {Y{m{d{H{M{S^FS", "091009 20270410150608"},
             {"^SL,4^FC%^FD%A, %d. %B^FS", "Montag, 09. März"},
             {"^CI28^SL,4^FC%^FD%b^FS", "Mär"},
             {"^CI27^KL2^FC%^FD%a^FS", "lun"},
             {"^ST12,31,2030,11,59,58,P^FC%^FD%Y-%m-%d %H:%M^FS", "2030-12-31 23:59"},
         }) {
        EXPECT_EQ(Texts(RunStream(desk, "^XA^FO9,9" + std::string(row.fields) + "^XZ")),
                  std::vector<std::string>{row.text})
            << row.fields;
    }
    // A clock that is set goes on from there in the next format.
    EXPECT_EQ(Texts(RunStream(desk, "^XA^ST12,31,2030,11,59,58,P^XZ^XA^FO9,9^FC%^FD%Y-%m-%d %H:%M:%S^FS^XZ")),
              std::vector<std::string>{"2030-12-31 23:59:58"});
}

}  // namespace
