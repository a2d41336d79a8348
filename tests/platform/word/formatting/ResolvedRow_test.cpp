#include "platform/word/formatting/ResolvedRow.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ContentBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace qvnd::word {
namespace {

// What a definition says of a cell: its flags, and the borders as four bytes each.
struct CellPart {
    unsigned flags = 0;
    std::array<std::uint32_t, 4> sides{}; // top, left, bottom, right
};

// The definition of a row with these edges, as it stands in a property list.
Bytes rowWith(const std::vector<int>& edges, const std::vector<CellPart>& parts = {}) {
    LittleEndianWriter writer;
    writer.u16(sprm::TDefTable);
    writer.u16(static_cast<unsigned>(1 + 1 + 2 * edges.size() + 20 * parts.size()));
    writer.u8(static_cast<unsigned>(edges.size() - 1));
    for (const int edge : edges) {
        writer.u16(static_cast<std::uint16_t>(edge));
    }
    for (const CellPart& part : parts) {
        writer.u16(part.flags);
        writer.u16(0);
        for (const std::uint32_t side : part.sides) {
            writer.u32(side);
        }
    }
    return writer.take();
}

// A border of one stroke that is `points` wide, in the old spelling.
std::uint32_t strokeOf(unsigned points) { return points * 8 | 0x0100U; }

void addBytes(Bytes& list, const Bytes& more) { list.insert(list.end(), more.begin(), more.end()); }

// An entry whose operand tells its length.
void addEntry(Bytes& list, SprmOpcode opcode, const Bytes& operand) {
    addBytes(list, {static_cast<std::uint8_t>(opcode), static_cast<std::uint8_t>(opcode >> 8),
                    static_cast<std::uint8_t>(operand.size())});
    addBytes(list, operand);
}

Bytes bordersOf(std::initializer_list<unsigned> points) {
    LittleEndianWriter writer;
    for (const unsigned width : points) {
        writer.u32(strokeOf(width));
    }
    return writer.take();
}

// Rows of three cells: 0 to 1000 to 2000 to 3000 twips.
class Rows : public testing::Test {
protected:
    ResolvedRow row() const { return resolvedRowOf(list, builder.content.tables); }
    std::vector<ResolvedCell> cells() const { return row().cells; }
    // Those of a row that stands there in its table.
    std::vector<ResolvedCell> cellsAt(bool isFirst, bool isLast) const {
        ResolvedRow ended = row();
        putOuterBorders(ended, isFirst, isLast);
        return ended.cells;
    }

    // A table style at that place of the sheet.
    void addTableStyle(StyleIndex style, StyleIndex basedOn, const Bytes& properties) {
        auto& styles = builder.content.tables.styles.styles;
        styles.resize(std::max<std::size_t>(styles.size(), style + 1U));
        StyleDefinition definition;
        definition.kind = StyleKind::table;
        definition.basedOn = basedOn;
        definition.table = builder.content.tables.lists.intern(properties);
        styles[style] = definition;
    }

