#include "platform/history/HistoryWorld.h"
#include "platform/history/StepWords.h"

#include <gtest/gtest.h>

#include <QFileInfo>

using namespace qvnd;
using history::Change;
using history::StepKind;
using test::HistoryWorld;

namespace {

using State = HistoryWorld::State;

// A work space with the plan 甲, whose own database and documents other programs change.
class OutsideChanges : public testing::Test {
protected:
    OutsideChanges() {
        world.write("source.doc", "from outside");
        world.run("新建", [&] { world.makePlan("甲"); });
        before = world.state();
    }

    history::History& history() { return *world.history; }
    // A row in both databases and another text of a document.
    void changePlan() {
        world.run("添加", [&] {
            HistoryWorld::addRow(*world.db, "甲", "甲.3");
            HistoryWorld::addRow(*world.workspace().OpenDatabase(world.path(ownDatabase)), "甲",
                                 "甲.3");
            world.files->CopyFile(world.path("source.doc"), world.path("甲/甲.1.doc"), true);
        });
    }
    void removeByHand(const QString& folder) const {
        ASSERT_TRUE(QDir(world.path(folder)).removeRecursively());
    }
    static long failureOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const RunTimeError& failure) {
            return failure.number();
        }
        return 0;
    }

    // Another text of the plan's first document.
    history::History::Outcome replaceDocument(const QByteArray& text) {
        world.write("source.doc", text);
        return world.run("替换", [&] {
            world.files->CopyFile(world.path("source.doc"), world.path(document), true);
        });
    }
    // Behind "first", which an undo has put there, the user saves "edited", and a command replaces
    // it. The steps of "first", "second", which is undone, and "third".
    QList<std::int64_t> editBetweenCommands() {
        const auto first = replaceDocument("first").step->id;
        const auto second = replaceDocument("second").step->id;
        EXPECT_TRUE(history().undo());
        world.write(document, "edited");
        return {first, second, replaceDocument("third").step->id};
    }

    const QString ownDatabase = "甲/甲.mdb";
    const QString document = "甲/甲.1.doc";
    HistoryWorld world;
    State before;
};

TEST_F(OutsideChanges, APlansFolderRemovedByHandStopsNoUndo) {
    changePlan();
    removeByHand("甲");
    ASSERT_TRUE(history().undo());
    const State now = world.state();
    for (const QString back : {"central.mdb", "甲/甲.mdb", "甲/甲.1.doc"}) {
        EXPECT_EQ(now[back], before[back]) << back.toStdString();
    }
    EXPECT_FALSE(now.contains("甲/甲.2.doc")) << "the command has not touched it";
    EXPECT_TRUE(history().note().contains("外部改动[甲 文件夹中的大纲]"))
        << history().note().toStdString();
    ASSERT_TRUE(history().undo());
    EXPECT_FALSE(world.state().contains("甲"));
}

TEST(DatabaseWords, NameWhatAPlannerKnowsAndAnyOtherFileByItsName) {
    EXPECT_EQ(history::databaseWord("/p/用户模板/Db_UsTemplate.mdb"), "用户方案");
    EXPECT_EQ(history::databaseWord("/p/Sys/Database/db_template.mdb"), "施工方案模板");
    EXPECT_EQ(history::databaseWord("/p/Sys/Database/Db_BidSet.mdb"), "施工方案设置");
    EXPECT_EQ(history::databaseWord("/p/用户模板/甲/甲.mdb"), "甲 文件夹中的大纲");
    EXPECT_EQ(history::databaseWord("/p/Sys/标书模板/甲/甲.mdb"), "模板 甲 文件夹中的大纲");
    EXPECT_EQ(history::databaseWord("/p/用户模板/甲/乙.mdb"), "乙.mdb");
}

TEST_F(OutsideChanges, ADamagedDatabaseOfAPlanStopsNoUndoAndIsKeptAsItWas) {
    changePlan();
    world.write(ownDatabase, "no database any more");
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.state(), before);
    const auto outside = history().steps().last();
    EXPECT_EQ(outside.kind, StepKind::outside);
    ASSERT_EQ(history().changesOf(outside.id).size(), 0) << "a copy of the plan's tables";
    history().goTo(outside.id);
    EXPECT_EQ(world.read(ownDatabase), "no database any more");
    history().undo();
    history().undo();
    EXPECT_EQ(world.state(), before);
}

