#ifdef __linux__

#include "platform/history/HistoryWorld.h"
#include "support/RestrictedProcess.h"

#include <gtest/gtest.h>

using namespace qvnd;
using test::HistoryWorld;
using test::RestrictedProcess;

namespace {

// A work space whose disk is full from some size of a file on: plans 甲 and 乙, of which a command
// takes the second, changes the first and makes a third.
class FullDisk : public testing::Test {
protected:
    using State = HistoryWorld::State;
    enum Answer : long { done, refused, torn };

    FullDisk() {
        folder.makeFolder("w");
        HistoryWorld world(base());
        world.write("source.doc", QByteArray(20000, 'x'));
        world.run("新建", [&] { world.makePlan("甲"); });
        world.run("新建", [&] { world.makePlan("乙"); });
        before = world.state();
        changeMuch(world);
        behind = world.state();
        world.history->undo();
    }

    QString base() const { return folder.path("w"); }
    static history::History::Outcome changeMuch(HistoryWorld& world) {
        return world.run("换", [&] {
            world.deletePlan("乙");
            HistoryWorld::addRow(*world.db, "甲", "甲.7");
            world.files->DeleteFile(world.path("甲/甲.1.doc"));
            world.makePlan("丙");
        });
    }
    static State stateIn(const QString& base) { return HistoryWorld(base).state(); }
    // The size that every file but those of the history may have.
    std::size_t enoughForTheRest() const {
        qint64 largest = 0;
        QDirIterator at(base(), {"*.mdb", "*.doc"}, QDir::Files, QDirIterator::Subdirectories);
        while (at.hasNext()) {
            at.next();
            largest = std::max(largest, at.fileInfo().size());
        }
        return static_cast<std::size_t>(largest) + 16384;
    }

    test::TemporaryFolder folder{test::inMemory()};
    State before;
    State behind;
};

TEST_F(FullDisk, ACommandThatCannotBeRecordedDoesNothing) {
    int refusals = 0;
    bool isDone = false;
    for (std::size_t limit = enoughForTheRest(); !isDone && limit < 4'000'000; limit += limit / 4) {
        SCOPED_TRACE("files up to " + std::to_string(limit));
        const auto answer = RestrictedProcess::withFilesUpTo(limit, [&]() -> std::optional<long> {
            HistoryWorld world(base());
            return changeMuch(world).refusal.isEmpty() ? done : refused;
        });
        if (!answer) {
            GTEST_SKIP() << "files cannot be limited here";
        }
        isDone = *answer == done;
        refusals += *answer == refused;
        HistoryWorld world(base());
        EXPECT_FALSE(world.history->mend().unfinished);
        ASSERT_EQ(world.state(), isDone ? behind : before);
    }
    EXPECT_TRUE(isDone);
    EXPECT_GT(refusals, 2);
}

// What the process itself finds behind the failure, and what the next one does.
TEST_F(FullDisk, AnUndoThatCannotBeEndedLeavesTheStateBeforeIt) {
    {
        HistoryWorld world(base());
        changeMuch(world);
    }
    const std::size_t enough = enoughForTheRest();
    int failures = 0;
    bool isDone = false;
    for (std::size_t limit = 4096; !isDone && limit < 4'000'000; limit += limit / 4) {
        SCOPED_TRACE("files up to " + std::to_string(limit));
        const auto answer = RestrictedProcess::withFilesUpTo(limit, [&]() -> std::optional<long> {
            HistoryWorld world(base());
            try {
                world.history->undo();
                return done;
            } catch (const RunTimeError&) {
                return world.state() == behind ? refused : torn;
            }
        });
        if (!answer) {
            GTEST_SKIP() << "files cannot be limited here";
        }
        isDone = *answer == done;
        failures += *answer == refused;
        // A database that is itself larger than any file may be cannot be given its content again.
        EXPECT_TRUE(*answer != torn || limit < enough);
        HistoryWorld world(base());
        const bool isCarriedOn = world.history->mend().restored;
        EXPECT_TRUE(isCarriedOn || *answer != torn);
        ASSERT_EQ(world.state(), isDone || isCarriedOn ? before : behind);
        if (isCarriedOn) {
            world.history->redo();
        }
    }
    EXPECT_TRUE(isDone);
    EXPECT_GT(failures, 2);
}

TEST_F(FullDisk, ACommandIsRefusedWhereTheHistoryMayNotBeWritten) {
    std::vector<std::string> owned{base().toStdString()};
    QDirIterator at(base(), QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (at.hasNext()) {
        owned.push_back(at.next().toStdString());
    }
    QFile(folder.path()).setPermissions(QFile::Permissions(0x7777));
    const QString history = base() + "/.~history";
    QFile(history).setPermissions(QFile::Permissions(0x5555));
    QFile(history + "/history.db").setPermissions(QFile::Permissions(0x4444));
    const auto answer = RestrictedProcess::withoutPrivileges(owned, [&]() -> std::optional<long> {
        HistoryWorld world(base());
        return changeMuch(world).refusal.isEmpty() ? done : refused;
    });
    QFile(history).setPermissions(QFile::Permissions(0x7777));
    QFile(history + "/history.db").setPermissions(QFile::Permissions(0x6666));
    if (!answer) {
        GTEST_SKIP() << "rights cannot be given up here";
    }
    EXPECT_EQ(*answer, refused);
    EXPECT_EQ(stateIn(base()), before);
}

// The command goes on unrecorded when the user has said so.
TEST_F(FullDisk, WithoutTheHistoryACommandGoesOnAfterTheUserHasSaidSo) {
    const auto answer =
        RestrictedProcess::withFilesUpTo(enoughForTheRest(), [&]() -> std::optional<long> {
            HistoryWorld world(base());
            changeMuch(world);
            world.history->goOnWithout();
            return changeMuch(world).refusal.isEmpty() ? done : refused;
        });
    if (!answer) {
        GTEST_SKIP() << "files cannot be limited here";
    }
    EXPECT_EQ(*answer, done);
    EXPECT_EQ(stateIn(base()), behind);
}

} // namespace

#endif
