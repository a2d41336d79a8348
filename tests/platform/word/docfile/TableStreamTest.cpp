#include "platform/word/docfile/writer/TableStream.h"

#include "platform/word/docfile/container/CompoundFile.h"
#include "support/ByteText.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

namespace qvnd::word {
namespace {

using test::joined;
using test::pattern;
using Durability = CompoundStore::Durability;

class TableStreamTest : public testing::Test {
protected:
    TableStreamTest()
        : store(folder.createBeside("/folder/target", &path), ClassId{}),
          table(store, store.addStream(u"1Table")) {}

    // What the file has of a structure after a commit; `size` bytes of it.
    Bytes inFile(FibPair pair, std::size_t size) {
        table.finish();
        store.commit(Durability::killedProcess);
        const Bytes stream = CompoundFile::over(folder.bytes(path)).stream(u"1Table");
        const ByteView found = ByteView(stream).subspan(table.place(pair).fc, size);
        return {found.begin(), found.end()};
    }

    test::MemoryFolder folder;
    std::filesystem::path path;
    CompoundStore store;
    TableStream table;
};

TEST_F(TableStreamTest, AStructureWithoutBytesHasNoPlace) {
    table.put(FibPair::Clx, Bytes{});
    EXPECT_EQ(table.place(FibPair::Clx).lcb, 0U);
    EXPECT_EQ(table.place(FibPair::Dop).lcb, 0U);
}

TEST_F(TableStreamTest, StructuresGrowShrinkAndChangeAnywhere) {
    Bytes other = pattern(700, 99);
    unsigned seed = 0;
    for (const std::size_t size : {3, 512, 513, 5000, 5100, 40, 12000, 12000}) {
        Bytes bytes = pattern(size, ++seed);
        table.put(FibPair::Clx, bytes);
        table.put(FibPair::Dop, other);
        EXPECT_EQ(table.place(FibPair::Clx).lcb, size);
        EXPECT_EQ(inFile(FibPair::Clx, size), bytes);
        for (const std::size_t at : {std::size_t{0}, size / 2, size - 1}) {
            bytes[at] ^= 0xFF;
            table.put(FibPair::Clx, bytes);
            EXPECT_EQ(inFile(FibPair::Clx, size), bytes) << size << " " << at;
        }
        EXPECT_EQ(inFile(FibPair::Dop, other.size()), other);
    }
}

TEST_F(TableStreamTest, PartsStandRightBehindEachOther) {
    for (const std::size_t size : {10, 500, 512, 700, 4000, 4100}) {
        const Bytes first = pattern(size, 1);
        const Bytes second = pattern(size / 2, static_cast<unsigned>(size));
        table.put(FibPair::PlcfBteChpx, {first, second});
        const Bytes all = joined({first, second});
        EXPECT_EQ(table.place(FibPair::PlcfBteChpx).lcb, all.size());
        EXPECT_EQ(inFile(FibPair::PlcfBteChpx, all.size()), all) << size;
    }
}

TEST_F(TableStreamTest, WhatGrowsAtItsFrontKeepsItsEnd) {
    Bytes all;
    for (unsigned seed = 1; seed < 60; ++seed) {
        const Bytes front = pattern(30 + 7 * seed, seed);
        const std::size_t kept = all.size() - all.size() / 10;
        all = joined({front, Bytes(all.end() - static_cast<std::ptrdiff_t>(kept), all.end())});
        table.putFront(FibPair::PlfLst, front, kept, front.size());
        EXPECT_EQ(table.place(FibPair::PlfLst).lcb, front.size());
        ASSERT_EQ(inFile(FibPair::PlfLst, all.size()), all) << seed;
    }
}

TEST_F(TableStreamTest, WhatGrowsAtItsFrontMayStartAnew) {
    const Bytes old = pattern(3000, 1);
    table.putFront(FibPair::PlfLst, old, 0, 100);
    EXPECT_EQ(inFile(FibPair::PlfLst, old.size()), old);
    const Bytes fresh = pattern(200, 2);
    table.putFront(FibPair::PlfLst, fresh, 0, 50);
    EXPECT_EQ(table.place(FibPair::PlfLst).lcb, 50U);
    EXPECT_EQ(inFile(FibPair::PlfLst, fresh.size()), fresh);
}

TEST_F(TableStreamTest, WhatGrowsAtBothEndsKeepsItsMiddle) {
    Bytes all;
    Bytes other = pattern(3000, 99);
    for (unsigned seed = 1; seed < 60; ++seed) {
        const Bytes front = pattern(20 + 3 * seed, seed);
        const Bytes back = pattern(30 + 7 * seed, 100 + seed);
        const TableStream::Kept kept{all.size() / 20, all.size() - all.size() / 10};
        const auto from = all.begin() + static_cast<std::ptrdiff_t>(kept.from);
        const Bytes middle(from, from + static_cast<std::ptrdiff_t>(kept.count));
        table.putAround(FibPair::DggInfo, front, kept, back);
        table.put(FibPair::Dop, other);
        all = joined({front, middle, back});
        EXPECT_EQ(table.place(FibPair::DggInfo).lcb, all.size());
        ASSERT_EQ(inFile(FibPair::DggInfo, all.size()), all) << seed;
        EXPECT_EQ(inFile(FibPair::Dop, other.size()), other);
    }
}

TEST_F(TableStreamTest, WhatGrowsAtBothEndsMayStartAnewInItsOldPlace) {
    Bytes front = pattern(1000, 1);
    Bytes back = pattern(2000, 2);
    table.putAround(FibPair::DggInfo, front, {}, back);
    EXPECT_EQ(inFile(FibPair::DggInfo, 3000), joined({front, back}));
    const std::uint32_t place = table.place(FibPair::DggInfo).fc;
    front = pattern(1500, 3);
    back = pattern(300, 4);
    table.putAround(FibPair::DggInfo, front, {}, back);
    EXPECT_EQ(table.place(FibPair::DggInfo).fc, place);
    EXPECT_EQ(inFile(FibPair::DggInfo, 1800), joined({front, back}));
    table.putAround(FibPair::DggInfo, {}, {}, {});
    EXPECT_EQ(table.place(FibPair::DggInfo).lcb, 0U);
}

TEST_F(TableStreamTest, PlacesThatStructuresHaveLeftAreUsedAgain) {
    const std::array pairs{FibPair::Clx, FibPair::Dop, FibPair::PlcfBkf};
    std::size_t largest = 0;
    std::size_t held = 0;
    for (unsigned step = 1; step <= 60; ++step) {
        held = 0;
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            const Bytes bytes = pattern((i + 1) * step * 700, step);
            held += bytes.size();
            table.put(pairs[i], bytes);
            if (step % 10 == 0) {
                ASSERT_EQ(inFile(pairs[i], bytes.size()), bytes) << step;
            }
        }
        table.finish();
        store.commit(Durability::killedProcess);
        largest = CompoundFile::over(folder.bytes(path)).find(u"1Table")->size;
        ASSERT_LT(largest, 3 * held + 4096) << step;
    }
    EXPECT_LT(folder.bytes(path).size(), 4 * held);
}

TEST_F(TableStreamTest, WhatIsFreeAtTheEndIsGivenBack) {
    std::uint64_t before = 0;
    int timesSmaller = 0;
    for (std::size_t size = 5000; size < 1'000'000; size += size / 8) {
        const Bytes bytes = pattern(size, static_cast<unsigned>(size));
        table.put(FibPair::Clx, bytes);
        ASSERT_EQ(inFile(FibPair::Clx, size), bytes);
        const std::uint64_t now = CompoundFile::over(folder.bytes(path)).find(u"1Table")->size;
        timesSmaller += now < before ? 1 : 0;
        before = now;
    }
    EXPECT_GT(timesSmaller, 2);
}

TEST_F(TableStreamTest, NoMoreIsKeptThanThereIs) {
    table.putFront(FibPair::PlfLst, Bytes(10), 0, 10);
    EXPECT_THROW(table.putFront(FibPair::PlfLst, Bytes(10), 11, 10), std::invalid_argument);
    table.putAround(FibPair::DggInfo, Bytes(10), {}, Bytes(5));
    EXPECT_THROW(table.putAround(FibPair::DggInfo, {}, {3, 13}, {}), std::invalid_argument);
}

TEST_F(TableStreamTest, OnlyWhatChangesIsWritten) {
    Bytes bytes = pattern(40000, 1);
    table.put(FibPair::Clx, bytes);
    table.putFront(FibPair::PlfLst, pattern(40000, 2), 0, 40000);
    table.putAround(FibPair::DggInfo, pattern(20, 3), {}, pattern(39980, 3));
    store.commit(Durability::killedProcess);
    const std::size_t before = folder.trouble.bytesWritten;
    bytes[20000] ^= 0xFF;
    table.put(FibPair::Clx, bytes);
    table.putFront(FibPair::PlfLst, pattern(10, 2), 39990, 40000);
    table.putAround(FibPair::DggInfo, Bytes(10), {20, 39900}, Bytes(20));
    store.commit(Durability::killedProcess);
    EXPECT_LT(folder.trouble.bytesWritten - before, 10 * CompoundStore::sectorSize);
}

} // namespace
} // namespace qvnd::word