TEST_F(OutsideChanges, APlanWithADamagedDatabaseIsDeletedAndComesBack) {
    world.write(ownDatabase, "no database any more");
    const auto deleted = world.run("删除", [&] { world.deletePlan("甲"); });
    EXPECT_EQ(deleted.refusal, "");
    EXPECT_FALSE(world.state().contains("甲"));
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.read(ownDatabase), "no database any more");
    EXPECT_EQ(world.read("甲/甲.1.doc"), "from outside");
}

TEST_F(OutsideChanges, AFileWhoseKeptContentIsGoneIsToldAndTheRestComesBack) {
    const auto deleted = world.run("删除", [&] { world.deletePlan("甲"); });
    const QString kept = ".~history/kept/" + QString::number(deleted.step->id);
    QDirIterator contents(world.path(kept), {"甲.2.doc"}, QDir::Files,
                          QDirIterator::Subdirectories);
    ASSERT_TRUE(contents.hasNext());
    ASSERT_TRUE(QFile::remove(contents.next()));
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(history().note(), "操作历史没有下列文件那时的内容，它们没有恢复：甲.2.doc");
    State expected = before;
    expected.remove("甲/甲.2.doc");
    EXPECT_EQ(world.state(), expected);
}

TEST_F(OutsideChanges, AnUndoThatMeetsNoneSaysNothing) {
    changePlan();
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(history().note(), "");
    ASSERT_TRUE(history().redo());
    EXPECT_EQ(history().note(), "");
}

TEST_F(OutsideChanges, OfADatabaseAreToldByTheUndoThatMeetsThem) {
    changePlan();
    HistoryWorld::addRow(*world.db, "甲", "甲.8"); // by no command
    const State changed = world.state();
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.state(), before);
    EXPECT_EQ(history().note(), "发现在程序外所做的改动，已先保留为操作历史中的一步，可以再回到"
                                "它：外部改动[central.mdb]");
    history().goTo(history().steps().last().id);
    EXPECT_EQ(world.state(), changed);
}

TEST_F(OutsideChanges, OfADatabaseAreToldByTheCommandThatMeetsThem) {
    changePlan();
    HistoryWorld::addRow(*world.db, "甲", "甲.8"); // by no command
    const auto add = [&](const QString& key) {
        return world.run("添加", [&] { HistoryWorld::addRow(*world.db, "甲", key); });
    };
    EXPECT_EQ(add("甲.9").step->note, "发现在程序外所做的改动，已先保留为操作历史中的一步，可以再"
                                      "回到它：外部改动[central.mdb]");
    EXPECT_EQ(add("甲.10").step->note, "");
}

// Which plan is open is no step that anybody reads of.
TEST_F(OutsideChanges, AreToldByACommandWhoseOwnStepIsNotTold) {
    const QString open = "当前表";
    world.run("新建", [&] { world.db->TableDefs().Append(HistoryWorld::table(open)); });
    HistoryWorld::addRow(*world.db, "甲", "甲.8"); // by no command
    const auto outcome = world.run("打开", [&] { HistoryWorld::addRow(*world.db, open, "甲"); });
    ASSERT_TRUE(outcome.step && outcome.step->isMinor);
    EXPECT_TRUE(outcome.note.contains("外部改动[central.mdb]")) << outcome.note.toStdString();
    EXPECT_EQ(world.run("打开", [&] { HistoryWorld::addRow(*world.db, open, "乙"); }).note, "");
}

// The command has taken its number before it meets them.
TEST_F(OutsideChanges, ThatACommandMeetsHaveTheGreaterNumberAndLieBeforeItAllTheSame) {
    changePlan();
    HistoryWorld::addRow(*world.db, "甲", "甲.8"); // by no command
    const State outside = world.state();
    const auto step =
        world.run("添加", [&] { HistoryWorld::addRow(*world.db, "甲", "甲.9"); }).step;
    const State behind = world.state();
    ASSERT_GT(step->parent, step->id);
    EXPECT_EQ(history().stepsWith({}).last().id, step->id) << "the list has them in their order";
    history().undo();
    EXPECT_EQ(world.state(), outside);
    ASSERT_TRUE(history().redoable());
    EXPECT_EQ(history().redoable()->id, step->id);
    for (const std::int64_t from : {history::beginning, step->parent}) {
        history().goTo(step->parent);
        EXPECT_EQ(world.state(), outside);
        history().goTo(from);
        history().goTo(step->id);
        EXPECT_EQ(world.state(), behind);
    }
}

