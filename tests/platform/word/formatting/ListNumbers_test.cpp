#include "platform/word/formatting/ListNumbers.h"

#include "support/ContentBuilder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qvnd::word {
namespace {

constexpr std::uint8_t inChinese = 39;
constexpr std::uint8_t inDigits = 0;
constexpr std::uint8_t byTab = 0;
constexpr std::uint8_t byBlank = 1;
constexpr std::uint8_t legal = 0x04;          // fLegal of LVLF
constexpr std::uint8_t limitedRestart = 0x08; // fNoRestart, with ilvlRestartLim

// A level that starts at 1; characters below 9 stand for the numbers of the levels.
ListLevel levelOf(std::uint8_t form, std::uint8_t follows, std::u16string text) {
    ListLevel level;
    level.head[0] = 1;
    level.head[4] = form;
    level.head[15] = follows;
    std::size_t place = 6;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] < 9) {
            level.head[place++] = static_cast<std::uint8_t>(i + 1);
        }
    }
    level.text = std::move(text);
    return level;
}

// A list of two levels: "第%1章" and below it "%1.%2".
class ListLabels : public testing::Test {
protected:
    ListLabels() {
        list.lsid = 77;
        list.linkedStyles.fill(StyleDefinition::none);
        list.levels.assign(9, levelOf(inDigits, byTab, u""));
        list.levels[0] = levelOf(inChinese, byBlank, {u'第', 0, u'章'});
        list.levels[1] = levelOf(inDigits, byTab, {0, u'.', 1});
    }
    // The labels of paragraphs at these levels, with what follows each.
    std::vector<std::u16string> labels(const std::vector<std::uint8_t>& levels) {
        test::ContentBuilder builder;
        builder.content.tables.listDefinitions.push_back(list);
        builder.content.tables.listOverrides.push_back({list.lsid, 0, 0, {}});
        ListLevels known(builder.content.tables);
        ListNumbers numbers(builder.content.tables, known);
        std::vector<std::u16string> result;
        for (const std::uint8_t level : levels) {
            const auto label = numbers.next(1, level);
            result.push_back(label ? label->text + label->follows : u"none");
        }
        return result;
    }

    ListDefinition list;
};

TEST_F(ListLabels, ListsCountTheirNumbersLevelByLevel) {
    EXPECT_EQ(
        labels({0, 1, 1, 0, 1}),
        (std::vector<std::u16string>{u"第一章 ", u"一.1\t", u"一.2\t", u"第二章 ", u"二.1\t"}));
}

TEST_F(ListLabels, TheNumbersOfALabelAreToldWithWhatStandsBetweenThem) {
    list.levels[1] = levelOf(inDigits, byTab, {u'(', 0, u'.', 1, u')'});
    test::ContentBuilder builder;
    builder.content.tables.listDefinitions.push_back(list);
    builder.content.tables.listOverrides.push_back({list.lsid, 0, 0, {}});
    ListLevels known(builder.content.tables);
    ListNumbers numbers(builder.content.tables, known);
    EXPECT_EQ(numbers.next(1, 0)->numbers, u"一");
    EXPECT_EQ(numbers.next(1, 1)->numbers, u"一.1");
    EXPECT_EQ(numbers.next(1, 2), std::nullopt);
}

TEST_F(ListLabels, ALevelInLegalFormShowsAllItsNumbersInDigits) {
    list.levels[1].head[5] = legal;
    EXPECT_EQ(labels({0, 0, 1}), (std::vector<std::u16string>{u"第一章 ", u"第二章 ", u"2.1\t"}));
}

TEST_F(ListLabels, ALevelGoesOnBehindTheLevelsFromItsLimitOn) {
    list.levels[2] = levelOf(inDigits, byBlank, {2, u')'});
    list.levels[2].head[5] = limitedRestart;
    list.levels[2].head[26] = 1; // the first level that does not make it begin anew
    EXPECT_EQ(labels({0, 1, 2, 1, 2, 0, 2}),
              (std::vector<std::u16string>{u"第一章 ", u"一.1\t", u"1) ", u"一.2\t", u"2) ",
                                           u"第二章 ", u"1) "}));
}

