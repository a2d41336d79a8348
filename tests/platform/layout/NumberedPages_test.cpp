// Page numbers, page counts, and the pages of lines.

#include "platform/error/Utf8.h"
#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/format/Dop.h"
#include "platform/word/layout/DocumentRules.h"
#include "platform/word/layout/LinePlaces.h"
#include "platform/word/layout/PageCounts.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm8;
namespace sprm = word::sprm;

class NumberedPages : public test::PagedDocument {};

TEST_F(NumberedPages, LinesTellTheirPagesAndNumbers) {
    paragraphs(25);
    pages();
    const auto& lines = layout->lines();
    ASSERT_EQ(lines.size(), 25U);
    EXPECT_EQ(lines[9].sheet, 0);
    EXPECT_EQ(lines[10].sheet, 1);
    EXPECT_EQ(lines[10].number, 2);
    EXPECT_EQ(lines[24].sheet, 2);
}

TEST_F(NumberedPages, APageFieldShowsTheNumberOfItsPage) {
    paragraphs(12);
    putFieldFooter(u"PAGE", 0x21);
    const auto found = pages();
    EXPECT_EQ(textOf(found[0])[0], u'1');
    EXPECT_EQ(textOf(found[1])[0], u'2');
    EXPECT_EQ(textOf(found[1]).find(u"PAGE"), std::u16string::npos);
}

TEST_F(NumberedPages, APageFieldHasTheNumberFormThatItAsksFor) {
    paragraphs(12);
    for (const auto& [code, shown] :
         {std::pair(u"PAGE \\* ROMAN", u"II"), std::pair(u"PAGE \\* roman \\* MERGEFORMAT", u"ii"),
          std::pair(u"PAGE  \\* CHINESENUM3", u"二"), std::pair(u"PAGE \\* ArabicDash", u"- 2 -"),
          std::pair(u"PAGE \\* MERGEFORMAT", u"2")}) {
        putFieldFooter(code, 0x21);
        const std::u16string text = textOf(pages().at(1));
        EXPECT_TRUE(text.starts_with(shown)) << toUtf8(text);
    }
}

TEST_F(NumberedPages, ASectionThatBeginsWithinAPageGivesThatPageItsFirstNumber) {
    type(u"甲\r");
    nextSection(withSprm16(withSprm8(withSprm8(section(), sprm::SBkc, 0), sprm::SFPgnRestart, 1),
                           sprm::SPgnStart97, 7));
    paragraphs(12);
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].number, 1) << "its headers are those of the section above";
    EXPECT_EQ(found[1].number, 8);
    EXPECT_EQ(layout->lines()[0].number, 1);
    EXPECT_EQ(layout->lines()[1].number, 7);
    EXPECT_EQ(layout->lines().back().number, 8);
}

TEST_F(NumberedPages, AContinuousSectionThatHasNoRoomOnThePageBeginsOnTheNext) {
    paragraphs(10);
    nextSection(withSprm16(withSprm8(withSprm8(section(), sprm::SBkc, 0), sprm::SFPgnRestart, 1),
                           sprm::SPgnStart97, 7));
    paragraphs(1);
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[1].number, 7);
    EXPECT_EQ(textOf(found[1]), u"一");
}

TEST_F(NumberedPages, PageCountsAreShownWhereverTheirFieldsStand) {
    paragraphs(12);
    main.text.insert(0, u"\x13NUMPAGES\x14"
                        u"9\x15");
    main.characters.insert(main.characters.begin(), {12, {}});
    main.paragraphs[0].length += 12;
    document.sections[0].length += 12;
    main.fields = {{0, 0x13, 0x1A}, {9, 0x14, 0}, {11, 0x15, 0}};
    EXPECT_TRUE(textOf(pages().at(0)).starts_with(u"1一"));
    EXPECT_TRUE(layout->showsPageCounts());
    const auto counts = layout->correctedCounts();
    ASSERT_TRUE(counts);
    options.counts = *counts;
    EXPECT_TRUE(textOf(pages().at(0)).starts_with(u"2一"));
    EXPECT_FALSE(layout->correctedCounts());
}

TEST_F(NumberedPages, APageCountIsSeenThoughOtherFieldsFollowIt) {
    type(u"\x13NUMPAGES\x14"
         u"9\x15\x13PAGE\x14"
         u"1\x15\r");
    main.fields = {{0, 0x13, 0x1A},  {9, 0x14, 0},  {11, 0x15, 0},
                   {12, 0x13, 0x21}, {17, 0x14, 0}, {19, 0x15, 0}};
    pages();
    EXPECT_TRUE(layout->showsPageCounts());
}

