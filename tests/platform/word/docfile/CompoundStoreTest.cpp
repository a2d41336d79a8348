#include "platform/word/docfile/container/CompoundStore.h"

#include "platform/word/docfile/CompoundChecks.h"
#include "platform/word/docfile/container/CompoundFile.h"
#include "support/ByteText.h"
#include "support/MemoryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::compoundFaults;
using test::FileCall;
using test::pattern;
using testing::IsEmpty;
using Durability = CompoundStore::Durability;

const ClassId someClass{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

class CompoundStoreTest : public testing::Test {
protected:
    CompoundStoreTest() : store(folder.createBeside("/folder/target", &path), someClass) {}

    const Bytes& file() const { return folder.bytes(path); }
    void commit() {
        store.commit(Durability::killedProcess);
        EXPECT_THAT(compoundFaults(file()), IsEmpty());
    }
    Bytes readBack(const std::u16string& name) const {
        return CompoundFile::over(file()).stream(name);
    }

    test::MemoryFolder folder;
    std::filesystem::path path;
    CompoundStore store;
};

TEST_F(CompoundStoreTest, AFileWithoutStreamsIsSound) {
    commit();
    const CompoundFile read = CompoundFile::over(file());
    EXPECT_THAT(read.entries(), IsEmpty());
    EXPECT_EQ(read.rootClassId(), someClass);
}

TEST_F(CompoundStoreTest, StreamsOfEverySizeAreReadBack) {
    std::vector<std::pair<std::u16string, Bytes>> streams;
    for (const std::size_t size : {0, 1, 63, 64, 65, 511, 512, 4095, 4096, 4097, 70000}) {
        const std::u16string name = u"Stream" + std::u16string(1, char16_t(u'A' + streams.size()));
        streams.emplace_back(name, pattern(size, static_cast<unsigned>(size)));
        store.append(store.addStream(name), streams.back().second);
    }
    commit();
    for (const auto& [name, bytes] : streams) {
        EXPECT_EQ(readBack(name), bytes);
    }
}

TEST_F(CompoundStoreTest, AppendingByPiecesGivesTheSameAsAppendingAtOnce) {
    const auto stream = store.addStream(u"Pieces");
    Bytes all;
    for (unsigned i = 0; i < 60; ++i) {
        const Bytes piece = pattern(i * 37 % 700, i);
        store.append(stream, piece);
        all.insert(all.end(), piece.begin(), piece.end());
        if (i % 7 == 0) {
            commit();
            EXPECT_EQ(readBack(u"Pieces"), all);
        }
    }
    commit();
    EXPECT_EQ(readBack(u"Pieces"), all);
    EXPECT_EQ(store.size(stream), all.size());
}

TEST_F(CompoundStoreTest, OverwritingAPartChangesOnlyThatPart) {
    const auto stream = store.addStream(u"Text");
    Bytes all = pattern(10000, 1);
    store.append(stream, all);
    commit();
    const Bytes middle = pattern(1024, 2);
    store.overwrite(stream, 512, middle);
    std::copy(middle.begin(), middle.end(), all.begin() + 512);
    const Bytes end = pattern(10000 - 9728, 3);
    store.overwrite(stream, 9728, end);
    std::copy(end.begin(), end.end(), all.begin() + 9728);
    commit();
    EXPECT_EQ(readBack(u"Text"), all);
    store.append(stream, pattern(1000, 4));
    const Bytes more = pattern(1000, 4);
    all.insert(all.end(), more.begin(), more.end());
    commit();
    EXPECT_EQ(readBack(u"Text"), all);
}

TEST_F(CompoundStoreTest, APartOfASectorIsNotOverwritten) {
    const auto stream = store.addStream(u"Text");
    store.append(stream, pattern(10000, 1));
    EXPECT_THROW(store.overwrite(stream, 100, pattern(512, 2)), std::invalid_argument);
    EXPECT_THROW(store.overwrite(stream, 512, pattern(100, 2)), std::invalid_argument);
    EXPECT_THROW(store.overwrite(stream, 9728, pattern(512, 2)), std::invalid_argument);
}

TEST_F(CompoundStoreTest, AStreamGivesItsEndBackAndGrowsOn) {
    const auto stream = store.addStream(u"a");
    store.append(stream, pattern(20'000, 1));
    store.commit(Durability::killedProcess);
    store.shrink(stream, 8192);
    EXPECT_EQ(store.size(stream), 8192U);
    store.append(stream, pattern(700, 2));
    store.commit(Durability::killedProcess);
    const Bytes whole = pattern(20'000, 1);
    EXPECT_EQ(CompoundFile::over(folder.bytes(path)).stream(u"a"),
              test::joined({Bytes(whole.begin(), whole.begin() + 8192), pattern(700, 2)}));
    EXPECT_THAT(compoundFaults(folder.bytes(path)), IsEmpty());
    EXPECT_THROW(store.shrink(stream, 8192 + 512 + 1), std::invalid_argument);
    EXPECT_THROW(store.shrink(stream, 3584), std::invalid_argument);
    EXPECT_THROW(store.shrink(stream, 16384), std::invalid_argument);
}

TEST_F(CompoundStoreTest, AStreamMayShrinkBelowTheSmallLimitAndGrowAgain) {
    const auto stream = store.addStream(u"Changing");
    for (const std::size_t size : {9000, 100, 4096, 0, 4095, 20000}) {
        store.replace(stream, pattern(size, static_cast<unsigned>(size)));
        commit();
        EXPECT_EQ(readBack(u"Changing"), pattern(size, static_cast<unsigned>(size)));
    }
}

TEST_F(CompoundStoreTest, StoragesHoldStreamsOfTheSameNames) {
    const auto pool = store.addStorage(0, u"ObjectPool", {});
    const auto one = store.addStorage(pool, u"_1", someClass);
    const auto two = store.addStorage(pool, u"_2", {});
    store.append(store.addStream(one, u"Contents"), pattern(10, 1));
    store.append(store.addStream(two, u"CONTENTS"), pattern(5000, 2));
    commit();
    EXPECT_EQ(readBack(u"ObjectPool/_1/Contents"), pattern(10, 1));
    EXPECT_EQ(readBack(u"objectpool/_2/contents"), pattern(5000, 2));
    EXPECT_EQ(CompoundFile::over(file()).find(u"ObjectPool/_1")->classId, someClass);
}

TEST_F(CompoundStoreTest, DirectoriesOfAnySizeAreBalancedTrees) {
    for (int i = 0; i < 70; ++i) {
        const std::string name = "N" + std::to_string(i * 7919 % 1000);
        store.append(store.addStream(std::u16string(name.begin(), name.end())), pattern(20, 1));
        commit();
    }
    EXPECT_EQ(CompoundFile::over(file()).entries().size(), 70U);
}

// As the storages of embedded objects come in, one behind the other.
TEST_F(CompoundStoreTest, FewNewEntriesChangeFewSectorsOfALargeDirectory) {
    const auto add = [&](int from, int to) {
        for (int i = from; i < to; ++i) {
            const std::string name = "_" + std::to_string(1'000'000'000 + i);
            store.append(store.addStream(std::u16string(name.begin(), name.end())), pattern(20, 1));
        }
    };
    add(0, 2000);
    commit();
    add(2000, 2010);
    commit(); // the first one after a long one touches tables that lie scattered
    folder.trouble.bytesWritten = 0;
    add(2010, 2020);
    commit();
    EXPECT_LE(folder.trouble.bytesWritten, 60U * 512); // of a directory of 505 sectors
    EXPECT_EQ(CompoundFile::over(file()).entries().size(), 2020U);
}

TEST_F(CompoundStoreTest, NamesThatTheFormatForbidsAreRefused) {
    EXPECT_THROW(store.addStream(u""), std::invalid_argument);
    EXPECT_THROW(store.addStream(u"a/b"), std::invalid_argument);
    EXPECT_THROW(store.addStream(std::u16string(32, u'x')), std::invalid_argument);
    store.addStream(std::u16string(31, u'x'));
    EXPECT_THROW(store.addStream(std::u16string(31, u'X')), std::invalid_argument);
    commit();
}

TEST_F(CompoundStoreTest, FilesBeyondTheHeadersTableGrowADifatChain) {
    const auto stream = store.addStream(u"Large");
    const Bytes part = pattern(1 << 20, 9);
    for (int i = 0; i < 17; ++i) { // the header names the tables of the first 6.8 MB
        store.append(stream, part);
        if (i % 3 == 0 || i > 5) {
            commit();
        }
    }
    store.overwrite(stream, 0, pattern(512, 5));
    commit();
    const Bytes read = readBack(u"Large");
    ASSERT_EQ(read.size(), 17U << 20);
    EXPECT_TRUE(std::equal(part.begin() + 512, part.end(), read.begin() + 512));
    for (std::size_t i = 1; i < 17; ++i) {
        EXPECT_TRUE(std::equal(part.begin(), part.end(),
                               read.begin() + static_cast<std::ptrdiff_t>(i << 20)));
    }
}

// The header names 109 sectors of the table; the next one is the first that the chain names.
TEST_F(CompoundStoreTest, TheTablesSectorsMayPassTheHeadersPlacesByOne) {
    constexpr std::size_t namedInHeader = 109 * 128 * 512;
    constexpr std::size_t step = 32 * 512;
    const auto stream = store.addStream(u"Large");
    store.append(stream, pattern(namedInHeader - 10 * step, 9));
    const Bytes part = pattern(step, 3);
    for (int i = 0; i < 16; ++i) {
        commit();
        store.append(stream, part);
    }
    commit();
    EXPECT_EQ(store.size(stream), namedInHeader + 6 * step);
    EXPECT_EQ(readBack(u"Large").size(), store.size(stream));
}

TEST_F(CompoundStoreTest, WhatIsFirstWrittenLiesInOrder) {
    const auto stream = store.addStream(u"Text");
    for (unsigned i = 0; i < 20; ++i) {
        store.append(stream, pattern(5000, i));
    }
    store.commit(Durability::killedProcess);
    const Bytes whole = readBack(u"Text");
    const auto at = std::search(file().begin(), file().end(), whole.begin(), whole.end());
    EXPECT_NE(at, file().end());
}

TEST_F(CompoundStoreTest, SpaceIsUsedAgainAfterTheNextCommit) {
    const auto stream = store.addStream(u"Text");
    store.append(stream, pattern(100000, 1));
    commit();
    for (unsigned i = 0; i < 5; ++i) {
        store.overwrite(stream, 0, pattern(51200, i));
        commit();
    }
    const std::size_t settled = file().size();
    for (unsigned i = 0; i < 50; ++i) {
        store.overwrite(stream, 512 * (i % 90), pattern(51200, i));
        commit();
    }
    EXPECT_LE(file().size(), settled + 10 * 512);
}

TEST_F(CompoundStoreTest, ACommitCostsWhatChangedAndNotWhatIsThere) {
    const auto stream = store.addStream(u"Large");
    store.append(stream, pattern(4 << 20, 1));
    commit();
    for (unsigned i = 0; i < 4; ++i) { // the first ones touch tables that lie scattered
        store.overwrite(stream, 2048 * 512, pattern(512, i));
        commit();
    }
    folder.trouble.bytesWritten = 0;
    store.overwrite(stream, 2048 * 512, pattern(512, 77));
    commit();
    EXPECT_LE(folder.trouble.bytesWritten, 12U * 512);
}

TEST_F(CompoundStoreTest, AnUnchangedStateCostsAlmostNothing) {
    store.append(store.addStream(u"Text"), pattern(100000, 1));
    commit();
    folder.trouble.bytesWritten = 0;
    commit();
    EXPECT_EQ(folder.trouble.bytesWritten, 512U);
}

TEST_F(CompoundStoreTest, ShortWritesAreContinued) {
    folder.trouble.shortWrites = true;
    store.append(store.addStream(u"Text"), pattern(50000, 1));
    commit();
    EXPECT_EQ(readBack(u"Text"), pattern(50000, 1));
}

TEST_F(CompoundStoreTest, DurabilityAgainstLostPowerWaitsBeforeAndAfterTheHeader) {
    store.append(store.addStream(u"Text"), pattern(50000, 1));
    store.commit(Durability::killedProcess);
    EXPECT_EQ(folder.trouble.syncs, 0U);
    store.append(store.addStream(u"More"), pattern(5000, 2));
    store.commit(Durability::lostPower);
    EXPECT_EQ(folder.trouble.syncs, 2U);
    const std::vector<FileCall>& calls = folder.trouble.calls;
    EXPECT_EQ(std::vector(calls.end() - 4, calls.end()),
              (std::vector{FileCall::write, FileCall::sync, FileCall::writeHead, FileCall::sync}));
}

// The header may have reached the disk: to cut the file would destroy what it names.
TEST_F(CompoundStoreTest, WhatWasWrittenStaysWhenTheSyncBehindTheHeaderFails) {
    const auto stream = store.addStream(u"Text");
    store.append(stream, pattern(50000, 1));
    store.commit(Durability::lostPower);
    store.append(stream, pattern(50000, 2));
    folder.trouble.failingSync = folder.trouble.syncs + 1;
    EXPECT_THROW(store.commit(Durability::lostPower), RunTimeError);
    store.abandon();
    EXPECT_THAT(compoundFaults(file()), IsEmpty());
    EXPECT_EQ(readBack(u"Text").size(), 100000U);
}

TEST_F(CompoundStoreTest, WhatWasAppendedGoesWhenTheSyncBeforeTheHeaderFails) {
    const auto stream = store.addStream(u"Text");
    store.append(stream, pattern(50000, 1));
    store.commit(Durability::lostPower);
    const Bytes before = file();
    store.append(stream, pattern(50000, 2));
    folder.trouble.failingSync = folder.trouble.syncs;
    EXPECT_THROW(store.commit(Durability::lostPower), RunTimeError);
    store.abandon();
    EXPECT_EQ(file(), before);
}

TEST_F(CompoundStoreTest, AfterEveryWriteTheFileIsWhollyTheOldOrTheNewState) {
    const auto text = store.addStream(u"Text");
    const auto table = store.addStream(u"Table");
    const auto small = store.addStream(u"Small");
    const auto write = [&](unsigned state) {
        store.append(text, pattern(3000 + 100 * state, state));
        store.replace(small, pattern(50 + state * 31 % 200, state));
        if (store.size(table) < 8192) {
            store.append(table, pattern(8192, state));
        } else {
            store.overwrite(table, 0, pattern(8192, state));
        }
        if (store.size(text) > 4096) {
            store.overwrite(text, 512 * (state % 4), pattern(512, state));
        }
    };
    const auto contents = [&] {
        const CompoundFile read = CompoundFile::over(file());
        return std::vector<Bytes>{read.stream(u"Text"), read.stream(u"Table"),
                                  read.stream(u"Small")};
    };
    write(0);
    commit();
    for (unsigned state = 1; state < 60; ++state) {
        const std::vector<Bytes> before = contents();
        std::size_t old = 0;
        std::vector<std::vector<Bytes>> others;
        folder.trouble.afterWrite = [&] {
            EXPECT_THAT(compoundFaults(file()), IsEmpty());
            const auto now = contents();
            now == before ? void(++old) : others.push_back(now);
        };
        write(state);
        store.commit(Durability::killedProcess);
        folder.trouble.afterWrite = nullptr;
        EXPECT_GT(old, 2U);
        ASSERT_EQ(others.size(), 1U); // the header alone made the step
        EXPECT_EQ(others.front(), contents());
    }
}

TEST_F(CompoundStoreTest, AFailedWriteLeavesTheOldState) {
    for (std::size_t failing = 0; failing < 12; ++failing) {
        std::filesystem::path other;
        CompoundStore fresh(folder.createBeside("/folder/target", &other), someClass);
        const auto stream = fresh.addStream(u"Text");
        fresh.append(stream, pattern(20000, 1));
        fresh.commit(Durability::killedProcess);
        folder.trouble.failingWrite = folder.trouble.writes + failing;
        bool failed = false;
        try {
            fresh.append(stream, pattern(3000, 2));
            fresh.overwrite(stream, 1024, pattern(1024, 3));
            fresh.commit(Durability::killedProcess);
        } catch (const RunTimeError& error) {
            failed = true;
            EXPECT_EQ(error.number(), error::pathAccess);
        }
        folder.trouble.failingWrite.reset();
        EXPECT_THAT(compoundFaults(folder.bytes(other)), IsEmpty());
        const Bytes read = CompoundFile::over(folder.bytes(other)).stream(u"Text");
        EXPECT_EQ(read.size(), failed ? 20000U : 23000U) << failing;
    }
}

} // namespace
} // namespace qvnd::word
