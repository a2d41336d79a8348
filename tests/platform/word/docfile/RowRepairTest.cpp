#include "platform/word/docfile/text/RowRepair.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qvnd::word {
namespace {

using test::hex;
using test::joined;

Bytes flag(SprmOpcode opcode) { return withSprm8({}, opcode, 1); }
Bytes cell(unsigned depth = 1) {
    return joined({flag(sprm::PFInTable), withSprm32({}, sprm::PItap, depth)});
}
Bytes innerCell() { return joined({cell(2), flag(sprm::PFInnerTableCell)}); }

class RowRepair : public ::testing::Test {
protected:
    void add(std::u16string_view text, const Bytes& properties) {
        story.text += text;
        story.paragraphs.push_back({static_cast<Cp>(text.size()), 0, lists.intern(properties)});
    }
    void rowEnd(const Bytes& definition) {
        Bytes list = joined({cell(), flag(sprm::PFTtp)});
        if (!definition.empty()) {
            list = withSprm(list, sprm::TDefTable, definition);
        }
        add(u"\a", list);
    }
    ByteView listOf(std::size_t paragraph) const {
        return lists[story.paragraphs.at(paragraph).properties];
    }
    Bytes definitionOf(std::size_t paragraph) const {
        const auto entry = findSprm(listOf(paragraph), sprm::TDefTable);
        return entry ? Bytes(entry->operand.begin(), entry->operand.end()) : Bytes{};
    }