TEST_F(OutsideChanges, OfSeveralDocumentsAreToldAsOneStep) {
    world.write("甲/甲.1.doc", "edited");
    world.write("甲/甲.2.doc", "edited too");
    ASSERT_TRUE(history().undo());
    const auto outside = history().steps().last();
    EXPECT_EQ(outside.title, "外部改动[甲.1.doc 等 2 个文件]");
    EXPECT_TRUE(history().note().endsWith(outside.title)) << history().note().toStdString();
    history().goTo(outside.id);
    EXPECT_EQ(world.read("甲/甲.1.doc"), "edited");
    EXPECT_EQ(world.read("甲/甲.2.doc"), "edited too");
}

// The state in between is "first" for the other branch.
TEST_F(OutsideChanges, OfADocumentThatAnUndoHasPutBackAreKeptBeforeItIsReplaced) {
    const QList<std::int64_t> steps = editBetweenCommands();
    ASSERT_TRUE(history().undo());
    ASSERT_EQ(world.read(document), "edited");
    history().goTo(steps[1]);
    EXPECT_EQ(world.read(document), "second");
    const auto outside = history().steps().last();
    ASSERT_EQ(outside.title, "外部改动[甲.1.doc]");
    EXPECT_TRUE(history().note().endsWith(outside.title)) << history().note().toStdString();
    history().goTo(outside.id);
    EXPECT_EQ(world.read(document), "edited");
    history().goTo(steps[0]);
    EXPECT_EQ(world.read(document), "edited") << "nothing has replaced it";
}

TEST_F(OutsideChanges, AreInWhatACommandHasReplacedAlsoSeenFromAnotherBranch) {
    const QList<std::int64_t> steps = editBetweenCommands();
    history().goTo(steps[1]);
    ASSERT_EQ(world.read(document), "second");
    history().takeOut(steps[2], world.path(document), world.path("taken.doc"));
    EXPECT_EQ(world.read("taken.doc"), "edited");
    history().takeOut(steps[1], world.path(document), world.path("taken.doc"));
    EXPECT_EQ(world.read("taken.doc"), "first");
}

// As a copy from elsewhere that has had as many transactions.
TEST_F(OutsideChanges, OfADatabaseThatHasTheSameCounterAreSeenByItsContent) {
    changePlan();
    QFile file(world.path(ownDatabase));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray counter = file.read(100).mid(24, 4);
    file.close();
    test::PlainSqlite(file.fileName()).rows("UPDATE 甲 SET 名称='mine' WHERE Key='甲.1'");
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    for (const int place : {24, 92}) {
        file.seek(place);
        file.write(counter);
    }
    file.close();
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.state(), before);
    ASSERT_EQ(history().steps().last().title, "外部改动[甲 文件夹中的大纲]");
    history().goTo(history().steps().last().id);
    EXPECT_TRUE(world.rowsIn(world.path(ownDatabase)).contains("1|甲.1|mine"));
}

TEST_F(OutsideChanges, AnUndoThatIsRefusedForAnOpenDocumentHasDoneNothingBefore) {
    changePlan();
    world.write("甲/甲.1.doc", "edited in a word processor that has it open");
    world.openDocument = world.path("甲/甲.1.doc");
    const auto steps = history().steps().size();
    EXPECT_EQ(failureOf([&] { history().undo(); }), error::permissionDenied);
    EXPECT_EQ(history().steps().size(), steps);
}

TEST_F(OutsideChanges, AnUndoIsRefusedWhileADocumentThatItReplacesIsOpen) {
    changePlan();
    const State changed = world.state();
    world.openDocument = world.path("甲/甲.1.doc");
    EXPECT_EQ(failureOf([&] { history().undo(); }), error::permissionDenied);
    EXPECT_EQ(world.state(), changed);
    world.openDocument = world.path("甲/甲.2.doc"); // which it does not touch
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.state(), before);
}

TEST_F(OutsideChanges, WhatTheProgramDoesByItselfBehindAnUndoDoesNotEndTheBranchOfRedo) {
    changePlan();
    const State behind = world.state();
    history().undo();
    const auto start = world.run(history::caption::start, [&] {
        world.db->TableDefs().Append(HistoryWorld::table("丙"));
        HistoryWorld::addRow(*world.db, "丙", "丙.1");
    });
    EXPECT_EQ(start.step->kind, StepKind::automatic);
    ASSERT_TRUE(history().redoable());
    EXPECT_EQ(history().redo()->title, "添加[名甲.3]");
    EXPECT_EQ(world.state(), behind);
    EXPECT_EQ(history().note(),
              "这之间自动做的也一并收回了，可以在操作历史中再回到它：启动[名丙.1]");
    history().goTo(start.step->id);
    EXPECT_TRUE(world.db->TableDefs().Contains("丙"));
}

