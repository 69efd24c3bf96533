#include "fields/data/SerialData.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace ZplCore::SerialData;

TEST(SerialData, CountsTheRightmostNumber) {
    struct Row {
        char const* start;
        std::int64_t step;
        bool leadingZeros;
        std::uint64_t steps;
        char const* expected;
    };
    for (auto const& row : std::vector<Row>{
             {"A007-X", 1, true, 0, "A007-X"},
             {"A007-X", 1, true, 1, "A008-X"},
             {"A007-X", 1, true, 992, "A999-X"},
             {"A007-X", 1, true, 993, "A000-X"},
             {"010", 1, false, 0, "10"},
             {"000", 1, false, 0, "0"},
             {"12A34", 10, true, 3, "12A64"},
             {"003", -1, true, 4, "999"},
             {"text", 5, true, 9, "text"},
             {"", 5, true, 9, ""},
             {"99999999999999", 1, true, 1, "99000000000000"},
             {"000000000001", 999'999'999'999, true, 4'000'000'000, "996000000001"},
             {"5", -2'147'483'647, true, 4'294'967'295, "0"},
         }) {
        EXPECT_EQ(CountNumber(row.start, row.step, row.leadingZeros, row.steps), row.expected)
            << row.start << " " << row.steps;
    }
}

TEST(SerialData, CountsByMask) {
    struct Row {
        char const* data;
        char const* mask;
        char const* step;
        std::vector<char const*> values;  // for 0, 1, 2, ... steps
    };
    for (auto const& row : std::vector<Row>{
             {"BX09", "dd", "", {"BX09", "BX10", "BX11"}},
             {"AZ99", "AAdd", "", {"AZ99", "BA00", "BA01"}},
             {"07C", "ddA", "D", {"07C", "07F", "07I", "07L", "07O", "07R", "07U", "07X", "08A"}},
             {"1-09", "d%dd", "0%01", {"1-09", "1-10"}},
             {"1-99", "d%dd", "0%01", {"1-99", "2-00"}},
             {"fe", "hh", "", {"fe", "ff", "00"}},
             {"Az9", "NNN", "1", {"Az9", "AzA"}},
             {"zz", "aa", "", {"zz", "aa"}},
             {"17", "oo", "", {"17", "20"}},
             {"99", "dd", "", {"99", "00"}},
             {"ab", "%%", "", {"ab", "ab"}},
             {"7", "ddd", "5", {"7", "2"}},
             {"?5", "dd", "", {"?5", "?6", "?7", "?8", "?9", "10"}},
         }) {
        for (std::size_t i = 0; i < row.values.size(); ++i) {
            EXPECT_EQ(CountByMask(row.data, row.mask, row.step, i), row.values[i]) << row.data << " " << i;
        }
    }
}

}  // namespace
