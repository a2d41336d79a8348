// How a story falls into paragraphs, frames and tables.

#include "platform/word/layout/StoryBlocks.h"

#include "platform/layout/PagedDocument.h"

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;

class BlocksOfStory : public test::PagedDocument {
protected:
    static Bytes inTable(std::uint32_t depth = 1) {
        return withSprm32(withSprm8({}, sprm::PFInTable, 1), sprm::PItap, depth);
    }
    static Bytes rowMark() { return withSprm8(inTable(), sprm::PFTtp, 1); }
    // A frame at that distance.
    static Bytes frame(std::uint16_t left) {
        return withSprm16(withSprm16({}, sprm::PDxaWidth, 800), sprm::PDxaAbs, left);
    }
    void add(const std::u16string& text, const Bytes& properties = {}) {
        main.text += text;
        main.paragraphs.push_back({static_cast<word::Cp>(text.size()), 0, intern(properties)});
    }
    const Blocks& blocks() {
        word::FormatResolver formats(document.tables);
        StoryBlocks read(main, formats);
        found.clear();
        for (std::size_t i = 0; read.has(i); ++i) {
            found.push_back(read[i]);
        }
        starts.clear();
        starts.reserve(main.paragraphs.size());
        for (std::size_t i = 0; i < main.paragraphs.size(); ++i) {
            starts.push_back(read.startOf(i));
        }
        return found;
    }
    // The first paragraphs of the blocks of a cell.
    static std::vector<std::size_t> paragraphsOf(const Blocks& blocks) {
        std::vector<std::size_t> paragraphs;
        for (const Block& block : blocks) {
            paragraphs.push_back(block.paragraph);
        }
        return paragraphs;
    }

    Blocks found;
    std::vector<word::Cp> starts;
};

using Paragraphs = std::vector<std::size_t>;

TEST_F(BlocksOfStory, ATableIsABlockOfRowsAndCells) {
    add(u"前\r");
    add(u"甲\r", inTable());
    add(u"乙\a", inTable());
    add(u"丙\a", inTable());
    add(u"\a", rowMark());
    add(u"丁\a", inTable());
    add(u"\a", rowMark());
    add(u"后\r");
    EXPECT_EQ(paragraphsOf(blocks()), (Paragraphs{0, 1, 7}));
    EXPECT_EQ(starts, (std::vector<word::Cp>{0, 2, 4, 6, 8, 9, 11, 12}));
    ASSERT_TRUE(found[1].table);
    const auto& rows = found[1].table->rows;
    ASSERT_EQ(rows.size(), 2U);
    ASSERT_EQ(rows[0].cells.size(), 2U);
    EXPECT_EQ(paragraphsOf(rows[0].cells[0]), (Paragraphs{1, 2}));
    EXPECT_EQ(paragraphsOf(rows[0].cells[1]), (Paragraphs{3}));
    EXPECT_EQ(rows[0].mark, 4U);
    EXPECT_EQ(rows[1].cells.size(), 1U);
    EXPECT_EQ(rows[1].mark, 6U);
}

TEST_F(BlocksOfStory, ATableInACellIsABlockOfTheCell) {
    add(u"外\r", inTable());
    add(u"内\r", withSprm8(inTable(2), sprm::PFInnerTableCell, 1));
    add(u"\r", withSprm8(withSprm8(inTable(2), sprm::PFInnerTableCell, 1), sprm::PFInnerTtp, 1));
    add(u"又\a", inTable());
    add(u"\a", rowMark());
    ASSERT_EQ(blocks().size(), 1U);
    const auto& cells = found[0].table->rows.at(0).cells;
    ASSERT_EQ(cells.size(), 1U);
    EXPECT_EQ(paragraphsOf(cells[0]), (Paragraphs{0, 1, 3}));
    ASSERT_TRUE(cells[0][1].table);
    EXPECT_EQ(cells[0][1].table->rows.at(0).mark, 2U);
}

TEST_F(BlocksOfStory, CellsWithoutAnEndOfTheirRowAreParagraphsInTheirOrder) {
    add(u"甲\a", inTable());
    add(u"乙\a", inTable());
    add(u"丙\r", inTable());
    add(u"后\r");
    EXPECT_EQ(paragraphsOf(blocks()), (Paragraphs{0, 1, 2, 3}));
    EXPECT_FALSE(found[0].table);
    main = {};
    add(u"甲\a", inTable());
    add(u"\a", rowMark());
    add(u"乙\a", inTable());
    EXPECT_EQ(paragraphsOf(blocks()), (Paragraphs{0, 2}));
    EXPECT_EQ(found[0].table->rows.size(), 1U);
}

TEST_F(BlocksOfStory, ACellWithoutAnEndEndsWithItsRow) {
    add(u"甲\a", inTable());
    add(u"乙\r", inTable());
    add(u"\a", rowMark());
    const auto& row = blocks().at(0).table->rows.at(0);
    ASSERT_EQ(row.cells.size(), 2U);
    EXPECT_EQ(paragraphsOf(row.cells[1]), (Paragraphs{1}));
}

TEST_F(BlocksOfStory, ATableBeginsWithTheFirstParagraphOfItsFirstRowOrWithTheRowsEnd) {
    add(u"\a", rowMark());
    add(u"甲\a", inTable());
    add(u"\a", rowMark());
    EXPECT_EQ(paragraphsOf(blocks()), (Paragraphs{0}));
    EXPECT_EQ(found[0].table->rows.size(), 2U);
}

