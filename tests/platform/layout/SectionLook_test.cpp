// What a section and the document's settings say of the look of pages: margins of facing pages,
// lines between columns, borders, where the text stands on a page that it does not fill.

#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/format/Dop.h"
#include "platform/word/layout/LinePlaces.h"
#include "platform/word/layout/PageCounts.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;

class SectionLook : public test::PagedDocument {
protected:
    void setSection(const Bytes& list) { document.sections[0].properties = intern(list); }

    // Margins of 600 and 1300 and a gutter of 100.
    static Bytes unevenMargins() {
        Bytes list = withSprm16(section(), sprm::SDxaLeft, 1300);
        list = withSprm16(list, sprm::SDxaRight, 600);
        return withSprm16(list, sprm::SDzaGutter, 100);
    }
    void mirrorMargins() { word::writeDop(document.settings, {6, 5, 1}, 1); }

    static Bytes twoColumns() {
        Bytes list = withSprm16(section(), sprm::SCcolumns, 1);
        list = withSprm16(list, sprm::SDxaColumns, 200);
        return withSprm8(list, sprm::SLBetween, 1);
    }

    // Borders of half a point, that far from what they surround; `depends`: pgbProp.
    static Bytes bordered(unsigned points, unsigned depends) {
        Bytes list = section();
        for (const auto side :
             {sprm::SBrcTop80, sprm::SBrcLeft80, sprm::SBrcBottom80, sprm::SBrcRight80}) {
            list = withSprm32(list, side, 4U | (1U << 8U) | (points << 24U));
        }
        return withSprm16(list, sprm::SPgbProp, depends);
    }

    static constexpr unsigned fromEdge = 1U << 5U; // of SPgbProp
};

TEST_F(SectionLook, MirroredMarginsChangeSidesOnEvenPages) {
    setSection(unevenMargins());
    paragraphs(12);
    EXPECT_DOUBLE_EQ(pages().at(1).layer.texts[0].x, 1400);
    mirrorMargins();
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_DOUBLE_EQ(found[0].layer.texts[0].x, 1400);
    EXPECT_DOUBLE_EQ(found[1].layer.texts[0].x, 600);
}

TEST_F(SectionLook, HeadersAndNotesKeepToMirroredMargins) {
    setSection(withSprm8(withSprm16(unevenMargins(), sprm::SPgnStart97, 8), sprm::SFPgnRestart, 1));
    type(u"甲\x02\r");
    putFootnote(1, u"\x02注\r");
    putHeader(word::HeaderKind::oddHeader, story(u"眉\r"));
    mirrorMargins();
    const Page page = pages().at(0);
    ASSERT_EQ(page.number, 8);
    EXPECT_DOUBLE_EQ(textAt(page, u"眉").x, 600);
    ASSERT_EQ(page.layer.rules.size(), 1U);
    EXPECT_DOUBLE_EQ(page.layer.rules[0].x1, 600);
}

TEST_F(SectionLook, ALineStandsBetweenColumnsAsFarDownAsTheirText) {
    setSection(twoColumns());
    paragraphs(13); // ten in the first column
    const auto rules = pages().at(0).layer.rules;
    ASSERT_EQ(rules.size(), 1U);
    EXPECT_DOUBLE_EQ(rules[0].x1, 1000 + 900 + 100);
    EXPECT_DOUBLE_EQ(rules[0].x2, rules[0].x1);
    EXPECT_DOUBLE_EQ(rules[0].y1, 1000);
    EXPECT_DOUBLE_EQ(rules[0].y2, 3000);
}

TEST_F(SectionLook, NoLineStandsBesideAColumnWithoutText) {
    setSection(twoColumns());
    paragraphs(3);
    EXPECT_TRUE(pages().at(0).layer.rules.empty());
}

TEST_F(SectionLook, ASectionThatBeginsAColumnGoesOnInTheNextOneOfItsPage) {
    setSection(twoColumns());
    paragraphs(2);
    nextSection(withSprm8(twoColumns(), sprm::SBkc, 1));
    paragraphs(1);
    const auto found = pages();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_DOUBLE_EQ(found[0].layer.texts[2].x, 1000 + 900 + 200);
    EXPECT_DOUBLE_EQ(found[0].layer.texts[2].baseline, 1160);
}

