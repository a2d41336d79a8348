#include "platform/word/layout/ColumnFlow.h"

#include "platform/layout/PlainStrips.h"
#include "platform/word/layout/RowComposer.h"

#include <gtest/gtest.h>

#include <tuple>

namespace qvnd::layout {
namespace {

using test::lineHeight;
using test::paragraph;
using test::rowWith;

constexpr std::uint32_t longNote = 7; // of five lines, of which one may stand by itself

// A column of ten lines.
class Columns : public testing::Test {
protected:
    Columns()
        : flow(true, [](std::uint32_t note, bool first) {
              const double whole = first ? 150.0 : 100.0;
              return NoteRoom{note == longNote ? whole + 400 : whole, whole};
          }) {
        flow.begin(10 * lineHeight, false, 0);
    }

    // Puts strips until the column is full; the number of those that stand in it.
    std::size_t fill(const Strips& strips) {
        for (const Strip& strip : strips) {
            if (!flow.add(strip, overflow)) {
                break;
            }
        }
        return flow.strips().size();
    }

    Strips joined(Strips first, const Strips& second) {
        first.insert(first.end(), second.begin(), second.end());
        return first;
    }

    ColumnFlow flow;
    Strips overflow;
};

TEST_F(Columns, ALineThatDoesNotFitBeginsTheNextColumn) {
    EXPECT_EQ(fill(paragraph(0, 20)), 10U);
    ASSERT_EQ(overflow.size(), 1U);
    EXPECT_EQ(overflow[0].line, 10U);
}

TEST_F(Columns, TheLastLineOfAParagraphNeverStandsAlone) {
    EXPECT_EQ(fill(paragraph(0, 11)), 9U);
    EXPECT_EQ(overflow.size(), 2U);
}

TEST_F(Columns, TheFirstLineOfAParagraphNeverStandsAlone) {
    EXPECT_EQ(fill(joined(paragraph(0, 9), paragraph(1, 4))), 9U);
    EXPECT_EQ(overflow.size(), 2U);
}

TEST_F(Columns, LinesMayStandAloneWhereWidowsAreNotControlled) {
    Strips strips = paragraph(0, 11);
    for (Strip& strip : strips) {
        strip.controlsWidows = false;
    }
    EXPECT_EQ(fill(strips), 10U);
}

TEST_F(Columns, AParagraphThatStaysWholeMovesWhole) {
    Strips second = paragraph(1, 4);
    for (Strip& strip : second) {
        strip.keepsLines = true;
    }
    EXPECT_EQ(fill(joined(paragraph(0, 8), second)), 8U);
    EXPECT_EQ(overflow.size(), 3U);
}

TEST_F(Columns, AHeadingGoesWithWhatFollowsIt) {
    Strips heading = paragraph(1, 1);
    heading[0].keepsWithNext = true;
    EXPECT_EQ(fill(joined(joined(paragraph(0, 9), heading), paragraph(2, 4))), 9U);
    ASSERT_EQ(overflow.size(), 2U);
    EXPECT_EQ(overflow[0].paragraph, 1U);
}

TEST_F(Columns, APageFullOfHeadingsIsPartedWhereItEnds) {
    Strips headings;
    for (std::size_t i = 0; i < 12; ++i) {
        headings.push_back(paragraph(i, 1)[0]);
        headings.back().keepsWithNext = true;
    }
    EXPECT_EQ(fill(headings), 10U);
}

TEST_F(Columns, SpaceAboveFallsAwayWhereTextGoesOnOnTheNextPage) {
    Strips strips = paragraph(0, 1);
    strips[0].before = 250;
    fill(strips);
    EXPECT_DOUBLE_EQ(flow.strips()[0].y, 250);
    flow.begin(1000, true, 0);
    fill(strips);
    EXPECT_DOUBLE_EQ(flow.strips()[0].y, 0);
}

TEST_F(Columns, SpacesAddUpOrTheLargerCounts) {
    Strips strips = joined(paragraph(0, 1), paragraph(1, 1));
    strips[0].after = 60;
    strips[1].before = 100;
    EXPECT_DOUBLE_EQ(gapBetween(strips[0], strips[1], true), 160);
    EXPECT_DOUBLE_EQ(gapBetween(strips[0], strips[1], false), 100);
    strips[0].contextual = strips[1].contextual = true;
    EXPECT_DOUBLE_EQ(gapBetween(strips[0], strips[1], true), 0);
    strips[1].style = 3;
    EXPECT_DOUBLE_EQ(gapBetween(strips[0], strips[1], true), 160);
}

TEST_F(Columns, ANoteTakesItsRoomFromThePageOfItsLine) {
    Strips strips = paragraph(0, 20);
    strips[8].notes = {0};
    EXPECT_EQ(fill(strips), 8U); // eight lines, as the ninth and its note need 250
    EXPECT_EQ(flow.notesHeight(), 0);
    flow.begin(1000, false, 0);
    strips[8].notes.clear();
    strips[2].notes = {0, 1};
    EXPECT_EQ(fill(strips), 7U);
    EXPECT_EQ(flow.notesHeight(), 250);
    EXPECT_EQ(flow.notes(), (std::vector<std::uint32_t>{0, 1}));
}

// A row with cells of so many lines each.
Strip row(std::vector<std::size_t> lines) {
    std::vector<ComposedRow> rows(1);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        ComposedCell cell;
        cell.left = static_cast<double>(i) * 1000;
        cell.right = cell.left + 1000;
        cell.strips = paragraph(i, lines[i]);
        cell.contentHeight = heightOf(cell.strips, true);
        rows[0].cells.push_back(std::move(cell));
    }
    settleHeights(rows, false);
    return stripsOf(rows, {})[0];
}

TEST_F(Columns, ARowIsAsHighAsItsHighestCell) { EXPECT_DOUBLE_EQ(row({2, 5, 1}).height, 500); }

TEST_F(Columns, ARowIsPartedByTheEndOfThePage) {
    Strip large = row({15, 2});
    EXPECT_EQ(fill({large}), 1U);
    EXPECT_DOUBLE_EQ(flow.strips()[0].strip.height, 1000);
    ASSERT_EQ(overflow.size(), 1U);
    EXPECT_DOUBLE_EQ(overflow[0].height, 500);
}

TEST_F(Columns, ARowThatStaysWholeMovesToTheNextPage) {
    Strip whole = row({4});
    whole.keepsLines = true;
    EXPECT_EQ(fill(joined(paragraph(7, 8), {whole})), 8U);
    EXPECT_DOUBLE_EQ(overflow[0].height, 400);
}

TEST_F(Columns, HeadingRowsStandAgainAboveTheRowsOfAFurtherPage) {
    Strip heading = row({1});
    heading.isHeading = true;
    Strip further = row({2});
    further.headings = std::make_shared<const Strips>(Strips{heading});
    flow.begin(1000, true, 0);
    EXPECT_EQ(fill({further}), 2U);
    EXPECT_DOUBLE_EQ(flow.strips()[1].y, 100);
}

TEST_F(Columns, ANoteOfAHeadingRowDoesNotStandAgainWithIt) {
    Strip heading = row({1});
    heading.isHeading = true;
    heading.notes = {3};
    Strip further = row({2});
    further.notes = {4};
    further.headings = std::make_shared<const Strips>(Strips{heading});
    flow.begin(1000, true, 0);
    EXPECT_EQ(fill({further}), 2U);
    EXPECT_EQ(flow.notes(), std::vector<std::uint32_t>{4});
}

TEST_F(Columns, HeadingRowsThatFillThePageDoNotStandAgain) {
    Strip heading = row({10});
    heading.isHeading = true;
    Strip further = row({2});
    further.headings = std::make_shared<const Strips>(Strips{heading});
    flow.begin(1000, true, 0);
    EXPECT_EQ(fill({further}), 1U);
}

TEST_F(Columns, AHeadingRowThatHasNoRoomBelowOthersBeginsTheNextPage) {
    Strip heading = row({4});
    heading.isHeading = true;
    heading.keepsLines = true;
    EXPECT_EQ(fill({heading, heading, heading}), 2U);
    EXPECT_EQ(overflow.size(), 1U);
}

TEST_F(Columns, OfALongNoteAPartStandsOnThePageOfItsReference) {
    Strips strips = paragraph(0, 12);
    strips[6].notes = {longNote};
    EXPECT_EQ(fill(strips), 7U);
    EXPECT_DOUBLE_EQ(flow.notesHeight(), 3 * lineHeight) << "the rest of the column";
    EXPECT_EQ(flow.notes(), std::vector<std::uint32_t>{longNote});
}

TEST_F(Columns, ANoteOfWhichNothingHasRoomTakesItsLineAlong) {
    Strips strips = paragraph(0, 12);
    strips[8].notes = {longNote};
    EXPECT_EQ(fill(strips), 8U);
    EXPECT_TRUE(flow.notes().empty());
}

// So many lines in a first of two columns, each a paragraph.
std::vector<std::vector<FlowedStrip>> twoColumns(std::size_t lines) {
    std::vector<std::vector<FlowedStrip>> columns(2);
    for (std::size_t i = 0; i < lines; ++i) {
        columns[0].push_back({paragraph(i, 1)[0], static_cast<double>(i) * lineHeight});
    }
    return columns;
}

// A row that stays whole and has so many lines.
Strip wholeRow(const Strips& lines) {
    Strip row = rowWith(lines);
    row.keepsLines = true;
    return row;
}

TEST_F(Columns, ARowThatStaysWholeIsPartedWhereNoPageHoldsIt) {
    EXPECT_FALSE(flow.add(wholeRow(paragraph(0, 15)), overflow));
    ASSERT_EQ(overflow.size(), 1U);
    EXPECT_DOUBLE_EQ(overflow[0].height, 5 * lineHeight);
}

TEST_F(Columns, ARowThatStaysWholeGoesToTheNextPageWhereItHasRoom) {
    flow.add(paragraph(0, 1)[0], overflow);
    EXPECT_FALSE(flow.add(wholeRow(paragraph(1, 10)), overflow));
    ASSERT_EQ(overflow.size(), 1U);
    EXPECT_DOUBLE_EQ(overflow[0].height, 10 * lineHeight);
}

TEST_F(Columns, ARowOfATableInACellIsPartedTooByTheEndOfAPage) {
    Strips outer = paragraph(0, 1);
    outer.push_back(rowWith(paragraph(1, 12)));
    EXPECT_FALSE(flow.add(rowWith(std::move(outer)), overflow));
    ASSERT_EQ(overflow.size(), 1U);
    EXPECT_DOUBLE_EQ(flow.strips()[0].strip.height, 10 * lineHeight);
    EXPECT_DOUBLE_EQ(overflow[0].height, 3 * lineHeight);
}

TEST(BalancedColumns, EndAtTheSameHeightTheFirstOnesALineLower) {
    const auto columns = balanced(twoColumns(7), 10 * lineHeight, false, true);
    ASSERT_EQ(columns.size(), 2U);
    EXPECT_EQ(columns[0].size(), 4U);
    ASSERT_EQ(columns[1].size(), 3U);
    EXPECT_EQ(columns[1][0].strip.paragraph, 4U);
    EXPECT_DOUBLE_EQ(columns[1][0].y, 0);
}

TEST(BalancedColumns, KeepTogetherWhatStaysWhole) {
    auto columns = twoColumns(7);
    for (FlowedStrip& flowed : columns[0]) {
        flowed.strip.keepsWithNext = flowed.strip.paragraph < 5;
    }
    columns = balanced(columns, 10 * lineHeight, false, true);
    EXPECT_EQ(columns[0].size(), 6U);
    EXPECT_EQ(columns[1].size(), 1U);
}

TEST(BalancedColumns, ShowAHeadingRowOfALaterColumnOnce) {
    auto columns = twoColumns(3);
    columns[0][0].strip.isHeading = true;
    for (std::size_t i = 0; i < 3; ++i) {
        columns[0][i].strip.at = static_cast<word::Cp>(i);
    }
    columns[1] = {columns[0][0], columns[0][2]};
    columns[0].pop_back();
    columns = balanced(columns, 10 * lineHeight, false, true);
    EXPECT_EQ(columns[0].size() + columns[1].size(), 3U);
}

TEST(Rows, ACellThatReachesDownMakesItsLastRowHighEnough) {
    std::vector<ComposedRow> rows(2);
    for (ComposedRow& one : rows) {
        one.cells.resize(2);
        one.cells[0].right = one.cells[1].left = 1000;
        one.cells[1].right = 2000;
        one.cells[1].strips = paragraph(0, 1);
        one.cells[1].contentHeight = 100;
    }
    rows[0].cells[0].contentHeight = 500;
    rows[1].cells[0].format.mergedAbove = true;
    settleHeights(rows, false);
    EXPECT_DOUBLE_EQ(rows[0].height + rows[1].height, 500);
}

TEST(Rows, ACellWithoutWidthAtTheEdgeOfAnotherDoesNotGoOnInIt) {
    ComposedCell cell;
    cell.right = 1000;
    ComposedRow below;
    below.cells.resize(1);
    below.cells[0].format.mergedAbove = true;
    EXPECT_FALSE(goesOnIn(cell, below));
    below.cells[0].right = 20;
    EXPECT_TRUE(goesOnIn(cell, below));
    below.cells[0].left = 20; // of another edge
    below.cells[0].right = 1000;
    EXPECT_FALSE(goesOnIn(cell, below));
}

TEST(Rows, CellsMergedAcrossJoinTheFirstOfThem) {
    word::ResolvedRow format;
    format.cells.resize(3);
    for (int i = 0; i < 3; ++i) {
        format.cells[static_cast<std::size_t>(i)].left = i * 1000;
        format.cells[static_cast<std::size_t>(i)].right = (i + 1) * 1000;
    }
    format.cells[1].mergedLeft = true;
    const auto cells = cellsOf(format, 3, 8000);
    EXPECT_DOUBLE_EQ(cells[0].right, 2000);
    EXPECT_DOUBLE_EQ(cells[2].left, 2000);
}

TEST(Rows, ATableStandsInTheMiddleWhereItSaysSo) {
    word::ResolvedRow format;
    format.cells.resize(1);
    format.cells[0].right = 2000;
    format.alignment = word::LineAlignment::centre;
    EXPECT_DOUBLE_EQ(cellsOf(format, 1, 8000)[0].left, 3000);
}

// A row with a border of 20 twips above a cell whose content is 100 twips high.
std::vector<ComposedRow> borderedRow(int leastHeight) {
    std::vector<ComposedRow> rows(1);
    rows[0].format.height = leastHeight;
    rows[0].cells.resize(1);
    rows[0].cells[0].contentHeight = 100;
    rows[0].cells[0].strips = paragraph(0, 1);
    word::Border& top = rows[0].cells[0].format.topSide;
    top.visible = true;
    top.thickness = 20;
    return rows;
}

TEST(Rows, InTheOfficeSuiteTheLeastHeightHoldsTheBorder) {
    for (const auto& [least, apart, held] :
         {std::tuple(150, 170, 150), std::tuple(110, 130, 120), std::tuple(0, 120, 120)}) {
        auto rows = borderedRow(least);
        settleHeights(rows, false);
        EXPECT_DOUBLE_EQ(rows[0].height, apart);
        settleHeights(rows, true);
        EXPECT_DOUBLE_EQ(rows[0].height, held);
    }
}

TEST(Rows, ACellsTextStandsBelowTheBorderAndAlignedWithinTheRest) {
    const auto aboveText = [](word::VerticalAlignment alignment) {
        auto rows = borderedRow(200);
        settleHeights(rows, true);
        rows[0].cells[0].format.alignment = alignment;
        return stripsOf(rows, {})[0].row->cells[0].above;
    };
    EXPECT_DOUBLE_EQ(aboveText(word::VerticalAlignment::top), 20);
    EXPECT_DOUBLE_EQ(aboveText(word::VerticalAlignment::centre), 20 + 40);
    EXPECT_DOUBLE_EQ(aboveText(word::VerticalAlignment::bottom), 20 + 80);
}

// Rows of one line in the second cell, beside a first cell that reaches over all of them.
std::vector<ComposedRow> rowsBeside(Strips merged, std::size_t count) {
    std::vector<ComposedRow> rows(count);
    for (std::size_t i = 0; i < count; ++i) {
        rows[i].cells.resize(2);
        rows[i].cells[0].right = rows[i].cells[1].left = 1000;
        rows[i].cells[1].right = 2000;
        rows[i].cells[1].strips = paragraph(i + 1, 1);
        rows[i].cells[1].contentHeight = lineHeight;
        rows[i].cells[0].format.mergedAbove = i > 0;
    }
    rows[0].cells[0].contentHeight = heightOf(merged, true);
    rows[0].cells[0].strips = std::move(merged);
    settleHeights(rows, false);
    return rows;
}

std::vector<std::size_t> linesOfFirstCells(const Strips& rows) {
    std::vector<std::size_t> counts;
    for (const Strip& row : rows) {
        counts.push_back(row.row->cells[0].strips.size());
    }
    return counts;
}

TEST(Rows, ALineOfACellThatReachesDownGoesWithTheRowBesideWhichItStands) {
    auto rows = rowsBeside(paragraph(0, 3), 4);
    const Strips strips = stripsOf(rows, {});
    EXPECT_EQ(linesOfFirstCells(strips), (std::vector<std::size_t>{1, 1, 1, 0}));
    EXPECT_DOUBLE_EQ(strips[2].row->cells[0].above, 0);
}

TEST(Rows, ACentredCellThatReachesDownHasItsTextInTheRowInTheMiddle) {
    auto rows = rowsBeside(paragraph(0, 1), 60);
    rows[0].cells[0].format.alignment = word::VerticalAlignment::centre;
    const Strips strips = stripsOf(rows, {});
    std::vector<std::size_t> wanted(60, 0);
    wanted[29] = 1;
    EXPECT_EQ(linesOfFirstCells(strips), wanted);
    EXPECT_DOUBLE_EQ(strips[29].row->cells[0].above, 50);
}

TEST(Rows, SpacesWithinACellAreTheLargerOfBothWhereTheDocumentSaysSo) {
    Strips strips = paragraph(0, 1);
    const Strips second = paragraph(1, 1);
    strips.insert(strips.end(), second.begin(), second.end());
    strips[0].after = 60;
    strips[1].before = 40;
    strips[1].layer.fills.push_back({});
    for (const auto& [adds, y] : {std::pair(true, 200.0), std::pair(false, 160.0)}) {
        std::vector<ComposedRow> rows(1);
        rows[0].cells.resize(1);
        rows[0].cells[0].strips = strips;
        const Strip row = stripsOf(rows, {adds, true})[0];
        EXPECT_DOUBLE_EQ(row.layer.fills.at(0).y, y);
        const auto parts = partRow(row, 110);
        ASSERT_TRUE(parts);
        EXPECT_DOUBLE_EQ(parts->rest.height, 140);
    }
}

TEST_F(Columns, ARowWhoseTextStandsInTheMiddleIsPartedToo) {
    Strip tall = row({15, 1});
    RowParts parts = *tall.row;
    parts.cells[1].above = parts.cells[1].down = 1200;
    tall.row = std::make_shared<const RowParts>(std::move(parts));
    EXPECT_EQ(fill({tall}), 1U);
    EXPECT_TRUE(flow.strips()[0].strip.row->cells[1].strips.empty());
    ASSERT_EQ(overflow.size(), 1U);
    ASSERT_EQ(overflow[0].row->cells[1].strips.size(), 1U) << "its text goes to the next page";
    EXPECT_DOUBLE_EQ(overflow[0].row->cells[1].above, 200);
}

TEST_F(Columns, WithinACellAHeadingGoesWithWhatFollowsIt) {
    Strips content = joined(paragraph(0, 9), paragraph(1, 1));
    content[9].keepsWithNext = true;
    EXPECT_EQ(fill({rowWith(joined(content, paragraph(2, 4)))}), 1U);
    EXPECT_EQ(flow.strips()[0].strip.row->cells[0].strips.size(), 9U);
    EXPECT_EQ(overflow.at(0).row->cells[0].strips.size(), 5U);
}

TEST_F(Columns, WithinACellTheLastLineOfAParagraphNeverStandsAlone) {
    EXPECT_EQ(fill({rowWith(paragraph(0, 11))}), 1U);
    EXPECT_EQ(overflow.at(0).row->cells[0].strips.size(), 2U);
}

TEST_F(Columns, LinesOfACellThatStayTogetherArePartedWhereNoPageHoldsThem) {
    Strips content = paragraph(0, 25);
    for (Strip& line : content) {
        line.keepsLines = true;
    }
    EXPECT_EQ(fill({rowWith(content)}), 1U);
    EXPECT_EQ(overflow.at(0).row->cells[0].strips.size(), 15U);
}

TEST_F(Columns, TheOfficeSuitePartsACellBehindAnyLine) {
    Strip large = rowWith(paragraph(0, 11));
    RowParts parts = *large.row;
    parts.rules.keepsTogether = false;
    large.row = std::make_shared<const RowParts>(std::move(parts));
    EXPECT_EQ(fill({large}), 1U);
    EXPECT_EQ(overflow.at(0).row->cells[0].strips.size(), 1U);
}

} // namespace
} // namespace qvnd::layout
