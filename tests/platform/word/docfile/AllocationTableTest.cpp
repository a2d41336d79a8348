#include "platform/word/docfile/container/AllocationTable.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
constexpr std::uint32_t tableSector = 0xFFFFFFFD;
constexpr std::uint32_t freeSector = 0xFFFFFFFF;
constexpr std::uint32_t sectorsOfAPart = 128;
constexpr std::uint32_t partsInTheHeader = 109;

void allocate(AllocationTable& table, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i) {
        table.allocate();
    }
}

std::vector<SectorWrite> commit(AllocationTable& table) {
    std::vector<SectorWrite> writes = table.layOut();
    table.committed();
    return writes;
}

std::vector<std::uint32_t> entries(const Bytes& bytes) {
    LittleEndianReader reader(bytes, "FAT");
    std::vector<std::uint32_t> result;
    while (!reader.atEnd()) {
        result.push_back(reader.u32());
    }
    return result;
}

TEST(AllocationTable, SaysOfEachSectorWhatFollowsIt) {
    AllocationTable table;
    allocate(table, 2);
    table.link(0, 1);
    const auto writes = table.layOut();
    ASSERT_EQ(writes.size(), 1U);
    EXPECT_EQ(writes[0].sector, 2U);
    std::vector<std::uint32_t> expected{1, endOfChain, tableSector};
    expected.resize(sectorsOfAPart, freeSector);
    EXPECT_EQ(entries(writes[0].bytes), expected);
    EXPECT_EQ(table.tableSectors(), std::vector<std::uint32_t>{2});
    EXPECT_TRUE(table.difatSectors().empty());
}

TEST(AllocationTable, ASectorThatNoStateUsesIsGivenOutAgainAtOnce) {
    AllocationTable table;
    allocate(table, 2);
    EXPECT_TRUE(table.fresh(0));
    table.release(0);
    EXPECT_FALSE(table.fresh(0));
    EXPECT_EQ(table.allocate(), 0U);
    EXPECT_EQ(table.allocate(), 2U);
}

TEST(AllocationTable, ASectorOfTheCommittedStateIsFreeWithTheNextOne) {
    AllocationTable table;
    allocate(table, 1);
    commit(table); // the table itself takes the second
    EXPECT_FALSE(table.fresh(0));
    table.release(0);
    EXPECT_EQ(table.allocate(), 2U);
    commit(table); // and now the fourth
    EXPECT_EQ(table.allocate(), 0U);
    EXPECT_EQ(table.allocate(), 1U) << "where the table was";
    EXPECT_EQ(table.allocate(), 4U);
}

TEST(AllocationTable, FreeSectorsInPartsThatAreWrittenAnywayComeFirst) {
    AllocationTable table;
    allocate(table, 3 * sectorsOfAPart);
    commit(table);
    for (const std::uint32_t sector : {5U, 200U, 260U}) {
        table.release(sector);
    }
    commit(table);
    table.link(201, 202); // touches the second part
    EXPECT_EQ(table.allocate(), 200U);
    EXPECT_EQ(table.allocate(), 5U) << "no other one is free there";
}

TEST(AllocationTable, OnlyPartsThatHaveChangedAreWritten) {
    AllocationTable table;
    allocate(table, 3 * sectorsOfAPart);
    EXPECT_EQ(commit(table).size(), 4U) << "its own sectors stand in a fourth part";
    const std::vector<std::uint32_t> before = table.tableSectors();
    table.link(0, 1);
    commit(table);
    EXPECT_NE(table.tableSectors()[0], before[0]);
    EXPECT_EQ(table.tableSectors()[1], before[1]);
    EXPECT_EQ(table.tableSectors()[2], before[2]);
}

TEST(AllocationTable, PartsBehindThoseInTheHeaderAreNamedByTheDifat) {
    AllocationTable table;
    allocate(table, (partsInTheHeader + 1) * sectorsOfAPart - 200);
    const auto writes = commit(table);
    ASSERT_EQ(table.tableSectors().size(), partsInTheHeader + 1);
    ASSERT_EQ(table.difatSectors().size(), 1U);
    EXPECT_EQ(writes.size(), partsInTheHeader + 2U);
    EXPECT_EQ(writes.back().sector, table.difatSectors()[0]);
    std::vector<std::uint32_t> expected{table.tableSectors().back()};
    expected.resize(sectorsOfAPart - 1, freeSector);
    expected.push_back(endOfChain);
    EXPECT_EQ(entries(writes.back().bytes), expected);
}

TEST(AllocationTable, TheDifatIsWrittenAgainWhereAPartThatItNamesMoves) {
    AllocationTable table;
    constexpr std::uint32_t behindTheHeader = partsInTheHeader * sectorsOfAPart;
    allocate(table, behindTheHeader + 60);
    commit(table);
    for (std::uint32_t sector = 10; sector < 30; ++sector) {
        table.release(sector);
    }
    commit(table); // sectors of the first part are free
    table.link(0, 7);
    commit(table); // what it touched stands there
    const std::vector<std::uint32_t> before = table.difatSectors();
    table.link(0, 8);
    EXPECT_EQ(commit(table).size(), 1U) << "the first part alone";
    EXPECT_EQ(table.difatSectors(), before);
    table.link(behindTheHeader, 7);
    commit(table);
    EXPECT_NE(table.difatSectors(), before);
}

} // namespace
} // namespace qvnd::word