TEST_F(ListLabels, ALevelThatTheListDoesNotHaveGivesNoLabel) {
    EXPECT_EQ(labels({12}), (std::vector<std::u16string>{u"none"}));
}

TEST_F(ListLabels, ALevelThatHasNotBegunCountsAsItsStart) {
    list.levels[0].head[0] = 3;
    EXPECT_EQ(labels({1, 0, 1}), (std::vector<std::u16string>{u"三.1\t", u"第四章 ", u"四.1\t"}));
}

TEST_F(ListLabels, ALevelBeginsWithTheFirstParagraphOfADeeperOneThatDoesNotShowIt) {
    list.levels[1] = levelOf(inDigits, byBlank, {1, u')'});
    list.levels[2] = levelOf(inDigits, byBlank, {2, u')'});
    EXPECT_EQ(
        labels({0, 2, 1, 1, 0, 1}),
        (std::vector<std::u16string>{u"第一章 ", u"1) ", u"2) ", u"3) ", u"第二章 ", u"1) "}));
}

TEST_F(ListLabels, ALevelWithoutNumbersShowsNone) {
    list.levels[0].head[4] = 0xFF;
    EXPECT_EQ(labels({0, 1}), (std::vector<std::u16string>{u"第章 ", u".1\t"}));
    list.levels[1].head[5] = legal;
    EXPECT_EQ(labels({0, 1}), (std::vector<std::u16string>{u"第章 ", u"1.1\t"}));
}

TEST_F(ListLabels, ABulletIsShownAsItStands) {
    list.levels[0] = levelOf(23, 2, {0xF0B7, 3});
    const std::u16string shown{0xF0B7, 3, 0};
    EXPECT_EQ(labels({0}), std::vector{shown});
}

TEST_F(ListLabels, ANumberOfALevelThatTheListDoesNotHaveIsOneInDigits) {
    list.levels.assign(1, levelOf(inChinese, byBlank, {0, u'.', 1}));
    EXPECT_EQ(labels({0, 0}), (std::vector<std::u16string>{u"一.1 ", u"二.1 "}));
}

// A list of one style of numbers, "1.", used through several overrides.
class OverriddenLists : public testing::Test {
protected:
    OverriddenLists() {
        ListDefinition list;
        list.lsid = 77;
        list.levels.assign(9, levelOf(inDigits, byTab, {0, u'.'}));
        list.levels[1] = levelOf(inDigits, byTab, {1, u'.'});
        builder.content.tables.listDefinitions.push_back(list);
    }
    void addOverride(std::vector<ListLevelOverride> levels) {
        builder.content.tables.listOverrides.push_back({77, 0, 0, std::move(levels)});
    }
    // The labels of paragraphs of these overrides and levels.
    std::vector<std::u16string>
    labels(const std::vector<std::pair<std::uint16_t, std::uint8_t>>& paragraphs) {
        ListLevels known(builder.content.tables);
        ListNumbers numbers(builder.content.tables, known);
        std::vector<std::u16string> result;
        for (const auto& [ilfo, level] : paragraphs) {
            const auto label = numbers.next(ilfo, level);
            result.push_back(label ? label->text : u"none");
        }
        return result;
    }

    static constexpr std::uint32_t starts = 0x10;  // fStartAt of LFOLVL
    static constexpr std::uint32_t formats = 0x20; // fFormatting
    test::ContentBuilder builder;
};

TEST_F(OverriddenLists, OverridesOfAListCountTogether) {
    addOverride({});
    addOverride({});
    EXPECT_EQ(labels({{1, 0}, {2, 0}, {1, 0}}), (std::vector<std::u16string>{u"1.", u"2.", u"3."}));
}

TEST_F(OverriddenLists, AnOverrideMayStartAnewWhereItIsFirstUsed) {
    addOverride({});
    addOverride({{5, starts, std::nullopt}});
    EXPECT_EQ(labels({{1, 0}, {2, 0}, {2, 0}, {1, 0}}),
              (std::vector<std::u16string>{u"1.", u"5.", u"6.", u"7."}));
}

TEST_F(OverriddenLists, AStartIsThatOfTheLevelThatItNames) {
    addOverride({{5, starts | 1U, std::nullopt}, {8, 0, std::nullopt}});
    EXPECT_EQ(labels({{1, 0}, {1, 1}, {1, 1}}), (std::vector<std::u16string>{u"1.", u"5.", u"6."}));
}

