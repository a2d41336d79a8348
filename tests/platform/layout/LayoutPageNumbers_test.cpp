#include "platform/word/layout/LayoutPageNumbers.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/Fields.h"
#include "support/ContentBuilder.h"
#include "support/FixedFonts.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::Cp;
using word::withSprm16;
using word::withSprm8;
namespace sprm = word::sprm;

// Paper with room for ten lines of ten Chinese characters of 10 points.
Bytes paper() {
    Bytes list = withSprm16({}, sprm::SXaPage, 4000);
    list = withSprm16(list, sprm::SYaPage, 4000);
    for (const auto side : {sprm::SDxaLeft, sprm::SDxaRight, sprm::SDyaTop, sprm::SDyaBottom}) {
        list = withSprm16(list, side, 1000);
    }
    return list;
}

using Numbers = std::vector<std::u16string>;

class PageNumbers : public testing::Test {
protected:
    PageNumbers() { builder.content.sections[0].properties = lists().intern(paper()); }

    word::PropertyLists& lists() { return builder.content.tables.lists; }
    void paragraphs(int count, const std::u16string& text = u"一") {
        for (int i = 0; i < count; ++i) {
            builder.add({test::plain(text + u"\r")});
        }
    }
    Numbers at(const std::vector<Cp>& positions) {
        return numbers.displayedPages(builder.content, positions);
    }

    test::ContentBuilder builder;
    test::FixedPageNumbers numbers;
};

TEST_F(PageNumbers, EachPositionHasThePageThatItStandsOn) {
    paragraphs(25);
    EXPECT_EQ(at({0, 19, 20, 39, 40}), (Numbers{u"1", u"1", u"2", u"2", u"3"}));
    EXPECT_EQ(numbers.pages(), 3);
}

TEST_F(PageNumbers, EachPageIsToldAsItIsDone) {
    paragraphs(25);
    std::vector<int> told;
    numbers.watch([&](int pages) {
        told.push_back(pages);
        return true;
    });
    EXPECT_EQ(at({0, 20, 40}), (Numbers{u"1", u"2", u"3"}));
    EXPECT_EQ(told, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(numbers.stoppedBehind(), std::nullopt);
}

TEST_F(PageNumbers, BehindTheLastPageOfAStoppedLayoutTheyFollowTheRoomOfTheText) {
    paragraphs(40);
    numbers.watch([](int pages) { return pages < 2; });
    EXPECT_EQ(at({0, 19, 20, 39, 40, 59, 60}), (Numbers{u"1", u"1", u"2", u"2", u"3", u"3", u"4"}));
    const int estimated = numbers.pages();
    EXPECT_EQ(numbers.stoppedBehind(), 2);
    numbers.watch({});
    EXPECT_EQ(at({60}), (Numbers{u"4"}));
    EXPECT_EQ(estimated, numbers.pages());
    EXPECT_EQ(numbers.stoppedBehind(), std::nullopt);
}

TEST_F(PageNumbers, ClearedTheyTellNothingOfTheDocumentBefore) {
    paragraphs(40);
    numbers.watch([](int pages) { return pages < 2; });
    at({0});
    EXPECT_GT(numbers.pages(), 0);
    EXPECT_TRUE(numbers.stoppedBehind());
    numbers.clear();
    EXPECT_EQ(numbers.pages(), 0);
    EXPECT_EQ(numbers.stoppedBehind(), std::nullopt);
}

TEST_F(PageNumbers, TextThatIsCutIntoSlicesIsLaidOutWhole) {
    paragraphs(1, std::u16string(95, u'一'));
    auto& main = builder.content.main;
    const word::StorySlice whole = main.front();
    main.front().length = 50;
    main.insert(main.begin() + 1, {whole.fragment, 50, whole.length - 50});
    paragraphs(3);
    EXPECT_EQ(at({0, 94, 96}), (Numbers{u"1", u"1", u"2"}));
}

TEST_F(PageNumbers, ASectionThatRestartsCountsFromItsFirstNumber) {
    paragraphs(2);
    auto& sections = builder.content.sections;
    sections[0].length -= 1; // the builder's last paragraph
    sections.push_back({1, lists().intern(withSprm16(withSprm8(paper(), sprm::SFPgnRestart, 1),
                                                     sprm::SPgnStart97, 5))});
    EXPECT_EQ(at({0, 4}), (Numbers{u"1", u"5"}));
}

TEST_F(PageNumbers, ADateTakesTheRoomOfTheDateThatIsShownWhenTheDocumentIsOpened) {
    const std::u16string code = u"DATE \\@ \"'一二三四五六七八九十'yyyy\"";
    word::Story date = *builder.fragment({test::plain(u"\u0013" + code + u"\u0014旧\u0015\r")});
    const auto separator = static_cast<Cp>(code.size() + 1);
    date.fields = {{0, word::fieldBegin, 0x1F},
                   {separator, word::fieldSeparator, 0},
                   {separator + 2, word::fieldEnd, 0}};
    builder.add(std::make_shared<const word::Story>(std::move(date)));
    paragraphs(9);
    const Cp last = builder.content.sections[0].length - 3;
    EXPECT_EQ(at({0, last}), (Numbers{u"1", u"2"}));
}

TEST_F(PageNumbers, PositionsBehindTheTextAreOnTheLastPage) {
    paragraphs(12);
    EXPECT_EQ(at({100000}), (Numbers{u"2"}));
}

TEST_F(PageNumbers, TheyHaveTheNumberFormOfTheirSection) {
    constexpr unsigned smallRoman = 2;
    builder.content.sections[0].properties =
        lists().intern(withSprm8(paper(), sprm::SNfcPgn, smallRoman));
    paragraphs(12);
    EXPECT_EQ(at({0, 20}), (Numbers{u"i", u"ii"}));
}

TEST_F(PageNumbers, TheyHaveTheChapterOfTheirPositionInFront) {
    word::ListDefinition list;
    list.lsid = 77;
    list.levels.resize(9);
    list.levels[0].head[0] = 1;
    list.levels[0].text = {u'第', 0, u'章'};
    builder.content.tables.listDefinitions = {list};
    builder.content.tables.listOverrides = {{77, 0, 0, {}}};
    const Bytes listed = withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, 0);
    builder.content.sections[0].properties =
        lists().intern(withSprm8(withSprm8(paper(), sprm::SiHeadingPgn, 1), sprm::ScnsPgn, 1));
    builder.add({test::plain(u"总则\r")}, 1, listed);
    paragraphs(10);
    builder.add({test::plain(u"施工\r")}, 1, listed);
    EXPECT_EQ(at({0, 1, 21, 23, 26}), (Numbers{u"1.1", u"1.1", u"1.2", u"2.2", u"2.2"}));
}

