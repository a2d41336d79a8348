#include "platform/word/docfile/container/NumberSet.h"

#include <gtest/gtest.h>

namespace qvnd::test {

using word::NumberSet;

TEST(NumberSet, HoldsEachNumberOnce) {
    NumberSet set;
    EXPECT_TRUE(set.empty());
    EXPECT_TRUE(set.insert(70));
    EXPECT_FALSE(set.insert(70));
    EXPECT_TRUE(set.contains(70));
    EXPECT_FALSE(set.contains(71));
    EXPECT_FALSE(set.contains(6));
    set.erase(70);
    set.erase(70);
    set.erase(1000);
    EXPECT_TRUE(set.empty());
    EXPECT_FALSE(set.contains(70));
}

TEST(NumberSet, FindsTheLeastNumberFromAPlaceOn) {
    NumberSet set;
    for (const std::size_t number : {3U, 63U, 64U, 200U}) {
        set.insert(number);
    }
    EXPECT_EQ(set.firstFrom(0), 3U);
    EXPECT_EQ(set.firstFrom(3), 3U);
    EXPECT_EQ(set.firstFrom(4), 63U);
    EXPECT_EQ(set.firstFrom(64), 64U);
    EXPECT_EQ(set.firstFrom(65), 200U);
    EXPECT_EQ(set.firstFrom(201), std::nullopt);
    EXPECT_EQ(set.firstFrom(5000), std::nullopt);
}

TEST(NumberSet, FindsTheLeastNumberThatTwoSetsShare) {
    NumberSet one;
    NumberSet other;
    one.insert(5);
    one.insert(130);
    other.insert(6);
    EXPECT_EQ(NumberSet::firstOfBoth(one, other), std::nullopt);
    other.insert(130);
    other.insert(900);
    EXPECT_EQ(NumberSet::firstOfBoth(one, other), 130U);
}

TEST(NumberSet, IsEmptyWhenCleared) {
    NumberSet set;
    set.insert(1);
    set.insert(400);
    set.clear();
    EXPECT_TRUE(set.empty());
    EXPECT_EQ(set.firstFrom(0), std::nullopt);
    EXPECT_TRUE(set.insert(400));
}

} // namespace qvnd::test