    test::ContentBuilder builder;
    Bytes list = rowWith({0, 1000, 2000, 3000});
};

TEST_F(Rows, ADefinitionThatEndsBeforeItsCellsHasNone) {
    const auto cellsWith = [&](const Bytes& operand) {
        list = {sprm::TDefTable & 0xFF, sprm::TDefTable >> 8};
        addBytes(list, operand);
        return cells().size();
    };
    EXPECT_EQ(cellsWith({1, 0}), 0U);
    EXPECT_EQ(cellsWith({2, 0, 1}), 0U);
    EXPECT_EQ(cellsWith({5, 0, 1, 0, 0, 100}), 0U) << "the second edge is cut";
    EXPECT_EQ(cellsWith({6, 0, 1, 0, 0, 100, 0}), 1U);
}

using Widths = std::array<int, 4>; // top, left, bottom, right

Widths sidesOf(const ResolvedCell& cell) {
    const auto width = [](const Border& side) { return side.visible ? side.width : 0; };
    return {width(cell.topSide), width(cell.leftSide), width(cell.bottomSide),
            width(cell.rightSide)};
}

Widths paddingsOf(const ResolvedCell& cell) {
    return {cell.topPadding, cell.leftPadding, cell.bottomPadding, cell.rightPadding};
}

TEST_F(Rows, ADefinitionHasOneTo64Cells) {
    const auto count = [this](int cells) {
        std::vector<int> edges;
        for (int edge = 0; edge <= cells; ++edge) {
            edges.push_back(edge * 10);
        }
        list = rowWith(edges);
        return row().cells.size();
    };
    EXPECT_EQ(count(0), 0U);
    EXPECT_EQ(count(1), 1U);
    EXPECT_EQ(count(64), 64U);
    EXPECT_EQ(count(65), 0U);
}

TEST_F(Rows, ADefinitionWithoutAllItsEdgesGivesNoCells) {
    list = {0x08, 0xD6, 6, 0, 1, 0, 0, 100, 0};
    EXPECT_EQ(cells().size(), 1U);
    list = {0x08, 0xD6, 5, 0, 1, 0, 0, 100};
    EXPECT_EQ(cells().size(), 0U);
}

TEST_F(Rows, AnEdgeBeforeTheOneToItsLeftGivesACellWithoutWidth) {
    list = rowWith({100, 50, 300});
    EXPECT_EQ(cells()[0].left, 100);
    EXPECT_EQ(cells()[0].right, 100);
    EXPECT_EQ(cells()[1].left, 100);
    EXPECT_EQ(cells()[1].right, 300);
}

TEST_F(Rows, EdgesMayStandLeftOfTheMargin) {
    list = rowWith({-108, 900});
    EXPECT_EQ(cells()[0].left, -108);
    EXPECT_EQ(cells()[0].right, 900);
}

TEST_F(Rows, ACellGoesOnTheOneBesideItFromMergeCodeTwoOn) {
    list = rowWith({0, 10, 20, 30, 40}, {{0, {}}, {1, {}}, {2, {}}, {3, {}}});
    EXPECT_FALSE(cells()[0].mergedLeft);
    EXPECT_FALSE(cells()[1].mergedLeft);
    EXPECT_TRUE(cells()[2].mergedLeft);
    EXPECT_TRUE(cells()[3].mergedLeft);
}

TEST_F(Rows, ACellGoesOnTheOneAboveItByMergeCodeOneAlone) {
    list = rowWith({0, 10, 20, 30, 40}, {{0, {}}, {0x20, {}}, {0x40, {}}, {0x60, {}}});
    EXPECT_FALSE(cells()[0].mergedAbove);
    EXPECT_TRUE(cells()[1].mergedAbove);
    EXPECT_FALSE(cells()[2].mergedAbove);
    EXPECT_FALSE(cells()[3].mergedAbove);
}

TEST_F(Rows, TextStandsAtTheTopInTheMiddleOrAtTheBottomOfACell) {
    list = rowWith({0, 10, 20, 30, 40}, {{0, {}}, {0x80, {}}, {0x100, {}}, {0x180, {}}});
    EXPECT_EQ(cells()[0].alignment, VerticalAlignment::top);
    EXPECT_EQ(cells()[1].alignment, VerticalAlignment::centre);
    EXPECT_EQ(cells()[2].alignment, VerticalAlignment::bottom);
    EXPECT_EQ(cells()[3].alignment, VerticalAlignment::top);
}

TEST_F(Rows, TextRunsDownwardsByTwoOfTheFlows) {
    std::vector<CellPart> parts;
    parts.reserve(8);
    for (unsigned flow = 0; flow < 8; ++flow) {
        parts.push_back({flow << 2U, {}});
    }
    list = rowWith({0, 10, 20, 30, 40, 50, 60, 70, 80}, parts);
    for (unsigned flow = 0; flow < 8; ++flow) {
        const TextFlow expected = flow == 1 || flow == 5 ? TextFlow::down
                                  : flow == 3            ? TextFlow::up
                                                         : TextFlow::across;
        EXPECT_EQ(cells()[flow].flow, expected) << flow;
    }
}

TEST_F(Rows, TheFlowOfTextIsThatOfTheCellsThatAreNamed) {
    addBytes(list, {0x29, 0x76, 1, 2, 5, 0}); // sprmTTextFlow
    EXPECT_EQ(cells()[0].flow, TextFlow::across);
    EXPECT_EQ(cells()[1].flow, TextFlow::down);
    EXPECT_EQ(cells()[2].flow, TextFlow::across);
    addBytes(list, {0x29, 0x76, 0, 200, 0, 0});
    EXPECT_EQ(cells()[1].flow, TextFlow::across);
}

TEST_F(Rows, TheDefinitionTellsBordersFromTheTopAroundAgainstTheClock) {
    list = rowWith({0, 10}, {{0, {strokeOf(1), strokeOf(2), strokeOf(3), strokeOf(4)}}});
    EXPECT_EQ(sidesOf(cells()[0]), (Widths{20, 40, 60, 80}));
}

TEST_F(Rows, CellsThatTheDefinitionTellsNothingOfArePlain) {
    list = rowWith({0, 10, 20}, {{0x20, {}}});
    EXPECT_TRUE(cells()[0].mergedAbove);
    EXPECT_FALSE(cells()[1].mergedAbove);
}

TEST_F(Rows, CellsLeave108TwipsBesideTheirTextUnlessTheRowSaysOtherwise) {
    EXPECT_EQ(paddingsOf(cells()[1]), (Widths{0, 108, 0, 108}));
    const auto gap = [this](int twips) {
        return paddingsOf(
            resolvedRowOf(withSprm16(list, sprm::TDxaGapHalf, static_cast<std::uint16_t>(twips)),
                          builder.content.tables)
                .cells[1]);
    };
    EXPECT_EQ(gap(200), (Widths{0, 200, 0, 200}));
    EXPECT_EQ(gap(-1), (Widths{0, 0, 0, 0}));
    EXPECT_EQ(gap(1000), (Widths{0, 1000, 0, 1000}));
    EXPECT_EQ(gap(1001), (Widths{0, 1000, 0, 1000}));
}

TEST_F(Rows, TheGapHoldsAlsoWhereItStandsBeforeTheDefinition) {
    Bytes before = withSprm16({}, sprm::TDxaGapHalf, 50);
    addBytes(before, list);
    list = before;
    EXPECT_EQ(paddingsOf(cells()[2]), (Widths{0, 50, 0, 50}));
}

TEST_F(Rows, ThePaddingOfARowIsThatOfTheSidesThatItNames) {
    const auto padding = [this](std::uint8_t sides) {
        Bytes padded = list;
        addEntry(padded, sprm::TCellPaddingDefault, {0, 1, sides, 3, 30, 0});
        return paddingsOf(resolvedRowOf(padded, builder.content.tables).cells[2]);
    };
    EXPECT_EQ(padding(1), (Widths{30, 108, 0, 108}));
    EXPECT_EQ(padding(2), (Widths{0, 30, 0, 108}));
    EXPECT_EQ(padding(4), (Widths{0, 108, 30, 108}));
    EXPECT_EQ(padding(8), (Widths{0, 108, 0, 30}));
}

TEST_F(Rows, PaddingInAnotherUnitThanTwipsIsNotTaken) {
    addEntry(list, sprm::TCellPaddingDefault, {0, 1, 0x0F, 2, 30, 0});
    EXPECT_EQ(paddingsOf(cells()[0]), (Widths{0, 108, 0, 108}));
}

TEST_F(Rows, PaddingReachesAThousandTwips) {
    addEntry(list, sprm::TCellPaddingDefault, {0, 1, 0x0F, 3, 0xE8, 0x03});
    EXPECT_EQ(cells()[0].topPadding, 1000);
    addEntry(list, sprm::TCellPaddingDefault, {0, 1, 0x0F, 3, 0xE9, 0x03});
    EXPECT_EQ(cells()[0].topPadding, 1000);
}

TEST_F(Rows, APaddingWithoutItsWidthIsNotTaken) {
    addEntry(list, sprm::TCellPaddingDefault, {0, 1, 0x0F, 3, 30});
    EXPECT_EQ(paddingsOf(cells()[0]), (Widths{0, 108, 0, 108}));
}

TEST_F(Rows, ThePaddingOfCellsIsThatOfTheCellsThatItNames) {
    addEntry(list, sprm::TCellPadding, {1, 2, 0x01, 3, 30, 0});
    EXPECT_EQ(cells()[0].topPadding, 0);
    EXPECT_EQ(cells()[1].topPadding, 30);
    EXPECT_EQ(cells()[2].topPadding, 0);
    addEntry(list, sprm::TCellPadding, {2, 9, 0x01, 3, 40, 0});
    EXPECT_EQ(cells()[1].topPadding, 30);
    EXPECT_EQ(cells()[2].topPadding, 40);
}

TEST_F(Rows, AMergeWithTheRowAboveIsSaidOfOneCell) {
    addEntry(list, sprm::TVertMerge, {1, 1});
    EXPECT_FALSE(cells()[0].mergedAbove);
    EXPECT_TRUE(cells()[1].mergedAbove);
    addEntry(list, sprm::TVertMerge, {2, 3}); // where a merge begins
    EXPECT_FALSE(cells()[2].mergedAbove);
    addEntry(list, sprm::TVertMerge, {1, 0});
    EXPECT_FALSE(cells()[1].mergedAbove);
    addEntry(list, sprm::TVertMerge, {3, 1}); // a cell that is not there
    EXPECT_EQ(cells().size(), 3U);
    addEntry(list, sprm::TVertMerge, {1});
    EXPECT_FALSE(cells()[1].mergedAbove);
}

TEST_F(Rows, TextIsAlignedInTheCellsThatAreNamed) {
    addEntry(list, sprm::TVertAlign, {1, 2, 2});
    EXPECT_EQ(cells()[0].alignment, VerticalAlignment::top);
    EXPECT_EQ(cells()[1].alignment, VerticalAlignment::bottom);
    EXPECT_EQ(cells()[2].alignment, VerticalAlignment::top);
    addEntry(list, sprm::TVertAlign, {2, 200, 1});
    EXPECT_EQ(cells()[1].alignment, VerticalAlignment::bottom);
    EXPECT_EQ(cells()[2].alignment, VerticalAlignment::centre);
}

TEST_F(Rows, AnAlignmentWithoutItsValueIsNotTaken) {
    addEntry(list, sprm::TVertAlign, {0, 2});
    EXPECT_EQ(cells()[0].alignment, VerticalAlignment::top);
}

TEST_F(Rows, AHeightIsTheLeastOneAndANegativeOneExact) {
    list = withSprm16(list, sprm::TDyaRowHeight, 500);
    EXPECT_EQ(row().height, 500);
    EXPECT_FALSE(row().exactHeight);
    list = withSprm16(list, sprm::TDyaRowHeight, static_cast<std::uint16_t>(-700));
    EXPECT_EQ(row().height, 700);
    EXPECT_TRUE(row().exactHeight);
    list = withSprm16(list, sprm::TDyaRowHeight, 0);
    EXPECT_EQ(row().height, 0);
    EXPECT_FALSE(row().exactHeight);
}

TEST_F(Rows, OldAndNewSpellingsKeepARowWhole) {
    EXPECT_FALSE(row().staysWhole);
    EXPECT_FALSE(row().isHeading);
    for (const SprmOpcode opcode : {sprm::TFCantSplit, sprm::TFCantSplit90}) {
        list = withSprm8(list, opcode, 1);
        EXPECT_TRUE(row().staysWhole);
        list = withSprm8(list, opcode, 0);
        EXPECT_FALSE(row().staysWhole);
    }
    list = withSprm8(list, sprm::TTableHeader, 0);
    EXPECT_FALSE(row().isHeading);
}

TEST_F(Rows, ATableStandsLeftInTheMiddleOrRight) {
    for (const SprmOpcode opcode : {sprm::TJc, sprm::TJc90}) {
        const auto alignment = [&](unsigned jc) {
            return resolvedRowOf(withSprm16(list, opcode, jc), builder.content.tables).alignment;
        };
        EXPECT_EQ(alignment(0), LineAlignment::left);
        EXPECT_EQ(alignment(1), LineAlignment::centre);
        EXPECT_EQ(alignment(2), LineAlignment::right);
        EXPECT_EQ(alignment(3), LineAlignment::left);
    }
}

TEST_F(Rows, ATablesBordersStandAroundAndBetweenItsCells) {
    // Top, left, bottom, right, none between rows, six points between columns.
    Bytes borders = bordersOf({1, 2, 3, 4});
    addBytes(borders, {0, 0, 0, 0});
    addBytes(borders, bordersOf({6}));
    addEntry(list, sprm::TTableBorders80, borders);
    EXPECT_EQ(sidesOf(cellsAt(true, true)[0]), (Widths{20, 40, 60, 120}));
    EXPECT_EQ(sidesOf(cellsAt(true, false)[1]), (Widths{20, 120, 0, 120}));
    EXPECT_EQ(sidesOf(cellsAt(false, true)[2]), (Widths{0, 120, 60, 80}));
    EXPECT_EQ(sidesOf(cellsAt(false, false)[2]), (Widths{0, 120, 0, 80}));
}

TEST_F(Rows, TheBorderBetweenRowsStandsNeitherAboveTheFirstNorBelowTheLast) {
    addEntry(list, sprm::TTableBorders80, bordersOf({1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(sidesOf(cells()[1]), (Widths{100, 120, 100, 120}));
    EXPECT_EQ(sidesOf(cellsAt(true, false)[1]), (Widths{20, 120, 100, 120}));
    EXPECT_EQ(sidesOf(cellsAt(false, true)[1]), (Widths{100, 120, 60, 120}));
}

TEST_F(Rows, ACellsOwnBorderStandsBeforeThatOfItsTable) {
    list = rowWith({0, 10, 20},
                   {{0, {strokeOf(9), 0, strokeOf(9), 0}}, {0, {0, strokeOf(9), 0, strokeOf(9)}}});
    addEntry(list, sprm::TTableBorders80, bordersOf({1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(sidesOf(cells()[0]), (Widths{180, 40, 180, 120}));
    EXPECT_EQ(sidesOf(cells()[1]), (Widths{100, 180, 100, 180}));
    EXPECT_EQ(sidesOf(cellsAt(true, true)[0]), (Widths{180, 40, 180, 120}));
}

TEST_F(Rows, ABorderThatIsTakenAwayFromACellIsNotThatOfItsTable) {
    constexpr std::uint32_t taken = 0xFFFFFFFF;
    list = rowWith({0, 10, 20, 30}, {{0, {taken, taken, taken, taken}}});
    addEntry(list, sprm::TTableBorders80, bordersOf({1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(sidesOf(cells()[0]), Widths{});
    EXPECT_EQ(sidesOf(cellsAt(true, true)[0]), Widths{});
    EXPECT_EQ(sidesOf(cellsAt(true, true)[1]), (Widths{20, 120, 60, 120}));
    addEntry(list, sprm::TSetBrc, {2, 3, 0x0F, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF});
    EXPECT_EQ(sidesOf(cellsAt(true, true)[2]), Widths{});
    addEntry(list, sprm::TSetBrc80, {0, 1, 1, 8, 1, 0, 0});
    EXPECT_EQ(sidesOf(cellsAt(true, true)[0]), (Widths{20, 0, 0, 0})) << "it is given again";
}

TEST_F(Rows, TableBordersInTheNewSpellingHaveEightBytesEach) {
    LittleEndianWriter borders;
    for (const unsigned points : {1U, 2U, 3U, 4U}) {
        borders.u32(0x000000FF); // red
        borders.u8(points * 8);
        borders.u8(1);
        borders.u16(0);
    }
    addEntry(list, sprm::TTableBorders, borders.take());
    EXPECT_EQ(sidesOf(cells()[0]), (Widths{0, 40, 0, 0}));
    EXPECT_EQ(sidesOf(cells()[2]), (Widths{0, 0, 0, 80}));
    EXPECT_EQ(row().tableTop.width, 20);
    EXPECT_EQ(row().tableBottom.width, 60);
    EXPECT_EQ(cells()[2].rightSide.colour, 0xFF0000U);
}

TEST_F(Rows, OfTableBordersTheFirstSixCount) {
    addEntry(list, sprm::TTableBorders80, bordersOf({1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(sidesOf(cells()[1]), (Widths{100, 120, 100, 120}));
}

TEST_F(Rows, OfTableBordersThatAreCutOffTheWholeOnesCount) {
    Bytes borders = bordersOf({1, 2});
    addBytes(borders, {24, 1, 0});
    addEntry(list, sprm::TTableBorders80, borders);
    EXPECT_EQ(sidesOf(cells()[0]), (Widths{0, 40, 0, 0}));
    EXPECT_EQ(row().tableTop.width, 20);
}

TEST_F(Rows, ABorderIsSetOnTheSidesOfTheCellsThatAreNamed) {
    const auto sides = [this](std::uint8_t named) {
        Bytes bordered = list;
        addEntry(bordered, sprm::TSetBrc80, {1, 2, named, 8, 1, 0, 0});
        const auto found = resolvedRowOf(bordered, builder.content.tables).cells;
        EXPECT_EQ(sidesOf(found[0]), Widths{});
        EXPECT_EQ(sidesOf(found[2]), Widths{});
        EXPECT_FALSE(found[0].background || found[1].background || found[2].background);
        return sidesOf(found[1]);
    };
    EXPECT_EQ(sides(1), (Widths{20, 0, 0, 0}));
    EXPECT_EQ(sides(2), (Widths{0, 20, 0, 0}));
    EXPECT_EQ(sides(4), (Widths{0, 0, 20, 0}));
    EXPECT_EQ(sides(8), (Widths{0, 0, 0, 20}));
}

TEST_F(Rows, ABorderOfCellsMayBeInTheNewSpelling) {
    addEntry(list, sprm::TSetBrc, {0, 1, 1, 0, 0, 0xFF, 0, 16, 1, 0, 0});
    EXPECT_EQ(sidesOf(cells()[0]), (Widths{40, 0, 0, 0}));
    EXPECT_EQ(cells()[0].topSide.colour, 0x0000FFU);
}

TEST_F(Rows, ABorderOfCellsThatIsCutOffLeavesTheOnesThatStand) {
    addEntry(list, sprm::TSetBrc80, {0, 3, 0x0F, 8, 1, 0, 0});
    addEntry(list, sprm::TSetBrc80, {0, 3, 0x0F, 8, 1, 0});
    EXPECT_EQ(sidesOf(cells()[0]), (Widths{20, 20, 20, 20}));
}

TEST_F(Rows, ShadingsOfTwoBytesBelongToTheCellsInOrder) {
    // Solid red, nothing, and half a shading.
    addEntry(list, sprm::TDefTableShd80, {0x06, 0x04, 0xFF, 0xFF, 0x06});
    EXPECT_EQ(cells()[0].background, 0xFF0000U);
    EXPECT_EQ(cells()[1].background, std::nullopt);
    EXPECT_EQ(cells()[2].background, std::nullopt);
}

TEST_F(Rows, ShadingsOfTenBytesBelongToTheCellsFromTheFirstThe23rdAndThe45th) {
    std::vector<int> edges;
    for (int edge = 0; edge <= 46; ++edge) {
        edges.push_back(edge * 10);
    }
    list = rowWith(edges);
    const auto shading = [](std::uint8_t red) {
        return Bytes{0, 0, 0, 0xFF, red, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, red, 1, 0, 0, 0, 0};
    };
    addEntry(list, sprm::TDefTableShd, shading(0x10));
    addEntry(list, sprm::TDefTableShd2nd, shading(0x20));
    addEntry(list, sprm::TDefTableShd3rd, shading(0x30));
    const auto found = cells();
    ASSERT_EQ(found.size(), 46U);
    const auto background = [&](std::size_t cell) {
        return found[cell].background.value_or(0xFFFFFFU);
    };
    EXPECT_EQ(background(0), 0x100000U);
    EXPECT_EQ(background(1), 0x100100U);
    EXPECT_EQ(background(2), 0xFFFFFFU);
    EXPECT_EQ(background(21), 0xFFFFFFU);
    EXPECT_EQ(background(22), 0x200000U);
    EXPECT_EQ(background(23), 0x200100U);
    EXPECT_EQ(background(24), 0xFFFFFFU);
    EXPECT_EQ(background(43), 0xFFFFFFU);
    EXPECT_EQ(background(44), 0x300000U);
    EXPECT_EQ(background(45), 0x300100U);
}

TEST_F(Rows, WhatTheRowDoesNotSayItsTableStyleSays) {
    Bytes style;
    addEntry(style, sprm::TTableBorders80, bordersOf({1, 2, 3, 4, 5, 6}));
    addEntry(style, sprm::TCellPaddingDefault, {0, 1, 0x03, 3, 30, 0});
    addTableStyle(20, StyleDefinition::none, withSprm8(style, sprm::TFCantSplit, 1));
    list = withSprm16(list, sprm::TIstd, 20);
    EXPECT_EQ(paddingsOf(cells()[1]), (Widths{30, 30, 0, 108}));
    EXPECT_EQ(sidesOf(cells()[1]), (Widths{100, 120, 100, 120}));
    EXPECT_TRUE(row().staysWhole);
    list = withSprm8(list, sprm::TFCantSplit, 0);
    EXPECT_FALSE(row().staysWhole);
}

TEST_F(Rows, CellPaddingsOfATableStyleAreThoseOfCellsThatItDoesNotKnow) {
    for (const std::uint16_t opcode : {sprm::TCellPadding, sprm::TCellPaddingStyle}) {
        Bytes style;
        addEntry(style, opcode, {0, 1, 0x0F, 3, 30, 0});
        addTableStyle(20, StyleDefinition::none, style);
        const Bytes plain = list;
        list = withSprm16(list, sprm::TIstd, 20);
        EXPECT_EQ(paddingsOf(cells()[1]), (Widths{30, 30, 30, 30}));
        list = plain;
    }
}

TEST_F(Rows, ATableStyleStandsBeforeTheOneThatItIsBasedOn) {
    Bytes base = withSprm16({}, sprm::TDyaRowHeight, 300);
    addTableStyle(20, StyleDefinition::none, withSprm16(base, sprm::TJc, 1));
    addTableStyle(21, 20, withSprm16({}, sprm::TDyaRowHeight, 400));
    list = withSprm16(list, sprm::TIstd, 21);
    EXPECT_EQ(row().height, 400);
    EXPECT_EQ(row().alignment, LineAlignment::centre);
}

TEST_F(Rows, AStyleOfAnotherKindSaysNothingOfATable) {
    addTableStyle(20, StyleDefinition::none, withSprm16({}, sprm::TDyaRowHeight, 300));
    builder.content.tables.styles.styles[20]->kind = StyleKind::paragraph;
    list = withSprm16(list, sprm::TIstd, 20);
    EXPECT_EQ(row().height, 0);
    list = withSprm16(list, sprm::TIstd, 21); // there is none
    EXPECT_EQ(row().height, 0);
    list = withSprm16(list, sprm::TIstd, 5); // an empty place
    EXPECT_EQ(row().height, 0);
}

TEST_F(Rows, SixteenTableStylesStandOnEachOther) {
    constexpr StyleIndex lowest = 20;
    addTableStyle(lowest, StyleDefinition::none, withSprm16({}, sprm::TDyaRowHeight, 300));
    for (StyleIndex style = lowest + 1; style <= lowest + 16; ++style) {
        addTableStyle(style, static_cast<StyleIndex>(style - 1), {});
    }
    const Bytes plain = list;
    list = withSprm16(plain, sprm::TIstd, lowest + 15);
    EXPECT_EQ(row().height, 300);
    list = withSprm16(plain, sprm::TIstd, lowest + 16);
    EXPECT_EQ(row().height, 0);
}

} // namespace
} // namespace qvnd::word
