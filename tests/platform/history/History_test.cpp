#include "platform/history/HistoryWorld.h"

#include "platform/word/docfile/container/OutputFile.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QThread>

#include <random>

using namespace qvnd;
using history::Change;
using history::StepKind;
using test::HistoryWorld;

namespace {

class HistoryTest : public testing::Test {
protected:
    HistoryTest() { world.write("source.doc", "from outside"); }

    using State = test::HistoryWorld::State;
    test::HistoryWorld world;
    history::History& history() { return *world.history; }
};

TEST_F(HistoryTest, ACommandThatChangesNothingLeavesNothingBehind) {
    EXPECT_FALSE(world.run("浏览", [] {}).step);
    EXPECT_FALSE(QFile::exists(world.path(".~history")));
    EXPECT_FALSE(history().undo());
}

TEST_F(HistoryTest, UndoBringsRowsTablesFoldersAndFilesBackAndRedoTakesThemAgain) {
    const State before = world.state();
    const auto made = world.run("新建", [&] { world.makePlan("甲"); });
    const State behind = world.state();
    ASSERT_TRUE(made.step);
    EXPECT_EQ(made.refusal, QString());
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.state(), before);
    ASSERT_TRUE(history().redo());
    EXPECT_EQ(world.state(), behind);
}

TEST_F(HistoryTest, ADeletedPlanComesBackWithItsDocuments) {
    world.run("新建", [&] { world.makePlan("甲"); });
    const State before = world.state();
    const auto deleted = world.run("删除", [&] { world.deletePlan("甲"); });
    const State behind = world.state();
    ASSERT_TRUE(deleted.step);
    EXPECT_FALSE(QFile::exists(world.path("甲")));
    history().undo();
    EXPECT_EQ(world.state(), before);
    history().redo();
    EXPECT_EQ(world.state(), behind);
    history().undo();
    history().undo();
    EXPECT_FALSE(QFile::exists(world.path("甲")));
    history().redo();
    EXPECT_EQ(world.state(), before);
}

TEST_F(HistoryTest, AutomaticNumbersGoBackWithTheRows) {
    world.run("新建", [&] { world.makePlan("甲"); });
    world.run("添加", [&] { test::HistoryWorld::addRow(*world.db, "甲", "甲.3"); });
    const State before = world.state();
    history().undo();
    world.run("添加", [&] { test::HistoryWorld::addRow(*world.db, "甲", "甲.3"); });
    EXPECT_EQ(world.state(), before);
}

TEST_F(HistoryTest, AnOverwrittenFileComesBackByteForByte) {
    world.write("a.doc", "first");
    world.run("覆盖",
              [&] { world.files->CopyFile(world.path("source.doc"), world.path("a.doc"), true); });
    EXPECT_EQ(world.read("a.doc"), "from outside");
    history().undo();
    EXPECT_EQ(world.read("a.doc"), "first");
    history().redo();
    EXPECT_EQ(world.read("a.doc"), "from outside");
}

TEST_F(HistoryTest, ADocumentThatTheEngineWritesInPlaceComesBack) {
    world.write("a.doc", "first text");
    world.run("插入", [&] {
        const auto folder = word::realOutputFolder();
        const auto file = folder->openForUpdate(world.path("a.doc").toStdString());
        const std::uint8_t bytes[] = {'X', 'Y'};
        file->writeAt(0, bytes);
        file->close();
    });
    EXPECT_EQ(world.read("a.doc"), "XYrst text");
    history().undo();
    EXPECT_EQ(world.read("a.doc"), "first text");
    history().redo();
    EXPECT_EQ(world.read("a.doc"), "XYrst text");
}

// As a deletion that the file system refuses, where it has no second names for a file.
TEST_F(HistoryTest, AFileThatACommandCouldNotChangeIsNoChange) {
    world.write("a.doc", "first text");
    const auto open = [&] {
        word::realOutputFolder()->openForUpdate(world.path("a.doc").toStdString())->close();
    };
    EXPECT_FALSE(world.run("插入", open).step);
    const auto step = world.run("插入", [&] {
        open();
        world.files->CopyFile(world.path("source.doc"), world.path("b.doc"), true);
    });
    ASSERT_TRUE(step.step);
    const QList<history::Change> changes = history().changesOf(step.step->id);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes.first().name, "b.doc");
}