    // Two cells of 100 and 200 twips.
    const Bytes two = hex("0800 02 0000 6400 2C01");
    Story story;
    PropertyLists lists;
};

TEST_F(RowRepair, SoundRowsStayAsTheyAre) {
    add(u"a\a", cell());
    add(u"b\a", cell());
    rowEnd(two);
    add(u"end\r", {});
    const std::vector<ParagraphRun> before = story.paragraphs;
    EXPECT_EQ(repairRows(story, lists), 0);
    EXPECT_EQ(story.paragraphs, before);
    EXPECT_EQ(story.text, u"a\ab\a\aend\r");
}

TEST_F(RowRepair, ADefinitionWithTooFewCellsGrowsByTheWidthOfItsLast) {
    add(u"a\a", cell());
    add(u"b\a", cell());
    add(u"c\a", cell());
    rowEnd(two);
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(definitionOf(3), hex("0A00 03 0000 6400 2C01 F401"));
}

TEST_F(RowRepair, CellsThatTheWidestTableHasNoRoomForAreDrawnTogether) {
    const Bytes wide = hex("0800 02 0000 983A 3075"); // two cells of 15,000 twips
    for (int i = 0; i < 10; ++i) {
        add(u"a\a", cell());
    }
    rowEnd(wide);
    EXPECT_EQ(repairRows(story, lists), 1);
    const Bytes definition = definitionOf(10);
    LittleEndianReader edges(definition, "edges");
    edges.skip(3);
    for (int i = 0; i <= 10; ++i) {
        EXPECT_EQ(edges.i16(), i * 3168);
    }
}

TEST_F(RowRepair, EdgesThatDecreaseAreMovedBehindThoseBefore) {
    add(u"a\a", cell());
    add(u"b\a", cell());
    rowEnd(hex("0800 02 6400 0000 2C01"));
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(definitionOf(2), hex("0800 02 6400 6400 2C01"));
}

TEST_F(RowRepair, EqualEdgesStay) {
    add(u"a\a", cell());
    add(u"b\a", cell());
    rowEnd(hex("0800 02 0000 0000 2C01"));
    EXPECT_EQ(repairRows(story, lists), 0);
}

TEST_F(RowRepair, ADefinitionWithTooManyCellsLosesTheLast) {
    add(u"a\a", cell());
    rowEnd(two);
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(definitionOf(1), hex("0600 01 0000 6400"));
}

TEST_F(RowRepair, BordersOfTheCellsThatStayAreKept) {
    const Bytes borders = joined({Bytes(20, 0x11), Bytes(20, 0x22)});
    add(u"a\a", cell());
    rowEnd(joined({hex("3000 02 0000 6400 2C01"), borders}));
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(definitionOf(1), joined({hex("1A00 01 0000 6400"), Bytes(20, 0x11)}));
}

TEST_F(RowRepair, ARowWithoutADefinitionGetsOne) {
    add(u"a\a", cell());
    add(u"b\a", cell());
    rowEnd({});
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(definitionOf(2), hex("0800 02 0000 3E03 7C06"));
}

TEST_F(RowRepair, ADefinitionThatIsCutIsNone) {
    add(u"a\a", cell());
    rowEnd(hex("0400 01 0000"));
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(definitionOf(1), hex("0600 01 0000 3E03"));
}

TEST_F(RowRepair, ColumnsPutInLaterCount) {
    add(u"a\a", cell());
    add(u"b\a", cell());
    add(u"c\a", cell());
    Bytes list = joined({cell(), flag(sprm::PFTtp)});
    list = withSprm(list, sprm::TDefTable, two);
    add(u"\a", withSprm32(list, sprm::TInsert, 0x00640102));
    EXPECT_EQ(repairRows(story, lists), 0);
}

TEST_F(RowRepair, ColumnsPutIntoADefinitionWithoutAnyCountAndIntoNoneDoNot) {
    const auto repairsWith = [this](const Bytes& definition) {
        story = {};
        add(u"a\a", cell());
        add(u"b\a", cell());
        add(u"\a",
            withSprm32(joined({cell(), flag(sprm::PFTtp), definition}), sprm::TInsert, 0x00640200));
        return repairRows(story, lists);
    };
    EXPECT_EQ(repairsWith(withSprm({}, sprm::TDefTable, hex("0400 00 0000"))), 0);
    EXPECT_EQ(repairsWith({}), 1);
}

TEST_F(RowRepair, ANewDefinitionStandsInThePlaceOfTheOldAmongTheOtherEntries) {
    const Bytes front = joined({cell(), flag(sprm::PFTtp)});
    const Bytes behind = withSprm16({}, sprm::TDyaRowHeight, 300);
    add(u"a\a", cell());
    add(u"\a", joined({withSprm(front, sprm::TDefTable, two), behind}));
    EXPECT_EQ(repairRows(story, lists), 1);
    const Bytes one = withSprm({}, sprm::TDefTable, hex("0600 01 0000 6400"));
    EXPECT_EQ(Bytes(listOf(1).begin(), listOf(1).end()), joined({front, one, behind}));
}

TEST_F(RowRepair, ANewDefinitionHasTheColumnsThatWerePutInAndTakenOut) {
    for (const auto& [opcode, operand] :
         {std::pair(sprm::TInsert, hex("00 03 6400")), std::pair(sprm::TDelete, hex("00 02"))}) {
        story = {};
        const Bytes front = joined({cell(), flag(sprm::PFTtp)});
        add(u"a\a", cell());
        add(u"\a", withSprm(withSprm(front, sprm::TDefTable, two), opcode, operand));
        EXPECT_EQ(repairRows(story, lists), 1);
        EXPECT_FALSE(findSprm(listOf(1), opcode));
        EXPECT_EQ(findSprm(listOf(1), sprm::TDefTable)->operand[2], 1);
    }
}

TEST_F(RowRepair, ColumnsTakenOutLaterCount) {
    const auto repairsWithout = [this](unsigned first, unsigned behind) {
        story = {};
        add(u"a\a", cell());
        Bytes list = joined({cell(), flag(sprm::PFTtp)});
        list = withSprm(list, sprm::TDefTable, two);
        add(u"\a", withSprm16(list, sprm::TDelete, behind << 8 | first));
        return repairRows(story, lists);
    };
    EXPECT_EQ(repairsWithout(0, 1), 0);
    EXPECT_EQ(repairsWithout(1, 2), 0);
    EXPECT_EQ(repairsWithout(1, 1), 1) << "none";
    EXPECT_EQ(repairsWithout(2, 1), 1) << "none";
    EXPECT_EQ(repairsWithout(0, 2), 1) << "both";
}

TEST_F(RowRepair, TheLastCellGetsItsEnd) {
    add(u"a\a", cell());
    add(u"b\r", cell());
    rowEnd(two);
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(story.text, u"a\ab\a\a");
}

TEST_F(RowRepair, TheLastCellOfAnInnerRowGetsItsEnd) {
    add(u"in\r", cell(2));
    add(u"\r", withSprm(joined({innerCell(), flag(sprm::PFInnerTtp)}), sprm::TDefTable,
                        hex("0600 01 0000 6400")));
    add(u"a\a", cell());
    rowEnd(hex("0600 01 0000 6400"));
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(findSprm(listOf(0), sprm::PFInnerTableCell)->operand[0], 1);
}

TEST_F(RowRepair, ARowWithoutACellBecomesText) {
    add(u"x\r", {});
    rowEnd(two);
    add(u"end\r", {});
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(story.text, u"x\r\rend\r");
    EXPECT_TRUE(listOf(1).empty());
}

TEST_F(RowRepair, AsManyCellsAsADefinitionHoldsStayARow) {
    for (int i = 0; i < 63; ++i) {
        add(u"a\a", cell());
    }
    rowEnd(two);
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(definitionOf(63).at(2), 63);
    EXPECT_EQ(std::count(story.text.begin(), story.text.end(), u'\a'), 64);
}

TEST_F(RowRepair, MoreCellsThanADefinitionHoldsBecomeText) {
    for (int i = 0; i < 64; ++i) {
        add(u"a\a", cell());
    }
    rowEnd(two);
    EXPECT_EQ(repairRows(story, lists), 1);
    EXPECT_EQ(story.text.find(u'\a'), std::u16string::npos);
    EXPECT_TRUE(listOf(0).empty());
}

} // namespace
} // namespace qvnd::word