TEST_F(SectionLook, ASectionThatBeginsAColumnAndAPageHasItsFirstNumberThere) {
    setSection(twoColumns());
    putFieldFooter(u"SECTIONPAGES", 0x42);
    paragraphs(2);
    Bytes next = withSprm8(withSprm8(twoColumns(), sprm::SBkc, 1), sprm::SFTitlePage, 1);
    next = withSprm16(withSprm8(next, sprm::SFPgnRestart, 1), sprm::SPgnStart97, 7);
    nextSection(next);
    type(u"二\r", withSprm8({}, sprm::PFPageBreakBefore, 1));
    putHeader(word::HeaderKind::firstHeader, story(u"首\r"));
    document.headers.resize(2);
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].number, 1);
    EXPECT_EQ(found[1].number, 7);
    EXPECT_EQ(textOf(found[1]).front(), u'首');
    EXPECT_EQ(layout->correctedCounts().value_or(PageCounts{}).ofSections,
              (std::vector<int>{1, 1}));
}

TEST_F(SectionLook, ASectionThatBeginsAColumnStaysThereWhereAnotherGoesOnBelowIt) {
    setSection(twoColumns());
    paragraphs(1);
    nextSection(withSprm8(twoColumns(), sprm::SBkc, 1));
    type(u"甲\r乙\r丙\r");
    nextSection(withSprm8(twoColumns(), sprm::SBkc, 0));
    type(u"后\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(textAt(page, u"甲").x, 1000 + 900 + 200);
    EXPECT_DOUBLE_EQ(textAt(page, u"后").baseline, textAt(page, u"丙").baseline + 200);
    EXPECT_EQ(layout->lines().size(), 5U);
}

TEST_F(SectionLook, LinesAboveASectionThatBeginsAColumnKeepTheirNumber) {
    constexpr unsigned smallRoman = 2;
    setSection(withSprm8(twoColumns(), sprm::SNfcPgn, smallRoman));
    paragraphs(2);
    Bytes next = withSprm8(withSprm8(twoColumns(), sprm::SBkc, 1), sprm::SFPgnRestart, 1);
    nextSection(withSprm16(next, sprm::SPgnStart97, 7));
    paragraphs(1);
    ASSERT_EQ(pages().size(), 1U);
    const LinePlace above = placeOf(layout->lines(), 2);
    EXPECT_EQ(above.number, 1);
    EXPECT_EQ(above.form, smallRoman);
    const LinePlace below = placeOf(layout->lines(), 4);
    EXPECT_EQ(below.number, 7);
    EXPECT_EQ(below.form, 0U);
}

TEST_F(SectionLook, ASectionThatBeginsAColumnBeginsAPageWhereItsColumnsAreOthers) {
    paragraphs(2);
    nextSection(withSprm8(twoColumns(), sprm::SBkc, 1));
    paragraphs(1);
    EXPECT_EQ(pages().size(), 2U);
}

TEST_F(SectionLook, ASectionThatBeginsAColumnBeginsAPageWhereItsMarginsAreOthers) {
    setSection(twoColumns());
    paragraphs(2);
    Bytes moved = withSprm16(withSprm8(twoColumns(), sprm::SBkc, 1), sprm::SDxaLeft, 1200);
    nextSection(withSprm16(moved, sprm::SDxaRight, 800));
    paragraphs(1);
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_DOUBLE_EQ(found[0].layer.texts[0].x, 1000);
    EXPECT_DOUBLE_EQ(found[1].layer.texts[0].x, 1200);
}

TEST_F(SectionLook, ASectionOnAnOddPageLeavesAnEvenOneEmptyThoughNothingStandsOnIt) {
    type(u"一\r");
    nextSection(section());
    type(u"隐\r");
    main.characters.back().properties = intern(withSprm8({}, sprm::CFVanish, 1));
    nextSection(withSprm8(section(), sprm::SBkc, 4));
    type(u"二\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_TRUE(found[1].layer.texts.empty());
    EXPECT_EQ(textOf(found[2]), u"二");
    EXPECT_EQ(found[2].number, 3);
}

TEST_F(SectionLook, TextMayStandInTheMiddleOfItsPageOrAtItsFoot) {
    paragraphs(2);
    const auto first = [&](unsigned place) {
        setSection(withSprm8(section(), sprm::SVjc, place));
        return pages().at(0).layer.texts[0].baseline;
    };
    EXPECT_DOUBLE_EQ(first(0), 1160);
    EXPECT_DOUBLE_EQ(first(1), 1160 + 800);
    EXPECT_DOUBLE_EQ(first(3), 1160 + 1600);
}

TEST_F(SectionLook, OnlyTheTextOfItsOwnPageCountsForItsPlace) {
    setSection(withSprm8(section(), sprm::SVjc, 1));
    type(u"甲\x02\r");
    paragraphs(9);
    putFootnote(1, u"\x02注\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_LT(found[0].layer.texts[0].baseline, 1160 + 100) << "full but for a part of a line";
    EXPECT_GT(found[1].layer.texts[0].baseline, 1160 + 700);
}

TEST_F(SectionLook, BordersOfAPageStandAroundItsText) {
    setSection(bordered(10, 0));
    paragraphs(1);
    const auto rules = pages().at(0).layer.rules;
    ASSERT_EQ(rules.size(), 4U);
    EXPECT_DOUBLE_EQ(rules[0].y1, 1000 - 200 - 5); // the middle of the upper one
    EXPECT_DOUBLE_EQ(rules[0].x1, 1000 - 200 - 10);
    EXPECT_DOUBLE_EQ(rules[0].x2, 3000 + 200 + 10);
    EXPECT_DOUBLE_EQ(rules[3].x1, 3000 + 200 + 5); // of the right one
    EXPECT_DOUBLE_EQ(rules[3].y2, 3000 + 200 + 10);
}

TEST_F(SectionLook, BordersAroundTheTextMayHoldTheHeaderAndTheFooter) {
    setSection(bordered(10, 0));
    paragraphs(1);
    const auto edges = [&](std::uint32_t header, std::uint32_t footer) {
        word::writeDop(document.settings, word::dop::bordersHoldHeader, header);
        word::writeDop(document.settings, word::dop::bordersHoldFooter, footer);
        const auto rules = pages().at(0).layer.rules;
        EXPECT_EQ(rules.size(), 4U);
        return std::pair(rules.at(0).y1 + 205, rules.at(2).y1 - 205);
    };
    EXPECT_EQ(edges(1, 1), std::pair(1000.0, 3000.0)) << "there are none";
    putHeader(word::HeaderKind::oddHeader, story(u"眉\r"));
    putHeader(word::HeaderKind::oddFooter, story(u"脚\r"));
    EXPECT_EQ(edges(0, 0), std::pair(1000.0, 3000.0));
    EXPECT_EQ(edges(1, 0), std::pair(720.0, 3000.0));
    EXPECT_EQ(edges(0, 1), std::pair(1000.0, 4000.0 - 720.0));
}

TEST_F(SectionLook, BordersMayStandAtADistanceFromTheEdgeOfThePaper) {
    setSection(bordered(24, fromEdge));
    paragraphs(1);
    const auto rules = pages().at(0).layer.rules;
    ASSERT_EQ(rules.size(), 4U);
    EXPECT_DOUBLE_EQ(rules[0].y1, 480 + 5);
    EXPECT_DOUBLE_EQ(rules[1].x1, 480 + 5);
    EXPECT_DOUBLE_EQ(rules[2].y1, 4000 - 480 - 5);
    EXPECT_DOUBLE_EQ(rules[3].x1, 4000 - 480 - 5);
}

TEST_F(SectionLook, BordersStandOnThePagesThatTheSectionSays) {
    paragraphs(12);
    const auto counts = [&](unsigned applies) {
        setSection(bordered(24, fromEdge | applies));
        const auto found = pages();
        return std::vector{found.at(0).layer.rules.size(), found.at(1).layer.rules.size()};
    };
    EXPECT_EQ(counts(0), (std::vector<std::size_t>{4, 4}));
    EXPECT_EQ(counts(1), (std::vector<std::size_t>{4, 0}));
    EXPECT_EQ(counts(2), (std::vector<std::size_t>{0, 4}));
}

} // namespace
} // namespace qvnd::layout