TEST_F(PageNumbers, AShownPageCountTakesTheRoomOfItsDigits) {
    const std::u16string text = u"一一一一一一一一aa";
    const std::u16string code = u"NUMPAGES";
    word::Story count =
        *builder.fragment({test::plain(text + u"\u0013" + code + u"\u00149\u0015\r")});
    const auto begin = static_cast<Cp>(text.size());
    const auto separator = static_cast<Cp>(begin + code.size() + 1);
    count.fields = {{begin, word::fieldBegin, 0x1A},
                    {separator, word::fieldSeparator, 0},
                    {separator + 2, word::fieldEnd, 0}};
    const Cp length = count.size();
    builder.add(std::make_shared<const word::Story>(std::move(count)));
    paragraphs(9);
    EXPECT_EQ(at({length + 2 * 8}), Numbers{u"1"}) << "2 pages: one digit fits into the line";
    paragraphs(100);
    EXPECT_EQ(at({length + 2 * 7, length + 2 * 8}), (Numbers{u"1", u"2"}))
        << "11 pages: the second digit begins another line";
}

TEST_F(PageNumbers, EachRowOfATableHasThePageThatItStandsOn) {
    const Bytes inTable = withSprm8({}, sprm::PFInTable, 1);
    word::LittleEndianWriter definition; // of one cell
    definition.u16(sprm::TDefTable);
    definition.u16(2 + 2 * 2 + 20);
    definition.u8(1);
    definition.u16(0);
    definition.u16(1000);
    definition.zeros(20);
    Bytes mark = withSprm8(inTable, sprm::PFTtp, 1);
    mark.insert(mark.end(), definition.data().begin(), definition.data().end());
    for (int i = 0; i < 12; ++i) {
        builder.add({test::plain(u"一\a")}, 0, inTable);
        builder.add({test::plain(u"\a")}, 0, mark);
    }
    EXPECT_EQ(at({0, 3 * 5, 3 * 8, 3 * 11}), (Numbers{u"1", u"1", u"1", u"2"}));
}

} // namespace
} // namespace qvnd::layout
