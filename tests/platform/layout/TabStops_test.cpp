#include "platform/word/layout/TabStops.h"

#include "support/FixedFonts.h"

#include <gtest/gtest.h>

#include <vector>

namespace qvnd::layout {
namespace {

using word::TabStop;

class TabStops : public testing::Test {
protected:
    TabStop behind(double at, double defaultTab = 420) const {
        return stopBehind(at, format, indents, defaultTab);
    }
    // A tab and so many characters of 100 twips behind it, with gaps of 10.
    void typeBehindTab(std::u32string_view text) {
        TextItem tab;
        tab.kind = TextItem::Kind::tab;
        tab.width = 1000;
        items = {tab};
        for (const char32_t c : text) {
            TextItem item;
            item.kind = c == U'\t'   ? TextItem::Kind::tab
                        : c == U'\v' ? TextItem::Kind::lineBreak
                                     : TextItem::Kind::character;
            item.character = c;
            item.width = 100;
            items.push_back(item);
        }
        gaps.assign(items.size(), 10);
    }
    double before(TabStop::Kind kind) const { return beforeStop(kind, {items, gaps}, 0); }

    test::FixedFonts fonts;
    word::ResolvedText look;
    word::ResolvedParagraph format;
    word::ParagraphIndents indents;
    std::vector<TextItem> items;
    std::vector<double> gaps;
};

TEST_F(TabStops, TheNextOneIsMoreThanATwipAway) {
    format.tabStops = {{100, TabStop::Kind::centre, 0}, {200, TabStop::Kind::right, u'.'}};
    EXPECT_EQ(behind(0), format.tabStops[0]);
    EXPECT_EQ(behind(98.9), format.tabStops[0]);
    EXPECT_EQ(behind(99), format.tabStops[1]);
    EXPECT_EQ(behind(198.9), format.tabStops[1]);
    EXPECT_EQ(behind(199), (TabStop{420, TabStop::Kind::left, 0}));
}

TEST_F(TabStops, ABarIsNone) {
    format.tabStops = {{100, TabStop::Kind::bar, 0}, {200, TabStop::Kind::left, 0}};
    EXPECT_EQ(behind(0).at, 200);
}

TEST_F(TabStops, DefaultOnesStandAtMultiplesOfTheirDistance) {
    EXPECT_EQ(behind(0).at, 420);
    EXPECT_EQ(behind(418.9).at, 420);
    EXPECT_EQ(behind(419).at, 840);
    EXPECT_EQ(behind(420).at, 840);
    EXPECT_EQ(behind(-300).at, 0);
    EXPECT_EQ(behind(10, 0).at, 12) << "of a twip at least";
    EXPECT_EQ(behind(10, 720).kind, TabStop::Kind::left);
}

TEST_F(TabStops, AHangingParagraphHasOneWhereItsTextBegins) {
    indents.left = 400;
    EXPECT_EQ(behind(0).at, 420) << "it does not hang";
    indents.firstLine = -400;
    EXPECT_EQ(behind(0).at, 400);
    EXPECT_EQ(behind(398.9).at, 400);
    EXPECT_EQ(behind(399).at, 420);
    format.tabStops = {{500, TabStop::Kind::right, 0}};
    EXPECT_EQ(behind(0), (TabStop{400, TabStop::Kind::left, 0}));
    format.tabStops = {{300, TabStop::Kind::right, 0}, {500, TabStop::Kind::right, 0}};
    EXPECT_EQ(behind(0).at, 300);
    EXPECT_EQ(behind(300).at, 400);
    EXPECT_EQ(behind(400).at, 500);
}

TEST_F(TabStops, WhatStandsInFrontOfOneEndsWithTheNextTabOrTheLine) {
    typeBehindTab(U"12.34\t5");
    EXPECT_DOUBLE_EQ(before(TabStop::Kind::right), 550);
    EXPECT_DOUBLE_EQ(before(TabStop::Kind::centre), 275);
    EXPECT_DOUBLE_EQ(before(TabStop::Kind::decimal), 220);
    EXPECT_DOUBLE_EQ(before(TabStop::Kind::left), 0);
    typeBehindTab(U"1\v2.");
    EXPECT_DOUBLE_EQ(before(TabStop::Kind::right), 110);
    EXPECT_DOUBLE_EQ(before(TabStop::Kind::decimal), 110);
    typeBehindTab(U"");
    EXPECT_DOUBLE_EQ(before(TabStop::Kind::right), 0);
}

TEST_F(TabStops, ALeaderEndsWithItsTab) {
    TextItem tab;
    tab.character = U'.';
    tab.size = 200;
    tab.format = &look;
    tab.width = 250;
    const auto leader = leaderOf(tab, 1000, 160, fonts, false);
    ASSERT_TRUE(leader);
    EXPECT_EQ(leader->text, u"..");
    EXPECT_DOUBLE_EQ(leader->x, 1050);
    EXPECT_DOUBLE_EQ(leader->baseline, 160);
    EXPECT_EQ(leader->advances, (std::vector<float>{100, 100}));
}

TEST_F(TabStops, LeadersOfTheOfficeSuiteFillATabOfWholeTwips) {
    TextItem tab;
    tab.character = U'.';
    tab.size = 200;
    tab.format = &look;
    tab.width = 599.6;
    EXPECT_EQ(leaderOf(tab, 0, 0, fonts, false)->text.size(), 5U);
    EXPECT_EQ(leaderOf(tab, 0, 0, fonts, true)->text.size(), 6U);
    tab.width = 599.4;
    EXPECT_EQ(leaderOf(tab, 0, 0, fonts, true)->text.size(), 5U);
}

TEST_F(TabStops, LeadersOfTheOfficeSuiteAreSpreadOverTheTab) {
    TextItem tab;
    tab.character = U'.';
    tab.size = 200;
    tab.format = &look;
    tab.width = 250;
    const auto dots = leaderOf(tab, 1000, 160, fonts, true);
    ASSERT_TRUE(dots);
    EXPECT_DOUBLE_EQ(dots->x, 1000);
    EXPECT_EQ(dots->advances, (std::vector<float>{125, 125}));
    tab.character = U'_';
    const auto line = leaderOf(tab, 1000, 160, fonts, true);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->text, u"___");
    EXPECT_DOUBLE_EQ(line->x, 1000);
    EXPECT_FLOAT_EQ(line->advances.at(2), 250.0F / 3);
    EXPECT_EQ(leaderOf(tab, 1000, 160, fonts, false)->text, u"__");
}

TEST_F(TabStops, ALeaderWithoutAWidthOrWithoutRoomIsNone) {
    TextItem tab;
    tab.character = U'.';
    tab.size = 200;
    tab.format = &look;
    const auto hasLeader = [&](double width) {
        tab.width = width;
        return leaderOf(tab, 0, 0, fonts, false).has_value();
    };
    EXPECT_TRUE(hasLeader(100));
    EXPECT_FALSE(hasLeader(99));
    EXPECT_FALSE(hasLeader(0));
    tab.size = 0;
    EXPECT_FALSE(hasLeader(100));
    tab.size = 200;
    tab.character = 0;
    EXPECT_FALSE(hasLeader(100));
}

} // namespace
} // namespace qvnd::layout
