#include "desktop/serve/RepeatLimit.h"

#include <gtest/gtest.h>

namespace {

TEST(RepeatLimit, CountsWhatIsNotTold) {
    RepeatLimit limit;
    unsigned told = 0;
    for (unsigned i = 0; i < 34'000; ++i) told += limit.Admits("bad data \"" + std::to_string(i) + '"');
    EXPECT_EQ(told, RepeatLimit::Most);
    EXPECT_TRUE(limit.Admits("something else"));
    EXPECT_EQ(limit.EndPeriod(), std::vector<std::string>{"... and 33990 more like it: bad data \"0\""});
    EXPECT_TRUE(limit.Admits("bad data \"1\""));
    EXPECT_TRUE(limit.EndPeriod().empty());

    told = 0;
    for (unsigned i = 0; i < 2 * RepeatLimit::MostKinds; ++i) told += limit.Admits(std::string(i, 'x'));
    EXPECT_EQ(told, RepeatLimit::MostKinds + RepeatLimit::Most - 1);
    EXPECT_EQ(limit.EndPeriod().size(), 1U) << "all that is past the most kinds is one";
}

}  // namespace