TEST_F(HistoryTest, AFolderThatIsMovedComesBack) {
    const State before = world.state();
    world.run("存入", [&] {
        world.files->CreateFolder(world.path("new"));
        world.files->CopyFile(world.path("source.doc"), world.path("new/1.doc"), true);
        const auto own = world.create("new/new.mdb");
        own->TableDefs().Append(test::HistoryWorld::table("T"));
        own->Close();
        world.files->MoveFolder(world.path("new"), world.path("模"));
    });
    const State behind = world.state();
    history().undo();
    EXPECT_EQ(world.state(), before);
    history().redo();
    EXPECT_EQ(world.state(), behind);
}

TEST_F(HistoryTest, TitleNamesTheCommandAndTheNodeThatWasSelected) {
    world.run("新建", [&] { world.makePlan("甲"); });
    const auto deleted = world.run(
        "删除", [&] { world.db->Execute("Delete * from 甲 where Key like '甲.*'"); }, "甲.2");
    ASSERT_TRUE(deleted.step);
    EXPECT_EQ(deleted.step->title, "删除[名甲.2]");
    EXPECT_EQ(history().undoable()->title, "删除[名甲.2]");
    const auto changes = history().changesOf(deleted.step->id);
    ASSERT_EQ(changes.size(), 2);
    EXPECT_EQ(changes[0].kind, Change::Kind::rowRemoved);
    EXPECT_EQ(changes[0].name, "名甲.1");
    EXPECT_EQ(changes[0].table, "甲");
}

TEST_F(HistoryTest, TitleTellsHowManyNodesCameWithTheOneThatItNames) {
    world.run("新建", [&] { world.makePlan("甲"); });
    const auto add = [&](const QString& key, bool isDocument) {
        HistoryWorld::addRow(*world.db, "甲", key);
        if (isDocument) {
            world.files->CopyFile(world.path("source.doc"), world.path("甲/" + key + ".doc"), true);
        }
    };
    const auto titleOf = [&](const HistoryWorld::Work& work) {
        const auto done = world.run("添加", work, "甲.1");
        return done.step ? done.step->title : QString();
    };
    EXPECT_EQ(titleOf([&] { add("甲.1.1", true); }), "添加[名甲.1.1]");
    EXPECT_EQ(titleOf([&] {
                  for (int number = 2; number <= 10; ++number) {
                      add("甲.1." + QString::number(number), true);
                  }
              }),
              "添加[名甲.1.2 等 9 个文档]");
    EXPECT_EQ(titleOf([&] {
                  add("甲.3", false);
                  add("甲.3.1", true);
                  add("甲.3.2", true);
              }),
              "添加[名甲.3]")
        << "with all that is below it";
    EXPECT_EQ(titleOf([&] {
                  add("甲.4", false);
                  add("甲.4.1", true);
                  add("甲.5", true);
              }),
              "添加[名甲.4 等 2 个节点]");
    EXPECT_EQ(titleOf([&] { world.makePlan("乙"); }), "添加[名乙.1]") << "a plan is one thing";
}

TEST(TwoProgramsAtOnce, RecordInOneHistoryAndTakeBackEachOthersCommands) {
    HistoryWorld first;
    first.write("source.doc", "text");
    first.run("新建", [&] { first.makePlan("甲"); });
    const HistoryWorld::State before = first.state();
    HistoryWorld second(QFileInfo(first.path("central.mdb")).path());
    const auto done = second.run("新建", [&] { second.makePlan("乙"); });
    EXPECT_EQ(done.refusal, "");
    ASSERT_TRUE(done.step);
    EXPECT_EQ(first.history->steps().size(), 2);
    ASSERT_TRUE(first.history->undo());
    EXPECT_EQ(first.state(), before);
    ASSERT_TRUE(second.history->undo());
    EXPECT_FALSE(QFile::exists(first.path("甲")));
    EXPECT_FALSE(first.history->undoable());
}

