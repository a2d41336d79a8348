#include "outline/OutlineKeys.h"

#include "support/Errors.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::errorNumberOf;

namespace {

TEST(OutlineKeys, TheFirstPartIsTheTable) {
    EXPECT_EQ(tableOfKey("工程甲.4.12"), "工程甲");
    EXPECT_EQ(tableOfKey("工程甲"), "工程甲");
}

TEST(OutlineKeys, ATableNameWithAPointIsReadOnlyUpToTheFirstPoint) {
    EXPECT_EQ(tableOfKey("甲.乙.3"), "甲");
}

TEST(OutlineKeys, DepthIsTheUpperBoundOfTheSplit) {
    EXPECT_EQ(depthOfKey("T"), 0);
    EXPECT_EQ(depthOfKey("T.4"), 1);
    EXPECT_EQ(depthOfKey("T.4.12"), 2);
}

TEST(OutlineKeys, TheParentKeyIsAllPartsButTheLast) {
    EXPECT_EQ(parentKeyOf("T.4.12"), "T.4");
    EXPECT_EQ(parentKeyOf("T.4"), "T");
    EXPECT_EQ(parentKeyOf(".4"), "");
}

TEST(OutlineKeys, ARootIsItsOwnParentKey) { EXPECT_EQ(parentKeyOf("T"), "T"); }

TEST(OutlineKeys, AKeyIsItsTableWithNumbersBehindPoints) {
    for (const char* key : {"甲", "甲.1", "甲.09.120"}) {
        EXPECT_TRUE(isKeyOf("甲", key)) << key;
    }
    EXPECT_TRUE(isKeyOf("T", "t.1"));
    EXPECT_TRUE(isKeyOf("a.b", "a.b.1"));
    for (const char* key : {"", "乙.1", "甲1", "甲x.1", "甲.", "甲.1.", "甲..1", "甲.a", "甲.1/",
                            "甲.:", "甲.１", "x甲.1"}) {
        EXPECT_FALSE(isKeyOf("甲", key)) << key;
    }
}

TEST(OutlineKeys, TheNewKeyIsTheParentKeyAndBasePlusCount) {
    EXPECT_EQ(newKey("T", 2, 2), "T.4");
    EXPECT_EQ(newKey("T.1", 0, 1), "T.1.1");
}

TEST(OutlineKeys, ANumberBeyondSixteenBitsOverflows) {
    EXPECT_EQ(toInteger(32767), 32767);
    EXPECT_EQ(toInteger(-32768), -32768);
    EXPECT_EQ(errorNumberOf([] { toInteger(32768); }), error::overflow);
    EXPECT_EQ(errorNumberOf([] { toInteger(-32769); }), error::overflow);
}

TEST(OutlineKeys, TheSumOverflowsToo) {
    EXPECT_EQ(newKey("T", 32766, 1), "T.32767");
    EXPECT_EQ(errorNumberOf([] { newKey("T", 32767, 1); }), error::overflow);
}

} // namespace
