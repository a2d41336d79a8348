#include "platform/word/formatting/ListNumbers.h"

#include "support/ContentBuilder.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
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

} // namespace
} // namespace qvnd::word