TEST_F(HistoryTest, UndoAndRedoGoOnAfterARestart) {
    const State before = world.state();
    world.run("新建", [&] { world.makePlan("甲"); });
    const State behind = world.state();
    world.restart();
    EXPECT_EQ(history().undo()->title, "新建[名甲.1]");
    EXPECT_EQ(world.state(), before);
    world.restart();
    EXPECT_EQ(history().redo()->title, "新建[名甲.1]");
    EXPECT_EQ(world.state(), behind);
}

TEST_F(HistoryTest, ANewCommandEndsTheRedoneBranchAndTheOldOneStaysReachable) {
    world.run("一", [&] { world.makePlan("甲"); });
    const State one = world.state();
    const auto second = world.run("二", [&] { world.makePlan("乙"); });
    const State two = world.state();
    history().undo();
    world.run("三", [&] { world.makePlan("丙"); });
    const State three = world.state();
    EXPECT_FALSE(history().redoable());
    history().goTo(second.step->id);
    EXPECT_EQ(world.state(), two);
    history().undo();
    EXPECT_EQ(world.state(), one);
    history().goTo(history().steps().last().id);
    EXPECT_EQ(world.state(), three);
}

TEST_F(HistoryTest, UndoPassesBookkeepingBy) {
    world.run("一", [&] { world.makePlan("甲"); });
    world.run("准备", [&] { world.db->TableDefs().Append(test::HistoryWorld::table("temp")); });
    const auto minor =
        world.run("单击", [&] { test::HistoryWorld::addRow(*world.db, "temp", "甲"); });
    EXPECT_TRUE(minor.step->isMinor);
    EXPECT_EQ(history().undo()->title, "一[名甲.1]");
    EXPECT_FALSE(QFile::exists(world.path("甲")));
}

TEST_F(HistoryTest, BookkeepingBehindAnUndoDoesNotEndTheBranchOfRedo) {
    world.run("准备", [&] { world.db->TableDefs().Append(test::HistoryWorld::table("temp")); });
    world.run("一", [&] { world.makePlan("甲"); });
    const State behind = world.state();
    history().undo();
    world.run("单击", [&] { test::HistoryWorld::addRow(*world.db, "temp", "甲"); });
    ASSERT_TRUE(history().redoable());
    EXPECT_EQ(history().redo()->title, "一[名甲.1]");
    EXPECT_EQ(world.state(), behind);
}

TEST_F(HistoryTest, AFileChangedOutsideIsKeptAsAStepBeforeUndoTakesIt) {
    world.run("新建", [&] { world.makePlan("甲"); });
    world.write("甲/甲.1.doc", "edited in a word processor");
    history().undo();
    EXPECT_FALSE(QFile::exists(world.path("甲")));
    const auto steps = history().steps();
    ASSERT_EQ(steps.last().kind, StepKind::outside);
    EXPECT_EQ(steps.last().title, "外部改动[甲.1.doc]");
    history().takeOut(steps.last().id, world.path("甲/甲.1.doc"), world.path("kept.doc"));
    EXPECT_EQ(world.read("kept.doc"), "edited in a word processor");
    history().redo();
    EXPECT_EQ(world.read("甲/甲.1.doc"), "edited in a word processor");
}

TEST_F(HistoryTest, AFileCopiedIntoAFolderThatUndoTakesAwayStays) {
    world.run("新建", [&] { world.makePlan("甲"); });
    world.write("甲/notes.txt", "mine");
    history().undo();
    EXPECT_EQ(world.read("甲/notes.txt"), "mine");
    EXPECT_FALSE(QFile::exists(world.path("甲/甲.1.doc")));
}

TEST_F(HistoryTest, ACopyBesideADocumentStaysWhateverItsEnding) {
    world.run("新建", [&] { world.makePlan("甲"); });
    for (const char* ending : {".backup", ".new"}) {
        world.write(QString("甲/甲.1.doc") + ending, "mine");
    }
    QThread::msleep(50); // beyond what the times of files lag behind the clock
    history().undo();
    history().redo();
    EXPECT_EQ(world.read("甲/甲.1.doc.backup"), "mine");
    EXPECT_EQ(world.read("甲/甲.1.doc.new"), "mine");
}