TEST_F(BlocksOfStory, AParagraphWithoutCharactersEndsNeitherACellNorReadsBeforeTheText) {
    add(u"", inTable());
    add(u"甲\a", inTable());
    add(u"", inTable());
    add(u"乙\a", inTable());
    add(u"\a", rowMark());
    const auto& row = blocks().at(0).table->rows.at(0);
    ASSERT_EQ(row.cells.size(), 2U);
    EXPECT_EQ(paragraphsOf(row.cells[0]), (Paragraphs{0, 1}));
    EXPECT_EQ(paragraphsOf(row.cells[1]), (Paragraphs{2, 3}));
}

TEST_F(BlocksOfStory, NeighboursInEqualFramesShareOne) {
    add(u"一\r", frame(100));
    add(u"二\r", frame(100));
    add(u"三\r", frame(200));
    add(u"四\r");
    add(u"五\r", frame(200));
    ASSERT_EQ(paragraphsOf(blocks()), (Paragraphs{0, 2, 3, 4}));
    EXPECT_EQ(found[0].framed, 2U);
    EXPECT_EQ(found[1].framed, 1U);
    EXPECT_EQ(found[2].framed, 0U);
    EXPECT_EQ(found[3].framed, 1U);
}

TEST_F(BlocksOfStory, FramesOnBothSidesOfATableAreTwo) {
    add(u"一\r", frame(100));
    add(u"甲\a", inTable());
    add(u"\a", rowMark());
    add(u"二\r", frame(100));
    ASSERT_EQ(paragraphsOf(blocks()), (Paragraphs{0, 1, 3}));
    EXPECT_EQ(found[0].framed, 1U);
    EXPECT_EQ(found[2].framed, 1U);
}

TEST_F(BlocksOfStory, RowsAreReadWhenTheyAreAskedFor) {
    for (int row = 0; row < 3; ++row) {
        add(u"甲\a", inTable());
        add(u"\a", rowMark());
    }
    add(u"后\r");
    word::FormatResolver formats(document.tables);
    StoryBlocks read(main, formats);
    ASSERT_TRUE(read.has(0));
    const Table& table = *read[0].table;
    EXPECT_EQ(table.rows.size(), 1U);
    EXPECT_TRUE(read.hasRow(table, 1));
    EXPECT_EQ(table.rows.size(), 2U);
    EXPECT_TRUE(read.hasRow(table, 2));
    EXPECT_FALSE(read.hasRow(table, 3));
    ASSERT_TRUE(read.has(1));
    EXPECT_EQ(read[1].paragraph, 6U);
    EXPECT_FALSE(read.has(2));
}

TEST_F(BlocksOfStory, AFrameIsReadToItsEndBeforeItIsKnown) {
    add(u"一\r", frame(100));
    add(u"二\r", frame(100));
    word::FormatResolver formats(document.tables);
    StoryBlocks read(main, formats);
    ASSERT_TRUE(read.has(0));
    EXPECT_EQ(read[0].framed, 2U);
    EXPECT_FALSE(read.has(1));
}

TEST_F(BlocksOfStory, ATableIsPrecededByTheParagraphRightBeforeItAlone) {
    add(u"一\r");
    add(u"二\r");
    add(u"甲\a", inTable());
    add(u"\a", rowMark());
    add(u"三\r");
    word::FormatResolver formats(document.tables);
    EXPECT_FALSE(precedesTable(main, 0, 2, formats));
    EXPECT_TRUE(precedesTable(main, 1, 4, formats));
    EXPECT_FALSE(precedesTable(main, 2, 6, formats)) << "it goes on";
    EXPECT_FALSE(precedesTable(main, 3, 7, formats));
    EXPECT_FALSE(precedesTable(main, 4, 9, formats)) << "nothing follows";
}

TEST_F(BlocksOfStory, AFramedTableIsNotPrecededByTheTextBeforeIt) {
    const Bytes framed = frame(100);
    Bytes cell = inTable();
    cell.insert(cell.end(), framed.begin(), framed.end());
    add(u"一\r");
    add(u"甲\a", cell);
    add(u"\a", rowMark());
    word::FormatResolver formats(document.tables);
    EXPECT_FALSE(precedesTable(main, 0, 2, formats));
}

TEST_F(BlocksOfStory, InTheOfficeSuiteEverySecondBreakInARowEndsAParagraph) {
    EXPECT_TRUE(endsParagraph(u"甲\r", 1));
    EXPECT_TRUE(endsParagraph(u"甲\a", 1));
    EXPECT_FALSE(endsParagraph(u"甲乙", 1));
    EXPECT_TRUE(endsParagraph(u"甲\f", 1));
    EXPECT_FALSE(endsParagraph(u"甲\f\f", 2));
    EXPECT_TRUE(endsParagraph(u"甲\f\f\f", 3));
    EXPECT_FALSE(endsParagraph(u"\r\f", 1)) << "it stands behind an end itself";
    EXPECT_TRUE(endsParagraph(u"\r\f\f", 2));
    EXPECT_TRUE(endsParagraph(u"\f", 0));
    EXPECT_FALSE(endsParagraph(u"\f\f", 1));
}

} // namespace
} // namespace qvnd::layout