TEST_F(NumberedPages, ANoteShowsThePageCountToo) {
    type(u"甲\x02\r");
    putFootnote(1, u"\x13NUMPAGES\x14"
                   u"9\x15\r");
    auto note = std::make_shared<word::Story>(*document.tables.sideStories[0].text);
    note->fields = {{0, 0x13, 0x1A}, {9, 0x14, 0}, {11, 0x15, 0}};
    document.tables.sideStories[0].text = note;
    options.counts.total = 37;
    EXPECT_TRUE(textOf(pages().at(0)).ends_with(u"37"));
    EXPECT_TRUE(layout->showsPageCounts());
}

TEST_F(NumberedPages, SectionPagesAreThoseOnWhichTheSectionStands) {
    paragraphs(12);
    putFieldFooter(u"SECTIONPAGES", 0x42);
    nextSection(section());
    paragraphs(3);
    pages();
    const auto counts = layout->correctedCounts();
    ASSERT_TRUE(counts);
    EXPECT_EQ(counts->ofSections, (std::vector<int>{2, 1}));
    options.counts = *counts;
    const auto found = pages();
    EXPECT_EQ(textOf(found[0])[0], u'2');
    EXPECT_EQ(textOf(found[2])[0], u'1');
    EXPECT_FALSE(layout->correctedCounts());
}

TEST_F(NumberedPages, ADocumentThatShowsNoPageCountNeedsNoSecondLook) {
    paragraphs(12);
    pages();
    EXPECT_FALSE(layout->showsPageCounts());
    EXPECT_FALSE(layout->correctedCounts());
}

TEST_F(NumberedPages, EachLineOfACellTellsItsPage) {
    const Bytes inTable = withSprm8({}, sprm::PFInTable, 1);
    const Bytes mark = withSprm8(inTable, sprm::PFTtp, 1);
    for (int cell = 0; cell < 2; ++cell) {
        for (int i = 0; i < 12; ++i) {
            main.text += i < 11 ? u"甲\r" : u"甲\a";
            main.paragraphs.push_back({2, 0, intern(inTable)});
        }
    }
    main.text += u"\a";
    main.paragraphs.push_back({1, 0, intern(mark)});
    main.characters = {{49, {}}};
    type(u"末\r");
    EXPECT_EQ(pages().size(), 2U);
    EXPECT_EQ(placeOf(layout->lines(), 18).sheet, 0);
    EXPECT_EQ(placeOf(layout->lines(), 20).sheet, 1);
    EXPECT_EQ(placeOf(layout->lines(), 24).sheet, 0) << "the second cell begins on the first page";
    EXPECT_EQ(placeOf(layout->lines(), 46).sheet, 1);
}

TEST_F(NumberedPages, APageIsThoughtToTakeSixHundredCharacters) {
    const auto likely = [&](std::size_t length) {
        main = story(std::u16string(length - 1, u'一') + u"\r");
        return likelyPages(sourceOfAll());
    };
    EXPECT_EQ(likely(1), 1);
    EXPECT_EQ(likely(599), 1);
    EXPECT_EQ(likely(600), 2);
    EXPECT_EQ(likely(1200), 3);
}

TEST_F(NumberedPages, ThePagesOfASectionAreCountedFromItsFirstToItsLast) {
    type(u"甲\r");
    putFieldFooter(u"SECTIONPAGES", sectionPagesField);
    PageCounter counter(sourceOfAll(), 2);
    counter.add(0, 0);
    counter.add(0, 3);
    counter.add(1, 5);
    counter.add(1, 3);
    counter.add(1, 4); // again, in whatever order
    const auto counts = counter.corrected({7, {}});
    ASSERT_TRUE(counts);
    EXPECT_EQ(counts->ofSections, (std::vector<int>{4, 3}));
    EXPECT_EQ(counts->total, 7) << "nothing shows it";
    EXPECT_FALSE(counter.corrected(*counts));
    EXPECT_EQ(counts->ofSection(1), 3);
    EXPECT_EQ(counts->ofSection(2), 1);
}

TEST(PlacesOfLines, AreThoseOfTheLastLineThatBeginsNoLater) {
    EXPECT_EQ(placeOf({}, 5).number, 1);
    const std::vector<LinePlace> lines{{10, 0, 1, 0}, {20, 1, 2, 0}, {30, 2, 3, 0}};
    EXPECT_EQ(placeOf(lines, 5).sheet, 0) << "in front of the first";
    EXPECT_EQ(placeOf(lines, 19).sheet, 0);
    EXPECT_EQ(placeOf(lines, 20).sheet, 1);
    EXPECT_EQ(placeOf(lines, 29).sheet, 1);
    EXPECT_EQ(placeOf(lines, 1000).sheet, 2);
}

