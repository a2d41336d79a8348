#include "platform/history/KilledHistory.h"
#include "platform/word/docfile/container/OutputFile.h"

#ifdef __linux__

#include <csignal>
#include <filesystem>

using namespace qvnd;
using test::HistoryWorld;
using test::KilledHistory;
using test::nothing;
using test::TracedProcess;

namespace {

void undo(HistoryWorld& world) { world.history->undo(); }
void redo(HistoryWorld& world) { world.history->redo(); }

TEST_F(KilledHistory, ACommandKilledAnywhereIsFoundAndOneUndoLeadsToBeforeIt) {
    const State before = stateBehind(nothing, nothing);
    const State behind = stateBehind(nothing, changeMuch);
    int unfinished = 0;
    killEverywhere(nothing, changeMuch, [&](const QString& base) {
        HistoryWorld world(base);
        const auto found = world.history->mend();
        if (found.unfinished) {
            ++unfinished;
            EXPECT_EQ(found.unfinished->kind, history::StepKind::unfinished);
            ASSERT_TRUE(world.history->undo());
            EXPECT_EQ(world.state(), before);
        } else if (world.state() != before) {
            EXPECT_EQ(world.state(), behind);
            world.history->undo();
            EXPECT_EQ(world.state(), before);
        }
    });
    EXPECT_GT(unfinished, 10);
}

// The kept copy of a document that is written in place is half when the process dies over it; the
// document itself is not touched then.
TEST_F(KilledHistory, ADocumentThatIsWrittenInPlaceKilledAnywhereComesBackWhole) {
    const QByteArray text(300000, 'a');
    const auto make = [&](HistoryWorld& world) { world.write("甲/甲.1.doc", text); };
    const auto edit = [](HistoryWorld& world) {
        world.run("插入", [&] {
            const auto folder = word::realOutputFolder();
            const auto file = folder->openForUpdate(files::toPath(world.path("甲/甲.1.doc")));
            const std::uint8_t bytes[] = {'X', 'Y'};
            file->writeAt(0, bytes);
            file->close();
        });
    };
    int undone = 0;
    killEverywhere(make, edit, [&](const QString& base) {
        HistoryWorld world(base);
        world.history->mend();
        const QByteArray now = world.read("甲/甲.1.doc");
        EXPECT_EQ(now.size(), text.size());
        if (world.history->undoable()->title.startsWith("插入")) {
            ++undone;
            world.history->undo();
        }
        EXPECT_TRUE(world.read("甲/甲.1.doc") == text);
    });
    EXPECT_GT(undone, 1);
}

// As a start adopts and forgets plans, and as an exit levels a plan's own copy.
void changeTables(HistoryWorld& world) {
    world.db->TableDefs().Delete("乙");
    world.db->TableDefs().Append(HistoryWorld::table("丙"));
    HistoryWorld::addRow(*world.db, "丙", "丙.1");
    const auto own = world.workspace().OpenDatabase(world.path("甲/甲.mdb"));
    own->TableDefs().Delete("甲");
    own->TableDefs().Append(HistoryWorld::table("甲"));
    HistoryWorld::addRow(*own, "甲", "甲.5");
    world.create("丁.mdb")->TableDefs().Append(HistoryWorld::table("丁"));
}

// Nobody has asked for what a start or an exit does.
TEST_F(KilledHistory, AStartOrAnExitKilledAnywhereLeavesTheStateBeforeItAndNoStep) {
    const State before = stateBehind(nothing, nothing);
    for (const QString& caption : {history::caption::start, history::caption::exit}) {
        int killed = 0;
        const auto change = [&](HistoryWorld& world) {
            world.run(caption, [&] { changeTables(world); });
        };
        const auto check = [&](const QString& base) {
            HistoryWorld world(base);
            const auto found = world.history->mend();
            EXPECT_FALSE(found.unfinished);
            EXPECT_EQ(found.note, "");
            EXPECT_TRUE(!found.exitKilled || caption == history::caption::exit);
            const auto last = world.history->steps().last();
            if (last.kind == history::StepKind::automatic) {
                EXPECT_EQ(last.title.section('[', 0, 0), caption) << "it came to its end";
                EXPECT_EQ(world.history->steps().size(), 3);
                return;
            }
            EXPECT_EQ(world.history->steps().size(), 2);
            EXPECT_EQ(world.state(), before);
            ++killed;
        };
        killEverywhere(nothing, change, check,
                       qEnvironmentVariableIsSet("QVND_KILL_EVERYWHERE") ? 1 : 3);
        EXPECT_GT(killed, 5);
    }
}

// The start is killed; then another tool changes a row of a database, and a backup of the other
// takes its place.
TEST_F(KilledHistory, WhatCameFromOutsideBehindAKilledStartStaysAndIsToldAsAStep) {
    const QString mine = "UPDATE 甲 SET 名称='mine' WHERE Key='甲.2'";
    int kept = 0;
    const auto change = [](HistoryWorld& world) {
        world.run(history::caption::start, [&] { changeTables(world); });
    };
    const auto check = [&](const QString& base) {
        test::PlainSqlite(base + "/central.mdb").rows(mine);
        const QString backup = base + "/backup.mdb";
        QFile::copy(base + "/乙/乙.mdb", backup);
        test::PlainSqlite(backup).rows("UPDATE 乙 SET 名称='saved' WHERE Key='乙.1'");
        QFile::remove(base + "/甲/甲.mdb-journal"); // SQLite would play it back into any file
        std::filesystem::rename(backup.toStdString(), (base + "/甲/甲.mdb").toStdString());
        HistoryWorld world(base);
        const bool isKilled = QFile::exists(world.path(".~history/running"));
        const auto found = world.history->mend();
        EXPECT_TRUE(world.rowsIn(world.path("central.mdb")).contains("2|甲.2|mine"));
        EXPECT_TRUE(world.rowsIn(world.path("甲/甲.mdb")).contains("1|乙.1|saved"));
        QList<history::Step> steps = world.history->steps();
        steps.removeIf([](const auto& step) { return step.kind != history::StepKind::outside; });
        EXPECT_TRUE(isKilled || steps.isEmpty());
        for (const history::Step& step : steps) {
            EXPECT_TRUE(found.note.contains(step.title)) << found.note.toStdString();
            ++kept;
        }
        if (!steps.isEmpty()) {
            const State now = world.state();
            ASSERT_TRUE(world.history->undo());
            world.history->goTo(steps.last().id);
            EXPECT_EQ(world.state(), now);
        }
    };
    killEverywhere(nothing, change, check, 7);
    EXPECT_GT(kept, 5);
}

// A plan whose folder had gone when its deletion was killed is forgotten by the next start.
TEST_F(KilledHistory, WhatTheStartDoesBehindAKilledCommandIsTakenBackWithIt) {
    const test::TemporaryFolder folder(test::inMemory());
    const QString base = folder.path("w");
    folder.makeFolder("w");
    prepare(base);
    const State before = stateIn(base);
    const int changes = TracedProcess::run(
        [&] {
            HistoryWorld killed(base);
            killed.run("删除", [&] {
                killed.files->DeleteFolder(killed.path("乙"), false);
                raise(SIGKILL);
            });
        },
        0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    HistoryWorld world(base);
    ASSERT_TRUE(world.history->mend().unfinished);
    const auto start =
        world.run(history::caption::start, [&] { world.db->TableDefs().Delete("乙"); });
    const State behind = world.state();
    ASSERT_TRUE(start.step);
    EXPECT_EQ(start.step->kind, history::StepKind::unfinished);
    EXPECT_TRUE(start.step->title.startsWith("删除"));
    EXPECT_EQ(world.history->steps().size(), 3);
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.state(), before);
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.state(), behind);
    world.run("新建", [&] { world.makePlan("丙"); });
    world.run(history::caption::start, [&] { HistoryWorld::addRow(*world.db, "甲", "甲.8"); });
    EXPECT_EQ(world.history->steps().size(), 5) << "behind another command a start is its own step";
}