// Only a kill leaves files half.
TEST_F(HistoryTest, AnUndoThatNothingHasStoppedLooksForNoLeftovers) {
    world.run("新建", [&] { world.makePlan("甲"); });
    world.run("删除", [&] { world.deletePlan("甲"); });
    QDir().mkpath(world.path("甲"));
    world.write("甲/甲.1.doc.aBcDeF", "mine");
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.read("甲/甲.1.doc.aBcDeF"), "mine");
}

// The window does so at each click.
TEST_F(HistoryTest, ALookAtWhatAFileWasReadsNoPagesOfDatabases) {
    world.run("新建", [&] { world.makePlan("甲"); });
    const std::int64_t deletion = world.run("删除", [&] { world.deletePlan("甲"); }).step->id;
    test::PlainSqlite(world.path(".~history/history.db")).rows("DROP TABLE database_steps");
    QFile content(history().contentBefore(deletion, world.path("甲/甲.1.doc")));
    ASSERT_TRUE(content.open(QIODevice::ReadOnly));
    EXPECT_EQ(content.readAll(), "from outside");
}

// What the start behind a kill takes away beside a file that the killed command has touched.
TEST_F(HistoryTest, CopiesThatTheUserMakesBehindAKillAreNotTakenForItsLeftovers) {
    const QDateTime began = QDateTime::currentDateTime();
    for (const char* name : {"甲.doc", "甲.doc.backup", "甲.doc.new", "甲.doc.aBcDeF"}) {
        world.write(name, "text");
    }
    world.write("甲.doc.aBcDeF", "half");
    history::KeptFiles::removeUnfinished({world.path("甲.doc")}, began.addSecs(-300),
                                         began.addSecs(-120));
    EXPECT_EQ(world.read("甲.doc.aBcDeF"), "half") << "written long after the kill";
    history::KeptFiles::removeUnfinished({world.path("甲.doc")}, began, began);
    EXPECT_FALSE(QFile::exists(world.path("甲.doc.aBcDeF"))) << "a leftover";
    EXPECT_EQ(world.read("甲.doc.backup"), "text") << "a copy of what is there";
    EXPECT_EQ(world.read("甲.doc.new"), "text") << "only a database that is not there has such";
    world.write("乙.mdb.new", "half");
    history::KeptFiles::removeUnfinished({world.path("乙.mdb")}, began, began);
    EXPECT_FALSE(QFile::exists(world.path("乙.mdb.new")));
}

TEST_F(HistoryTest, AFileTakenOutToElsewhereIsNoneOfTheHistorys) {
    world.run("新建", [&] { world.makePlan("甲"); });
    const std::int64_t deletion = world.run("删除", [&] { world.deletePlan("甲"); }).step->id;
    const test::TemporaryFolder elsewhere;
    elsewhere.makeFolder("stick");
    const QString target = elsewhere.path("stick/a.doc");
    const auto outcome =
        world.run("取出", [&] { history().takeOut(deletion, world.path("甲/甲.1.doc"), target); });
    EXPECT_FALSE(outcome.step);
    EXPECT_TRUE(QFile::exists(target));
    QDir(elsewhere.path("stick")).removeRecursively();
    ASSERT_TRUE(history().undo());
    EXPECT_TRUE(QFile::exists(world.path("甲/甲.1.doc")));
}

TEST_F(HistoryTest, ADatabaseChangedOutsideBecomesAStepOfItsOwn) {
    world.run("新建", [&] { world.makePlan("甲"); });
    test::HistoryWorld::addRow(*world.db, "甲", "甲.8"); // by no command
    const State changed = world.state();
    history().undo();
    EXPECT_FALSE(world.state().contains("甲"));
    const auto last = history().steps().last();
    EXPECT_EQ(last.kind, StepKind::outside);
    EXPECT_EQ(history().changesOf(last.id).first().key, "甲.8");
    history().goTo(last.id);
    EXPECT_EQ(world.state(), changed);
}