TEST(PlacesOfLines, StandInOrderAndStayWhereTheyWereFirst) {
    LinePlaces places;
    const auto add = [&](word::Cp at, int sheet) {
        Strip strip;
        strip.at = at;
        places.add(strip, {0, sheet, sheet + 1, 0});
    };
    add(10, 0);
    add(30, 1);
    add(20, 2); // of a cell that goes on
    add(10, 3);
    add(30, 3);
    std::vector<std::pair<word::Cp, int>> found;
    for (const LinePlace& line : places.lines()) {
        found.emplace_back(line.at, line.sheet);
    }
    EXPECT_EQ(found, (std::vector<std::pair<word::Cp, int>>{{10, 0}, {20, 2}, {30, 1}}));
}

// A look at a page far up lays out its lines again.
TEST(PlacesOfLines, AreFoundWithoutAWalkOverAllBehindThem) {
    constexpr word::Cp all = 200'000;
    constexpr word::Cp again = 2'000;
    LinePlaces places;
    Strip strip;
    const auto addUpTo = [&](word::Cp end) {
        const auto begin = std::chrono::steady_clock::now();
        for (strip.at = 0; strip.at < end; ++strip.at) {
            places.add(strip, {});
        }
        return std::chrono::steady_clock::now() - begin;
    };
    const auto first = addUpTo(all);
    auto shortest = addUpTo(again); // a time may hold a pause of the machine
    for (int time = 0; time < 4; ++time) {
        shortest = std::min(shortest, addUpTo(again));
    }
    EXPECT_LT(shortest, first);
    EXPECT_EQ(places.lines().size(), all);
}

class RulesOfDocument : public NumberedPages {
protected:
    DocumentRules rules() { return {sourceOfAll(), options}; }
    void set(const word::DopField& field, std::uint32_t value) {
        word::writeDop(document.settings, field, value);
    }
};

TEST_F(RulesOfDocument, SectionsEndWhereTheNextOnesBegin) {
    type(u"一二\r");
    nextSection(section());
    type(u"三\r");
    EXPECT_EQ(rules().sections().size(), 2U);
    EXPECT_EQ(rules().endOf(0), 3U);
    EXPECT_EQ(rules().endOf(1), 5U);
    document.sections.clear();
    EXPECT_EQ(rules().sections().size(), 1U) << "one at least";
    EXPECT_EQ(rules().endOf(0), 5U);
}

TEST_F(RulesOfDocument, EachFollowsItsSetting) {
    type(u"一\r");
    const LineSetting usual = rules().lineSetting(1234);
    EXPECT_DOUBLE_EQ(usual.width, 1234);
    EXPECT_DOUBLE_EQ(usual.defaultTab, 420);
    EXPECT_TRUE(usual.hasLeading);
    EXPECT_TRUE(usual.compressesPunctuation);
    EXPECT_TRUE(usual.gridInTables);
    EXPECT_TRUE(rules().balancesColumns());
    EXPECT_TRUE(rules().showsRevisions());
    set(word::dop::defaultTab, 720);
    EXPECT_DOUBLE_EQ(rules().lineSetting(1).defaultTab, 720);
    set(word::dop::defaultTab, 0);
    EXPECT_DOUBLE_EQ(rules().lineSetting(1).defaultTab, 420);
    set(word::dop::noLeading, 1);
    EXPECT_FALSE(rules().lineSetting(1).hasLeading);
    set(word::dop::characterSpacing, 0);
    EXPECT_FALSE(rules().lineSetting(1).compressesPunctuation);
    set(word::dop::tableLinesOffGrid, 1);
    EXPECT_FALSE(rules().lineSetting(1).gridInTables);
    set(word::dop::unbalancedColumns, 1);
    EXPECT_FALSE(rules().balancesColumns());
    set(word::dop::showRevisions, 0);
    EXPECT_FALSE(rules().showsRevisions());
}

TEST_F(RulesOfDocument, SpacesAddUpInDocumentsTooOldToSayOtherwise) {
    type(u"一\r");
    set(word::dop::addsParagraphSpaces, 0);
    EXPECT_FALSE(rules().addsSpaces());
    const word::Bytes whole = document.settings;
    document.settings.resize(516);
    EXPECT_FALSE(rules().addsSpaces());
    document.settings.resize(515);
    EXPECT_TRUE(rules().addsSpaces());
    document.settings = whole;
    set(word::dop::addsParagraphSpaces, 1);
    EXPECT_TRUE(rules().addsSpaces());
}

TEST_F(RulesOfDocument, OneGridTakesTheLeadingInTheOfficeSuiteAlone) {
    type(u"一\r");
    document.sections[0].properties = intern(withSprm16(section(), sprm::SClm, 2));
    EXPECT_TRUE(rules().hasLeading());
    options = officeOptions();
    EXPECT_FALSE(rules().hasLeading());
    document.sections[0].properties = intern(section());
    EXPECT_TRUE(rules().hasLeading());
}

} // namespace
} // namespace qvnd::layout
