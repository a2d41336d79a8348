#include "platform/history/KilledHistory.h"

#ifdef __linux__

#include <csignal>

using namespace qvnd;
using test::HistoryWorld;
using test::KilledHistory;
using test::nothing;
using test::TracedProcess;

namespace {

// Killed at once when it has changed a row.
void killAfterAdding(const QString& base, const QString& caption, const QString& key) {
    TracedProcess::run(
        [&] {
            HistoryWorld killed(base);
            killed.run(caption, [&] {
                HistoryWorld::addRow(*killed.db, "甲", key);
                killed.workspace().Settle();
                raise(SIGKILL);
            });
        },
        0);
}

class KilledTwice : public KilledHistory {
protected:
    KilledTwice() {
        folder.makeFolder("w");
        prepare(base);
        killAfterAdding(base, "添加", "甲.3");
    }
    history::History::Found found() { return HistoryWorld(base).history->mend(); }

    test::TemporaryFolder folder{test::inMemory()};
    const QString base = folder.path("w");
};

TEST_F(KilledTwice, ACommandIsToldByEveryStartUntilTheUserHasReadIt) {
    if (!found().unfinished) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    killAfterAdding(base, history::caption::start, "甲.4");
    const auto again = found();
    ASSERT_TRUE(again.unfinished);
    EXPECT_EQ(again.unfinished->title, "添加[名甲.3]");
    EXPECT_FALSE(HistoryWorld(base).state()["central.mdb"].join(' ').contains("甲.4"));
    {
        HistoryWorld world(base);
        world.history->mend();
        world.history->told();
    }
    EXPECT_FALSE(found().unfinished);
}

TEST_F(KilledTwice, ACommandIsToldThatLiesBehindAnotherKilledOne) {
    killAfterAdding(base, "添加", "甲.4");
    const auto both = found();
    if (!both.unfinished) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    EXPECT_EQ(both.unfinished->title, "添加[名甲.4]");
    EXPECT_EQ(both.unfinishedBefore, QStringList{"添加[名甲.3]"});
}

TEST_F(KilledTwice, OnlyTheFirstStartThatComesToItsEndBelongsToTheKilledCommand) {
    if (!found().unfinished) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    killAfterAdding(base, history::caption::start, "甲.4");
    HistoryWorld world(base);
    world.history->mend();
    const auto first =
        world.run(history::caption::start, [&] { HistoryWorld::addRow(*world.db, "甲", "甲.5"); });
    ASSERT_TRUE(first.step);
    EXPECT_EQ(first.step->title, "添加[名甲.3]");
    const auto second =
        world.run(history::caption::start, [&] { HistoryWorld::addRow(*world.db, "甲", "甲.6"); });
    ASSERT_TRUE(second.step);
    EXPECT_EQ(second.step->kind, history::StepKind::automatic);
    EXPECT_EQ(second.step->parent, first.step->id);
}

// In a database that the command has not changed.
TEST_F(KilledTwice, WhatCameFromOutsideMeanwhileDoesNotPartTheStartFromTheCommand) {
    const QString own = base + "/甲/甲.mdb";
    test::PlainSqlite(own).rows("UPDATE 甲 SET 名称='mine' WHERE Key='甲.2'");
    const State before = stateBehind(nothing, nothing);
    HistoryWorld world(base);
    const auto killed = world.history->mend().unfinished;
    if (!killed) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    const State found = world.state();
    const auto start = world.run(history::caption::start, [&] {
        HistoryWorld::addRow(*world.workspace().OpenDatabase(own), "甲", "甲.5");
    });
    const State behind = world.state();
    ASSERT_TRUE(start.step);
    EXPECT_EQ(start.step->title, killed->title);
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.state()["central.mdb"], before["central.mdb"]);
    EXPECT_EQ(world.state()["甲/甲.mdb"], found["甲/甲.mdb"]);
    EXPECT_EQ(world.history->undoable()->title, "外部改动[甲 文件夹中的大纲]");
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.state(), behind);
    world.history->undo();
    world.history->undo();
    EXPECT_EQ(world.state(), before);
}

// In the database that the command and the start have changed, so that nobody can tell what of it
// is whose.
TEST_F(KilledTwice, NothingOfAChangeFromOutsideBehindBothIsLostAndEachStateCanBeGoneBackTo) {
    if (!found().unfinished) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    const State before = stateBehind(nothing, nothing);
    const State killed = stateIn(base);
    killAfterAdding(base, history::caption::start, "甲.4");
    test::PlainSqlite(base + "/central.mdb")
        .rows("UPDATE 甲 SET 名称='mine' WHERE Key IN ('甲.2','甲.4')");
    HistoryWorld world(base);
    const auto again = world.history->mend();
    EXPECT_EQ(again.unfinished->title, "添加[名甲.3]");
    EXPECT_TRUE(again.note.contains("外部改动[central.mdb]")) << again.note.toStdString();
    const State outside = world.state();
    EXPECT_TRUE(outside["central.mdb"].contains("2|甲.2|mine"));
    EXPECT_TRUE(outside["central.mdb"].contains("4|甲.4|mine"));
    world.run(history::caption::start, [&] { HistoryWorld::addRow(*world.db, "甲", "甲.5"); });
    const State behind = world.state();
    for (const State& state : {outside, killed, before}) {
        ASSERT_TRUE(world.history->undo());
        EXPECT_EQ(world.state(), state);
    }
    for (const State& state : {killed, outside, behind}) {
        ASSERT_TRUE(world.history->redo());
        EXPECT_EQ(world.state(), state);
    }
}

TEST_F(KilledTwice, AChangeFromOutsideBetweenBothStaysWithTheCommandWhenTheStartIsTakenBack) {
    const State before = stateBehind(nothing, nothing);
    test::PlainSqlite(base + "/central.mdb").rows("UPDATE 甲 SET 名称='mine' WHERE Key='甲.2'");
    if (!found().unfinished) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    const State both = stateIn(base);
    EXPECT_TRUE(both["central.mdb"].contains("2|甲.2|mine"));
    killAfterAdding(base, history::caption::start, "甲.4");
    HistoryWorld world(base);
    EXPECT_EQ(world.history->mend().unfinished->title, "添加[名甲.3]");
    EXPECT_EQ(world.state(), both);
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.state(), before);
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.state(), both);
}

// Such as one behind which the user has put a plan's folder in place.
TEST_F(KilledTwice, AStartBehindOneThatFoundNothingToDoIsAStepOfItsOwn) {
    const auto killed = found().unfinished;
    if (!killed) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    HistoryWorld world(base);
    world.run(history::caption::start, [] {});
    const auto later =
        world.run(history::caption::start, [&] { HistoryWorld::addRow(*world.db, "甲", "甲.5"); });
    ASSERT_TRUE(later.step);
    EXPECT_EQ(later.step->kind, history::StepKind::automatic);
    EXPECT_EQ(later.step->parent, killed->id);
}

} // namespace

#endif