TEST_F(OutsideChanges, BehindAnUndoDoNotEndTheBranchOfRedo) {
    changePlan();
    const State one = world.state();
    world.run("添加", [&] { HistoryWorld::addRow(*world.db, "甲", "甲.4"); });
    const State two = world.state();
    history().undo();
    history().undo();
    HistoryWorld::addRow(*world.db, "甲", "甲.8"); // by no command
    ASSERT_TRUE(history().redo());
    EXPECT_EQ(world.state(), one);
    ASSERT_TRUE(history().redo());
    EXPECT_EQ(world.state(), two);
}

TEST_F(OutsideChanges, ACommandOfTheUserBehindAnUndoEndsTheBranchOfRedo) {
    changePlan();
    history().undo();
    world.run(history::caption::start, [&] { HistoryWorld::addRow(*world.db, "甲", "甲.8"); });
    world.run("添加", [&] { HistoryWorld::addRow(*world.db, "甲", "甲.9"); });
    EXPECT_FALSE(history().redoable());
}

TEST_F(OutsideChanges, WhatStandsBecauseTakingItBackFailedIsFoundByTheNextCommand) {
    const QString blocked = "甲/甲.1.doc";
    const auto outcome = world.run("删除", [&] {
        world.files->DeleteFile(world.path(blocked));
        QDir().mkpath(world.path(blocked + "/in the way"));
        test::PlainSqlite(world.path(".~history/history.db"))
            .rows("CREATE TRIGGER full BEFORE INSERT ON steps BEGIN SELECT RAISE(ABORT,'full'); "
                  "END");
    });
    EXPECT_TRUE(outcome.stands);
    EXPECT_NE(outcome.refusal, "");
    EXPECT_FALSE(outcome.mayGoOnWithout);
    test::PlainSqlite(world.path(".~history/history.db")).rows("DROP TRIGGER full");
    QDir(world.path(blocked)).removeRecursively();
    const auto found = history().mend();
    ASSERT_TRUE(found.unfinished);
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.state(), before);
}

// A folder that cannot come back, as a file of that name is in the way.
TEST_F(OutsideChanges, ACommandOfWhichSomethingCannotBeTakenBackIsSaidToStand) {
    ASSERT_TRUE(QDir().mkpath(world.path("空")));
    const auto outcome = world.run("删除", [&] {
        HistoryWorld::addRow(*world.db, "甲", "甲.7");
        world.files->DeleteFolder(world.path("空"), true);
        world.write("空", "in the way");
        test::PlainSqlite(world.path(".~history/history.db"))
            .rows("CREATE TRIGGER full BEFORE INSERT ON steps BEGIN SELECT RAISE(ABORT,'full'); "
                  "END");
    });
    EXPECT_TRUE(outcome.stands);
    EXPECT_FALSE(outcome.mayGoOnWithout);
}

// The databases of older installations, and those that were copied in.
TEST_F(OutsideChanges, ADatabaseThatNoCommandHadWrittenToComesBackOverSeveralSteps) {
    const QString file = "丁/丁.mdb";
    ASSERT_TRUE(QDir().mkpath(world.path("丁")));
    world.write(file, "a database of another kind");
    QMap<std::int64_t, State> states{{history().head(), world.state()}};
    const auto note = [&] { states[history().head()] = world.state(); };
    world.run("换",
              [&] { world.files->CopyFile(world.path(ownDatabase), world.path(file), true); });
    note();
    world.run("添加", [&] {
        HistoryWorld::addRow(*world.workspace().OpenDatabase(world.path(file)), "甲", "甲.7");
    });
    note();
    world.run("删除", [&] { world.files->DeleteFolder(world.path("丁"), true); });
    note();
    world.run("新建", [&] {
        world.files->CreateFolder(world.path("丁"));
        world.create(file)->TableDefs().Append(HistoryWorld::table("丁"));
    });
    note();
    for (const std::int64_t from : states.keys()) {
        for (const std::int64_t to : states.keys()) {
            history().goTo(from);
            history().goTo(to);
            EXPECT_EQ(world.state(), states[to]) << from << " to " << to;
        }
    }
    EXPECT_EQ(history().steps().size(), 5) << "nothing counts as changed outside";
}