// Killed when it has overwritten a document and left files half, while the user made a copy.
bool killAfterOverwriting(const QString& base) {
    const auto changeAndDie = [&] {
        HistoryWorld killed(base);
        killed.run("覆盖", [&] {
            killed.write("甲/甲.1.doc.backup", "mine");
            killed.files->CopyFile(killed.path("甲/甲.2.doc"), killed.path("甲/甲.1.doc"), true);
            killed.write("甲/~doc12-3.tmp", "half");
            killed.write("甲/甲.1.doc.aBcDeF", "half");
            raise(SIGKILL);
        });
    };
    return TracedProcess::run(changeAndDie, 0) >= 0;
}

TEST_F(KilledHistory, AStartTakesAwayWhatTheCommandHasLeftAndNoCopyOfTheUser) {
    const test::TemporaryFolder folder(test::inMemory());
    prepare(folder.path());
    if (!killAfterOverwriting(folder.path())) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    HistoryWorld world(folder.path());
    ASSERT_TRUE(world.history->mend().unfinished);
    EXPECT_EQ(world.read("甲/甲.1.doc.backup"), "mine");
    EXPECT_FALSE(QFile::exists(world.path("甲/~doc12-3.tmp")));
    EXPECT_FALSE(QFile::exists(world.path("甲/甲.1.doc.aBcDeF")));
}

