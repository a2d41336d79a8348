// What has room in a column to the twip, and columns of one height.

#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/layout/ColumnFlow.h"

#include <gtest/gtest.h>

#include <vector>

namespace qvnd::layout {
namespace {

using word::withSprm16;
using word::withSprm8;
namespace sprm = word::sprm;

// A paragraph of lines of 100 twips, of which none may stand alone.
Strips linesOf(std::size_t paragraph, std::size_t lines) {
    Strips strips(lines);
    for (std::size_t i = 0; i < lines; ++i) {
        strips[i].height = 100;
        strips[i].paragraph = paragraph;
        strips[i].line = i;
        strips[i].lines = lines;
        strips[i].controlsWidows = true;
    }
    return strips;
}

std::vector<std::size_t> sizesOf(const std::vector<std::vector<FlowedStrip>>& columns) {
    std::vector<std::size_t> sizes;
    sizes.reserve(columns.size());
    for (const auto& column : columns) {
        sizes.push_back(column.size());
    }
    return sizes;
}

TEST(FittingStrips, MayBeATwipTooHigh) {
    EXPECT_EQ(countOfFitting(linesOf(0, 4), 0, 399, true), 4U);
    EXPECT_EQ(countOfFitting(linesOf(0, 4), 0, 398.5, true), 2U) << "a last line stays not alone";
}

TEST(FittingStrips, MayEndWithTheLastOfAllWhateverItIs) {
    Strips strips = linesOf(0, 3);
    strips.pop_back(); // which would leave a line alone
    EXPECT_EQ(countOfFitting(strips, 0, 1000, true), 2U);
    strips.back().keepsWithNext = strips.back().keepsLines = true;
    EXPECT_EQ(countOfFitting(strips, 0, 1000, true), 2U);
}

TEST(FittingStrips, CountTheSpaceAboveTheFirstAndBetweenTheOthers) {
    Strips strips;
    for (std::size_t i = 0; i < 3; ++i) {
        strips.push_back(linesOf(i, 1)[0]);
        strips[i].before = 20;
        strips[i].after = 30;
    }
    EXPECT_EQ(countOfFitting(strips, 0, 20 + 100 + 50 + 100 - 1, true), 2U);
    EXPECT_EQ(countOfFitting(strips, 0, 20 + 100 + 50 + 100 - 2, true), 1U);
    EXPECT_EQ(countOfFitting(strips, 0, 20 + 100 + 30 + 100 - 1, false), 2U);
    EXPECT_EQ(countOfFitting(strips, 1, 20 + 100 - 1, true), 1U) << "no space of the one before";
    EXPECT_EQ(countOfFitting(strips, 1, 20 + 100 - 2, true), 0U);
}

// Behind a line that leaves 149 twips: the height that the notes take of them.
double notesBehindALine(double whole) {
    ColumnFlow flow(true, [&](std::uint32_t, bool) { return NoteRoom{whole, 100}; });
    flow.begin(1000, false, 0);
    Strip line = linesOf(0, 1)[0];
    line.height = 851;
    line.notes = {0};
    Strips overflow;
    EXPECT_TRUE(flow.add(line, overflow));
    return flow.notesHeight();
}

TEST(NotesOfAColumn, StandWholeThoughTheyAreATwipTooHigh) {
    EXPECT_DOUBLE_EQ(notesBehindALine(120), 120);
    EXPECT_DOUBLE_EQ(notesBehindALine(150), 150);
    EXPECT_DOUBLE_EQ(notesBehindALine(151), 149) << "a part has what is free";
}

TEST(BalancedColumns, AreAsHighAsTheHighestThatStandsInThem) {
    std::vector<std::vector<FlowedStrip>> columns(3);
    Strip high = linesOf(0, 1)[0];
    high.height = 500;
    columns[0].push_back({high, 0});
    for (std::size_t i = 1; i < 5; ++i) {
        columns[0].push_back({linesOf(i, 1)[0], 400 + 100.0 * static_cast<double>(i)});
    }
    EXPECT_EQ(sizesOf(balanced(columns, 1000, false, true)), (std::vector<std::size_t>{1, 4}));
}

TEST(BalancedColumns, AreNoMoreThanThereWere) {
    std::vector<std::vector<FlowedStrip>> columns(2);
    for (std::size_t i = 0; i < 5; ++i) {
        columns[0].push_back({linesOf(i, 1)[0], 100.0 * static_cast<double>(i)});
    }
    EXPECT_EQ(sizesOf(balanced(columns, 1000, false, true)), (std::vector<std::size_t>{3, 2}));
    columns[0][1].strip.endsColumn = true;
    EXPECT_EQ(sizesOf(balanced(columns, 1000, false, true)), (std::vector<std::size_t>{2, 3}));
}

class SectionColumns : public test::PagedDocument {
protected:
    SectionColumns() {
        const word::Bytes two = withSprm16(section(), sprm::SCcolumns, 1);
        document.sections[0].properties = intern(withSprm16(two, sprm::SDxaColumns, 200));
    }
    // The lines of that section stand in columns of one height above another one.
    Page balancedPage(std::size_t page) {
        nextSection(withSprm8(section(), sprm::SBkc, 0));
        type(u"下\r");
        return pages().at(page);
    }
    word::Bytes spaced = withSprm16({}, sprm::PDyaBefore, 200);
};

TEST_F(SectionColumns, TheSpaceAboveTheirFirstLineStaysThoughTheSecondGoesOnInAParagraph) {
    type(u"首\r", spaced);
    paragraphs(11);
    const Page page = balancedPage(0);
    EXPECT_DOUBLE_EQ(textAt(page, u"首").baseline, 1000 + 200 + 160);
    EXPECT_DOUBLE_EQ(page.layer.texts.at(6).x, 1000 + 900 + 200);
    EXPECT_DOUBLE_EQ(page.layer.texts.at(6).baseline, 1000 + 160);
}

TEST_F(SectionColumns, ThatGoOnFromAnotherPageHaveNoSpaceAboveTheirFirstLine) {
    paragraphs(20);
    type(u"首\r", spaced);
    paragraphs(3);
    const Page page = balancedPage(1);
    EXPECT_DOUBLE_EQ(textAt(page, u"首").baseline, 1000 + 160);
    EXPECT_DOUBLE_EQ(textAt(page, u"下").baseline, 1000 + 2 * 200 + 160);
}

// All of it is hidden.
TEST_F(SectionColumns, ASectionThatShowsNothingHasNoPage) {
    type(u"甲\r");
    main.characters.back().properties = intern(withSprm8({}, sprm::CFVanish, 1));
    nextSection(withSprm16(section(), sprm::SYaPage, 5000));
    type(u"乙\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(textOf(found[0]), u"乙");
    EXPECT_DOUBLE_EQ(found[0].height, 5000);
    EXPECT_EQ(found[0].number, 1);
}

TEST_F(SectionColumns, APageWithNothingOnItIsThatOfTheSectionThatGoesOnThere) {
    type(u"甲\r");
    main.characters.back().properties = intern(withSprm8({}, sprm::CFVanish, 1));
    const word::Bytes next = withSprm8(withSprm8(section(), sprm::SBkc, 0), sprm::SFPgnRestart, 1);
    nextSection(withSprm16(next, sprm::SPgnStart97, 7));
    type(u"乙\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].number, 7);
}

TEST_F(SectionColumns, ABreakOfAColumnPutsTheRestInTheNextOne) {
    type(u"甲\u000E乙\u000E丙\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(textOf(found[0]), u"甲乙");
    EXPECT_EQ(textOf(found[1]), u"丙") << "there are two columns";
    EXPECT_DOUBLE_EQ(textAt(found[0], u"乙").x, 1000 + 900 + 200);
    EXPECT_DOUBLE_EQ(textAt(found[0], u"乙").baseline, 1000 + 160);
    EXPECT_DOUBLE_EQ(textAt(found[1], u"丙").x, 1000);
}

} // namespace
} // namespace qvnd::layout