// Such as one that puts the value back that a field had.
TEST_F(HistoryTest, ATransactionOfAnotherProgramThatChangesNothingIsNoStep) {
    world.run("新建", [&] { world.makePlan("甲"); });
    const State before = world.state();
    test::PlainSqlite(world.path("central.mdb")).rows("PRAGMA user_version=2");
    world.run("添加", [&] { test::HistoryWorld::addRow(*world.db, "甲", "甲.3"); });
    EXPECT_EQ(history().steps().size(), 2);
    history().undo();
    EXPECT_EQ(world.state(), before);
    history().undo();
    history().redo();
    EXPECT_EQ(world.state(), before);
}

TEST_F(HistoryTest, ADeletedPlanTakesNothingOfTheHistoryAlong) {
    world.run("新建", [&] { world.makePlan("甲"); });
    world.run("删除", [&] { world.deletePlan("甲"); });
    EXPECT_EQ(history().steps().size(), 2);
    EXPECT_EQ(history().stepsWith("名甲.2").size(), 2);
    EXPECT_EQ(history().stepsWith("没有的名称").size(), 0);
}

TEST_F(HistoryTest, ACommandIsRefusedWholeWhenTheHistoryCannotBeWritten) {
    world.write(".~history", "a file where the folder should be");
    const State before = world.state();
    const auto outcome = world.run("新建", [&] { world.makePlan("甲"); });
    EXPECT_FALSE(outcome.step);
    EXPECT_NE(outcome.refusal, QString());
    EXPECT_EQ(world.state(), before);
    history().goOnWithout();
    world.run("新建", [&] { world.makePlan("甲"); });
    EXPECT_TRUE(QFile::exists(world.path("甲/甲.1.doc")));
}

TEST_F(HistoryTest, ACommandIsTakenBackWhenTheHistoryCannotBeWrittenAtItsEnd) {
    world.run("新建", [&] { world.makePlan("甲"); });
    const State before = world.state();
    const auto outcome = world.run("删除", [&] {
        world.deletePlan("甲");
        test::PlainSqlite(world.path(".~history/history.db"))
            .rows("CREATE TRIGGER full BEFORE INSERT ON steps BEGIN SELECT RAISE(ABORT,'full'); "
                  "END");
    });
    EXPECT_FALSE(outcome.step);
    EXPECT_NE(outcome.refusal, QString());
    EXPECT_EQ(world.state(), before);
}

TEST_F(HistoryTest, RandomCommandsUndoneAndRedoneGiveTheRecordedStates) {
    std::mt19937 random(7);
    const auto pick = [&](int below) { return static_cast<int>(random() % unsigned(below)); };
    QMap<std::int64_t, State> states{{history::beginning, world.state()}};
    const QStringList plans{"甲", "乙", "丙"};
    for (int i = 0; i < 150; ++i) {
        const QString& plan = plans[pick(3)];
        const bool isThere = world.db->TableDefs().Contains(plan);
        switch (pick(6)) {
        case 0:
            history().undo();
            break;
        case 1:
            history().redo();
            break;
        case 2:
            history().goTo(states.keys()[pick(static_cast<int>(states.size()))]);
            break;
        case 3:
            world.run("插", [&] {
                if (isThere) {
                    test::HistoryWorld::addRow(*world.db, plan, plan + ".x" + QString::number(i));
                    world.write("source.doc", QByteArray::number(i));
                    world.files->CopyFile(world.path("source.doc"),
                                          world.path(plan + "/" + plan + ".1.doc"), true);
                }
            });
            break;
        default:
            world.run("换", [&] { isThere ? world.deletePlan(plan) : world.makePlan(plan); });
        }
        State now = world.state();
        now.remove("source.doc"); // written by no command
        const auto known = states.constFind(history().head());
        if (known == states.constEnd()) {
            states[history().head()] = now;
        } else {
            State then = *known;
            then.remove("source.doc");
            ASSERT_EQ(now, then) << "action " << i << " at step " << history().head();
        }
    }
    EXPECT_GT(states.size(), 40);
}

} // namespace