// As one that wrote a large document for minutes.
TEST_F(KilledHistory, OfWhatCameLongBehindTheLastSignOfLifeOnlyTheEnginesOwnFilesAreTakenAway) {
    const test::TemporaryFolder folder(test::inMemory());
    prepare(folder.path());
    if (!killAfterOverwriting(folder.path())) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    HistoryWorld world(folder.path());
    QFile running(world.path(".~history/running"));
    ASSERT_TRUE(running.open(QIODevice::ReadWrite));
    ASSERT_TRUE(running.setFileTime(QDateTime::currentDateTime().addSecs(-300),
                                    QFileDevice::FileModificationTime));
    running.close();
    ASSERT_TRUE(world.history->mend().unfinished);
    EXPECT_EQ(world.read("甲/甲.1.doc.backup"), "mine");
    EXPECT_EQ(world.read("甲/甲.1.doc.aBcDeF"), "half");
    EXPECT_FALSE(QFile::exists(world.path("甲/~doc12-3.tmp")));
}

// As one that the process was killed over before it had written to it.
TEST_F(KilledHistory, AStartRemovesTheJournalThatHoldsNothingOfEachDatabaseThatACommandTouched) {
    const test::TemporaryFolder folder(test::inMemory());
    const QString base = folder.path();
    prepare(base);
    const State before = stateIn(base);
    const QString own = base + "/甲/甲.mdb";
    for (const QByteArray& journal : {QByteArray(), QByteArray(512, '\0')}) {
        const int changes = TracedProcess::run(
            [&] {
                HistoryWorld killed(base);
                killed.run("设置", [&] {
                    const auto database = killed.workspace().OpenDatabase(own);
                    killed.workspace().BeginTrans();
                    HistoryWorld::addRow(*database, "甲", "甲.9");
                    raise(SIGKILL);
                });
            },
            0);
        if (changes < 0) {
            GTEST_SKIP() << "processes cannot be traced here";
        }
        HistoryWorld world(base);
        world.write("甲/甲.mdb-journal", journal);
        EXPECT_FALSE(world.history->mend().unfinished) << "nothing was changed";
        EXPECT_FALSE(QFile::exists(own + "-journal"));
        EXPECT_EQ(world.state(), before);
    }
}

// Such as those on a stick that was pulled out and got another drive.
TEST_F(KilledHistory, ACommandIsFoundWhereTheFoldersWereMovedMeanwhile) {
    const test::TemporaryFolder folder(test::inMemory());
    folder.makeFolder("w");
    prepare(folder.path("w"));
    const State before = stateIn(folder.path("w"));
    if (!killAmidChanges(folder.path("w"))) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    ASSERT_TRUE(QDir().rename(folder.path("w"), folder.path("moved")));
    HistoryWorld world(folder.path("moved"));
    ASSERT_TRUE(world.history->mend().unfinished);
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.state(), before);
    EXPECT_FALSE(QFile::exists(folder.path("w")));
}

// Another program goes on with the work space: its next command finds what was left.
TEST_F(KilledHistory, ACommandOfAnotherProgramIsFoundByTheNextCommandOfThisOne) {
    const test::TemporaryFolder folder(test::inMemory());
    const QString base = folder.path("w");
    folder.makeFolder("w");
    prepare(base);
    const State before = stateIn(base);
    if (!killAmidChanges(base)) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    HistoryWorld world(base);
    const auto found = world.history->begin({"添加", "甲", {}, {}, {}, {}, {}});
    ASSERT_TRUE(found.unfinished);
    HistoryWorld::addRow(*world.db, "甲", "甲.8");
    ASSERT_TRUE(world.history->finish({}).step);
    EXPECT_EQ(world.history->undo()->title, "添加[名甲.8]");
    EXPECT_EQ(world.history->undo()->id, found.unfinished->id);
    EXPECT_EQ(world.state(), before);
}

TEST_F(KilledHistory, AnUndoKilledAnywhereLeavesEitherStateWhole) {
    const State before = stateBehind(nothing, nothing);
    const State behind = stateBehind(nothing, changeMuch);
    int restored = 0;
    killEverywhere(changeMuch, undo, [&](const QString& base) {
        HistoryWorld world(base);
        const auto found = world.history->mend();
        restored += found.restored;
        const State now = world.state();
        EXPECT_EQ(now, world.history->redoable() ? before : behind);
        EXPECT_TRUE(!found.restored || now == before);
    });
    EXPECT_GT(restored, 10);
}

TEST_F(KilledHistory, ARedoKilledAnywhereLeavesEitherStateWhole) {
    const State before = stateBehind(nothing, nothing);
    const State behind = stateBehind(nothing, changeMuch);
    const auto changeAndUndo = [](HistoryWorld& world) {
        changeMuch(world);
        undo(world);
    };
    int restored = 0;
    killEverywhere(changeAndUndo, redo, [&](const QString& base) {
        HistoryWorld world(base);
        const auto found = world.history->mend();
        restored += found.restored;
        EXPECT_EQ(world.state(), world.history->redoable() ? before : behind);
    });
    EXPECT_GT(restored, 10);
}

} // namespace

#endif