TEST_F(OverriddenLists, ALevelOfItsOwnStartsAsItSaysItself) {
    ListLevel own = levelOf(inDigits, byTab, {0, u')'});
    own.head[0] = 7;
    addOverride({{5, starts | formats, own}});
    EXPECT_EQ(labels({{1, 0}}), (std::vector<std::u16string>{u"7)"}));
}

TEST_F(OverriddenLists, ALevelOfItsOwnIsTakenWhereTheOverrideSaysSo) {
    addOverride({{5, starts, levelOf(inDigits, byTab, {0, u')'})}});
    EXPECT_EQ(labels({{1, 0}}), (std::vector<std::u16string>{u"5."}));
}

TEST_F(OverriddenLists, ALevelOfItsOwnStandsForTheOneThatItNames) {
    addOverride({{5, formats | 1U, levelOf(inDigits, byTab, {1, u')'})}});
    EXPECT_EQ(labels({{1, 0}, {1, 1}}), (std::vector<std::u16string>{u"1.", u"1)"}));
}

TEST_F(OverriddenLists, AParagraphOfNoListHasNoLabel) {
    addOverride({});
    EXPECT_EQ(labels({{0, 0}, {2, 0}, {1, 8}, {1, 9}}),
              (std::vector<std::u16string>{u"none", u"none", u"1.", u"none"}));
}

TEST_F(OverriddenLists, AHiddenListShowsNoLabelsAndCountsNothing) {
    addOverride({});
    EXPECT_EQ(labels({{1, 0}, {0xFFFF, 0}, {1, 0}}),
              (std::vector<std::u16string>{u"1.", u"none", u"2."}));
}

TEST(ListIndexes, OfHiddenNumbersAreThoseOfTheirLists) {
    EXPECT_EQ(listIndexOf(0), noList);
    EXPECT_EQ(listIndexOf(1), 1);
    EXPECT_EQ(listIndexOf(0x07FE), 0x07FE);
    EXPECT_EQ(listIndexOf(0x07FF), noList) << "numbered as Word 95 does";
    EXPECT_EQ(listIndexOf(0xF801), noList);
    EXPECT_EQ(listIndexOf(0xF802), 0x07FE);
    EXPECT_EQ(listIndexOf(0xFFFE), 2);
    EXPECT_EQ(listIndexOf(0xFFFF), 1);
}

TEST_F(OverriddenLists, AHiddenNumberKeepsTheIndentsOfItsList) {
    builder.content.tables.listDefinitions.push_back(builder.content.tables.listDefinitions[0]);
    builder.content.tables.listDefinitions[1].lsid = 78;
    addOverride({});
    builder.content.tables.listOverrides.push_back({78, 0, 0, {}});
    ListLevels levels(builder.content.tables);
    const auto& definitions = builder.content.tables.listDefinitions;
    EXPECT_EQ(levels.level(0xFFFF, 0), &definitions[0].levels[0]);
    EXPECT_EQ(levels.level(0xFFFE, 3), &definitions[1].levels[3]);
    EXPECT_EQ(levels.level(0xFFFD, 0), nullptr);
    EXPECT_EQ(levels.level(2, 8), &definitions[1].levels[8]);
    EXPECT_EQ(levels.level(2, 9), nullptr);
    EXPECT_EQ(levels.level(3, 0), nullptr);
}

TEST_F(OverriddenLists, ALabelBeginsAtItsPlaceStandsAroundItOrEndsThere) {
    addOverride({});
    const auto partBefore = [this](std::uint8_t jc) {
        builder.content.tables.listDefinitions[0].levels[0].head[5] = jc;
        ListLevels known(builder.content.tables);
        return ListNumbers(builder.content.tables, known).next(1, 0)->partBefore;
    };
    EXPECT_DOUBLE_EQ(partBefore(0), 0);
    EXPECT_DOUBLE_EQ(partBefore(1), 0.5);
    EXPECT_DOUBLE_EQ(partBefore(2), 1);
    EXPECT_DOUBLE_EQ(partBefore(3), 1);
    EXPECT_DOUBLE_EQ(partBefore(limitedRestart), 0);
}

} // namespace
} // namespace qvnd::word
