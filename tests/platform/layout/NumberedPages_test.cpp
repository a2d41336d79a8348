// Page numbers, page counts, and the pages of lines.

#include "platform/error/Utf8.h"
#include "platform/layout/PagedDocument.h"

#include <utility>

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

} // namespace
} // namespace qvnd::layout
