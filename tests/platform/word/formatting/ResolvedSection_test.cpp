#include "platform/word/formatting/ResolvedSection.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace qvnd::word {
namespace {

unsigned asWord(int value) { return static_cast<std::uint16_t>(value); }

ResolvedSection withWord(SprmOpcode opcode, int value) {
    return resolvedSectionOf(withSprm16({}, opcode, asWord(value)), false);
}
ResolvedSection withByte(SprmOpcode opcode, unsigned value) {
    return resolvedSectionOf(withSprm8({}, opcode, value), false);
}

// A page of 10000 by 10000 twips with margins of 1000 around.
Bytes squarePage() {
    Bytes list;
    for (const SprmOpcode opcode : {sprm::SXaPage, sprm::SYaPage}) {
        list = withSprm16(list, opcode, 10000);
    }
    for (const SprmOpcode opcode :
         {sprm::SDxaLeft, sprm::SDxaRight, sprm::SDyaTop, sprm::SDyaBottom}) {
        list = withSprm16(list, opcode, 1000);
    }
    return list;
}

// A column's number and a length, as sprmSDxaColWidth and sprmSDxaColSpacing have them.
void addColumn(Bytes& list, SprmOpcode opcode, std::uint8_t column, unsigned length) {
    const unsigned number = opcode;
    for (const unsigned byte :
         {number & 0xFF, number >> 8, unsigned{column}, length & 0xFF, length >> 8}) {
        list.push_back(static_cast<std::uint8_t>(byte));
    }
}

TEST(SectionProperties, WithoutAnyThePageIsALetterWithOneColumn) {
    const ResolvedSection plain = resolvedSectionOf({}, false);
    EXPECT_EQ(plain.paper.width, 12240);
    EXPECT_EQ(plain.paper.height, 15840);
    EXPECT_EQ(plain.paper.left, 1800);
    EXPECT_EQ(plain.paper.right, 1800);
    EXPECT_EQ(plain.paper.top, 1440);
    EXPECT_EQ(plain.paper.bottom, 1440);
    EXPECT_EQ(plain.start, ResolvedSection::Start::page);
    ASSERT_EQ(plain.columns.size(), 1U);
    EXPECT_EQ(plain.columns[0].left, 0);
    EXPECT_EQ(plain.columns[0].width, 8640);
    EXPECT_EQ(plain.headerTop, 720);
    EXPECT_EQ(plain.footerBottom, 720);
    EXPECT_EQ(plain.firstNumber, 1);
    EXPECT_EQ(plain.numberForm, 0U);
    EXPECT_EQ(plain.grid, GridKind::none);
    EXPECT_EQ(plain.linePitch, 0);
    EXPECT_EQ(plain.characterSpacing, 0);
    EXPECT_FALSE(plain.lineBetweenColumns || plain.hasTitlePage || plain.topIsFixed ||
                 plain.bottomIsFixed || plain.restartsNumbers || plain.borders.top.visible);
}

TEST(SectionProperties, APageIsAtLeastTwoInchesWideAndHigh) {
    EXPECT_EQ(withWord(sprm::SXaPage, 1439).paper.width, 1440);
    EXPECT_EQ(withWord(sprm::SXaPage, 1441).paper.width, 1441);
    EXPECT_EQ(withWord(sprm::SYaPage, 1439).paper.height, 1440);
    EXPECT_EQ(withWord(sprm::SYaPage, 1441).paper.height, 1441);
}

TEST(SectionProperties, MarginsThatLeaveLessThanHalfAnInchAreMadeEqual) {
    const auto leaving = [](SprmOpcode margin, int room) {
        return resolvedSectionOf(withSprm16(squarePage(), margin, asWord(9000 - room)), false)
            .paper;
    };
    EXPECT_EQ(leaving(sprm::SDxaLeft, 720).left, 8280);
    EXPECT_EQ(leaving(sprm::SDxaLeft, 720).right, 1000);
    EXPECT_EQ(leaving(sprm::SDxaLeft, 719).left, 4640);
    EXPECT_EQ(leaving(sprm::SDxaLeft, 719).right, 4640);
    EXPECT_EQ(leaving(sprm::SDyaTop, 720).top, 8280);
    EXPECT_EQ(leaving(sprm::SDyaTop, 720).bottom, 1000);
    EXPECT_EQ(leaving(sprm::SDyaTop, 719).top, 4640);
    EXPECT_EQ(leaving(sprm::SDyaTop, 719).bottom, 4640);
}

TEST(SectionProperties, ASectionStartsInOneOfFiveWays) {
    using Start = ResolvedSection::Start;
    EXPECT_EQ(withByte(sprm::SBkc, 0).start, Start::continuous);
    EXPECT_EQ(withByte(sprm::SBkc, 1).start, Start::column);
    EXPECT_EQ(withByte(sprm::SBkc, 2).start, Start::page);
    EXPECT_EQ(withByte(sprm::SBkc, 3).start, Start::evenPage);
    EXPECT_EQ(withByte(sprm::SBkc, 4).start, Start::oddPage);
    EXPECT_EQ(withByte(sprm::SBkc, 5).start, Start::oddPage);
    EXPECT_EQ(withByte(sprm::SBkc, 2).columns.size(), 1U);
}

TEST(SectionProperties, AtMost44ColumnsStandBesideEachOther) {
    EXPECT_EQ(withWord(sprm::SCcolumns, 0).columns.size(), 1U);
    EXPECT_EQ(withWord(sprm::SCcolumns, 43).columns.size(), 44U);
    EXPECT_EQ(withWord(sprm::SCcolumns, 44).columns.size(), 44U);
}

TEST(SectionProperties, ColumnsAreHalfAnInchApartUnlessTheSectionSaysOtherwise) {
    Bytes list = withSprm16(squarePage(), sprm::SCcolumns, 1);
    EXPECT_EQ(resolvedSectionOf(list, false).columns[0].width, 3640);
    EXPECT_EQ(resolvedSectionOf(list, false).columns[1].left, 4360);
    list = withSprm16(list, sprm::SDxaColumns, asWord(-100));
    EXPECT_EQ(resolvedSectionOf(list, false).columns[1].left, 4000);
}

TEST(SectionProperties, ColumnsWithoutRoomAreATwipWide) {
    Bytes list = withSprm16(squarePage(), sprm::SCcolumns, 2);
    list = withSprm16(list, sprm::SDxaColumns, 30000);
    const auto columns = resolvedSectionOf(list, false).columns;
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_EQ(columns[0].width, 1);
    EXPECT_EQ(columns[1].left, 30001);
}

TEST(SectionProperties, UnevenColumnsHaveTheirOwnWidthsAndGaps) {
    Bytes list = withSprm16(squarePage(), sprm::SCcolumns, 2);
    addColumn(list, sprm::SDxaColWidth, 0, 0x0102);
    addColumn(list, sprm::SDxaColSpacing, 0, 0x0203);
    addColumn(list, sprm::SDxaColWidth, 2, 900);
    EXPECT_EQ(resolvedSectionOf(list, false).columns[0].width, 2186) << "even until it says so";
    list = withSprm8(list, sprm::SFEvenlySpaced, 0);
    const auto columns = resolvedSectionOf(list, false).columns;
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_EQ(columns[0].width, 0x0102);
    EXPECT_EQ(columns[1].left, 0x0102 + 0x0203);
    EXPECT_EQ(columns[1].width, 2186) << "that of an even one where none is given";
    EXPECT_EQ(columns[2].left, 0x0305 + 2186 + 720);
    EXPECT_EQ(columns[2].width, 900);
}

TEST(SectionProperties, UnevenColumnsWithoutAnyWidthAreEven) {
    Bytes list = withSprm8(withSprm16(squarePage(), sprm::SCcolumns, 1), sprm::SFEvenlySpaced, 0);
    EXPECT_EQ(resolvedSectionOf(list, false).columns[1].width, 3640);
}

TEST(SectionProperties, AWidthOfAColumnBeyondThe44thIsNotTaken) {
    Bytes list = withSprm16(squarePage(), sprm::SCcolumns, 43);
    list = withSprm8(list, sprm::SFEvenlySpaced, 0);
    addColumn(list, sprm::SDxaColWidth, 44, 900);
    EXPECT_EQ(resolvedSectionOf(list, false).columns[43].width, 1);
    addColumn(list, sprm::SDxaColWidth, 43, 900);
    EXPECT_EQ(resolvedSectionOf(list, false).columns[43].width, 900);
}

TEST(SectionProperties, HeadersAndFootersHaveDistancesFromTheEdges) {
    EXPECT_EQ(withWord(sprm::SDyaHdrTop, 851).headerTop, 851);
    EXPECT_EQ(withWord(sprm::SDyaHdrTop, 851).footerBottom, 720);
    EXPECT_EQ(withWord(sprm::SDyaHdrBottom, 992).footerBottom, 992);
    EXPECT_EQ(withWord(sprm::SDyaHdrBottom, 992).headerTop, 720);
}

TEST(SectionProperties, ANegativeBottomMarginStaysWhereItIs) {
    EXPECT_TRUE(withWord(sprm::SDyaBottom, -1440).bottomIsFixed);
    EXPECT_EQ(withWord(sprm::SDyaBottom, -1440).paper.bottom, 1440);
    EXPECT_FALSE(withWord(sprm::SDyaBottom, 1440).bottomIsFixed);
    EXPECT_FALSE(withWord(sprm::SDyaTop, 1440).topIsFixed);
}

TEST(SectionProperties, SwitchesAreOnUnlessTheyAreNought) {
    EXPECT_TRUE(withByte(sprm::SLBetween, 1).lineBetweenColumns);
    EXPECT_FALSE(withByte(sprm::SLBetween, 0).lineBetweenColumns);
    EXPECT_TRUE(withByte(sprm::SFTitlePage, 1).hasTitlePage);
    EXPECT_FALSE(withByte(sprm::SFTitlePage, 0).hasTitlePage);
    EXPECT_TRUE(withByte(sprm::SFPgnRestart, 1).restartsNumbers);
    EXPECT_FALSE(withByte(sprm::SFPgnRestart, 0).restartsNumbers);
}

TEST(SectionProperties, TheFirstNumberMayHaveTwoBytesOrFour) {
    EXPECT_EQ(withWord(sprm::SPgnStart97, 5).firstNumber, 5);
    const auto wide = [](std::uint32_t number) {
        return resolvedSectionOf(withSprm32({}, sprm::SPgnStart, number), false).firstNumber;
    };
    EXPECT_EQ(wide(100000), 100000);
    EXPECT_EQ(wide(0xFFFFFFFF), 0x7FFFFFFF);
    EXPECT_EQ(withByte(sprm::SNfcPgn, 3).numberForm, 3U);
}

TEST(SectionProperties, AChapterOfPageNumbersIsThatOfOneOfNineLevelsWithOneOfFiveSigns) {
    using Sign = ResolvedSection::ChapterSign;
    EXPECT_EQ(withByte(sprm::SFTitlePage, 1).chapterLevel, 0U);
    EXPECT_EQ(withByte(sprm::SiHeadingPgn, 1).chapterLevel, 1U);
    EXPECT_EQ(withByte(sprm::SiHeadingPgn, 9).chapterLevel, 9U);
    EXPECT_EQ(withByte(sprm::SiHeadingPgn, 10).chapterLevel, 0U);
    EXPECT_EQ(withByte(sprm::ScnsPgn, 0).chapterSign, Sign::hyphen);
    EXPECT_EQ(withByte(sprm::ScnsPgn, 4).chapterSign, Sign::enDash);
    EXPECT_EQ(withByte(sprm::ScnsPgn, 5).chapterSign, Sign::hyphen);
}

TEST(SectionProperties, AGridAlignsLinesOrCharactersOrBoth) {
    EXPECT_EQ(withWord(sprm::SClm, 0).grid, GridKind::none);
    EXPECT_EQ(withWord(sprm::SClm, 1).grid, GridKind::linesAndCharacters);
    EXPECT_EQ(withWord(sprm::SClm, 2).grid, GridKind::lines);
    EXPECT_EQ(withWord(sprm::SClm, 3).grid, GridKind::snappedCharacters);
    EXPECT_EQ(withWord(sprm::SClm, 4).grid, GridKind::snappedCharacters);
    EXPECT_EQ(withWord(sprm::SDyaLinePitch, -1).linePitch, 0);
    EXPECT_EQ(withWord(sprm::SDyaLinePitch, 31681).linePitch, 31680);
    EXPECT_EQ(
        resolvedSectionOf(withSprm32({}, sprm::SDxtCharSpace, 0xFFFFFF00), false).characterSpacing,
        -256);
}

TEST(SectionProperties, TextStandsAtThePlaceOnItsPageThatTheSectionSays) {
    using Place = ResolvedSection::TextPlace;
    EXPECT_EQ(resolvedSectionOf({}, false).textPlace, Place::top);
    EXPECT_EQ(withByte(sprm::SVjc, 1).textPlace, Place::centre);
    EXPECT_EQ(withByte(sprm::SVjc, 2).textPlace, Place::justified);
    EXPECT_EQ(withByte(sprm::SVjc, 3).textPlace, Place::bottom);
    EXPECT_EQ(withByte(sprm::SVjc, 4).textPlace, Place::bottom);
}

TEST(SectionProperties, BordersOfPagesHaveTwoSpellingsAndTheLaterOneCounts) {
    constexpr unsigned solid = 1U << 8U; // the kind of a Brc80
    Bytes list;
    for (const SprmOpcode side :
         {sprm::SBrcTop80, sprm::SBrcLeft80, sprm::SBrcBottom80, sprm::SBrcRight80}) {
        list = withSprm32(list, side, 8U | solid);
    }
    const PageBorders old = resolvedSectionOf(list, false).borders;
    EXPECT_TRUE(old.top.visible && old.left.visible && old.bottom.visible && old.right.visible);
    EXPECT_EQ(old.left.width, 20);
    const Bytes brc{8, 0, 0, 0xFF, 0, 16, 1, 24, 0}; // two points wide, 24 points apart
    for (const SprmOpcode side :
         {sprm::SBrcTop, sprm::SBrcLeft, sprm::SBrcBottom, sprm::SBrcRight}) {
        list = withSprm(list, side, brc);
    }
    const PageBorders borders = resolvedSectionOf(list, false).borders;
    for (const Border& side : {borders.top, borders.left, borders.bottom, borders.right}) {
        EXPECT_EQ(side.width, 40);
        EXPECT_EQ(side.space, 480);
        EXPECT_EQ(side.colour, 0x0000FFU);
    }
}

TEST(SectionProperties, BordersMayStandOnSomePagesAndBeMeasuredFromTheirEdge) {
    using Pages = PageBorders::Pages;
    EXPECT_EQ(withWord(sprm::SPgbProp, 0).borders.pages, Pages::all);
    EXPECT_EQ(withWord(sprm::SPgbProp, 1).borders.pages, Pages::first);
    EXPECT_EQ(withWord(sprm::SPgbProp, 2).borders.pages, Pages::allButFirst);
    EXPECT_EQ(withWord(sprm::SPgbProp, 7).borders.pages, Pages::all);
    EXPECT_FALSE(withWord(sprm::SPgbProp, 0x1F).borders.fromEdge);
    EXPECT_TRUE(withWord(sprm::SPgbProp, 0x20).borders.fromEdge);
}

} // namespace
} // namespace qvnd::word