TEST_F(OutsideChanges, AnEmptyFileWithTheNameOfADatabaseComesBack) {
    ASSERT_TRUE(QDir().mkpath(world.path("丁")));
    world.write("丁/丁.mdb", "");
    const State there = world.state();
    world.run("删除", [&] { world.files->DeleteFolder(world.path("丁"), true); });
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.state(), there);
}

TEST_F(OutsideChanges, AFolderMovedToAnewNameLeavesWhatWasInItBeforeToComeBack) {
    const auto fill = [&](const QByteArray& text) {
        world.files->CreateFolder(world.path("new"));
        world.write("source.doc", text);
        world.files->CopyFile(world.path("source.doc"), world.path("new/1.doc"), true);
        const auto own = world.create("new/T.mdb");
        own->TableDefs().Append(HistoryWorld::table("T"));
        HistoryWorld::addRow(*own, "T", text);
    };
    world.run("一", [&] { fill("left behind"); });
    world.write("source.doc", "anew");
    const State left = world.state();
    world.run("二", [&] {
        world.files->DeleteFolder(world.path("new"), true);
        fill("anew");
        world.files->MoveFolder(world.path("new"), world.path("模"));
    });
    const State behind = world.state();
    ASSERT_TRUE(behind.contains("模/T.mdb"));
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.state(), left);
    ASSERT_TRUE(history().redo());
    EXPECT_EQ(world.state(), behind);
}

TEST_F(OutsideChanges, AFolderThatWasThereComesBackUnderItsOldName) {
    QDir().mkpath(world.path("旧/x"));
    world.write("旧/x/1.doc", "old");
    const State there = world.state();
    world.run("改名", [&] { world.files->MoveFolder(world.path("旧"), world.path("新")); });
    const State moved = world.state();
    ASSERT_TRUE(moved.contains("新/x/1.doc"));
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.state(), there);
    ASSERT_TRUE(history().redo());
    EXPECT_EQ(world.state(), moved);
}

// Such as the file of a custom page's bare name in the current folder.
TEST_F(OutsideChanges, AFileThatACommandDeletesOutsideOfAllFoldersComesBack) {
    const test::TemporaryFolder elsewhere(test::inMemory());
    elsewhere.write("扉页", "mine");
    const auto deleted =
        world.run("删除", [&] { world.files->DeleteFile(elsewhere.path("扉页")); });
    ASSERT_TRUE(deleted.step);
    EXPECT_EQ(deleted.step->title, "删除[扉页]");
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(elsewhere.read("扉页"), "mine");
}

TEST_F(OutsideChanges, BookkeepingIsNotListedAmongTheChangesOfAStep) {
    const auto step = world.run("添加", [&] {
        world.db->TableDefs().Append(HistoryWorld::table("temp"));
        HistoryWorld::addRow(*world.db, "temp", "甲.3");
        HistoryWorld::addRow(*world.db, "甲", "甲.3");
    });
    const QList<Change> changes = history().changesOf(step.step->id);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].table, "甲");
}

TEST(PlacesOfTheHistory, AProgramFolderAroundTheWorkSpaceMovesWithIt) {
    const test::TemporaryFolder folder(test::inMemory());
    for (const char* name : {"old/space/plans", "new/space/plans", "other/plans"}) {
        folder.makeFolder(name);
    }
    const auto in = [&](const QString& root) {
        return history::Places(folder.path(root + "/space/plans"),
                               {folder.path(root + "/space"), folder.path(root)});
    };
    for (const QString name : {"/space/plans/甲/甲.mdb", "/space/施工方案.doc", "/Sys/set.mdb"}) {
        const QString text = in("old").shortOf(folder.path("old") + name);
        EXPECT_EQ(in("old").longOf(text), folder.path("old") + name);
        EXPECT_EQ(in("new").longOf(text), folder.path("new") + name);
    }
    // A program beside it that works on the same plans.
    const history::Places beside(folder.path("old/space/plans"), {folder.path("other")});
    EXPECT_EQ(beside.longOf(in("old").shortOf(folder.path("old/Sys/set.mdb"))),
              folder.path("old/Sys/set.mdb"));
}

} // namespace
