#include "generate/numbering/NumberingTables.h"
#include "support/Errors.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace qvnd;
using namespace qvnd::generate;
using qvnd::test::errorNumberOf;

TEST(LevelCounters, ClearBelowKeepsTheLevelItselfAndThoseAbove) {
    LevelCounters counters;
    for (int level = 1; level <= 4; ++level)
        counters.advance(level);
    counters.clearBelow(2);
    EXPECT_EQ(counters.at(1), 1);
    EXPECT_EQ(counters.at(2), 1);
    EXPECT_EQ(counters.at(3), 0);
    EXPECT_EQ(counters.at(4), 0);
}

TEST(LevelCounters, RunFromZeroToThirty) {
    LevelCounters counters;
    EXPECT_EQ(errorNumberOf([&] { counters.advance(0); }), std::nullopt);
    EXPECT_EQ(errorNumberOf([&] { counters.advance(30); }), std::nullopt);
    EXPECT_EQ(errorNumberOf([&] { counters.advance(31); }), error::subscriptOutOfRange);
    counters.clearBelow(30);
    EXPECT_EQ(counters.at(30), 1);
    counters.clearBelow(-1);
    EXPECT_EQ(counters.at(0), 0);
}

TEST(LevelCounters, HoldSixteenBits) {
    LevelCounters counters;
    for (int i = 0; i < 32767; ++i)
        counters.advance(1);
    EXPECT_EQ(counters.at(1), 32767);
    EXPECT_EQ(errorNumberOf([&] { counters.advance(1); }), error::overflow);
    EXPECT_EQ(counters.at(1), 32767);
}

TEST(NumberWords, HasPlacesZeroToTwentyOnly) {
    NumberWords words;
    words.set(20, u"二十"_s);
    EXPECT_EQ(words.at(0), QString());
    EXPECT_EQ(words.at(20), u"二十"_s);
    EXPECT_EQ(errorNumberOf([&] { words.set(21, u"二十一"_s); }), error::subscriptOutOfRange);
}

TEST(ChapterGrid, HasRowsZeroToNineOnly) {
    ChapterGrid grid;
    grid.set(9, ChapterColumn::带该级标题, u"是"_s);
    EXPECT_EQ(grid.at(9, ChapterColumn::带该级标题), u"是"_s);
    EXPECT_EQ(grid.at(0, ChapterColumn::级别), QString());
    EXPECT_EQ(errorNumberOf([&] { grid.set(10, ChapterColumn::级别, u"10"_s); }),
              error::subscriptOutOfRange);
}
