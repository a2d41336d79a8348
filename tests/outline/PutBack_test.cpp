#include "outline/DeleteTemplate.h"
#include "outline/LibraryTree.h"
#include "outline/RecordedPlan.h"
#include "outline/TreeDrag.h"
#include "platform/history/StepWords.h"
#include "support/Errors.h"
#include "support/PlainSqlite.h"

using namespace qvnd;
using history::Change;
using test::OutlineRowText;
using Kind = history::Change::Kind;

namespace {

class PutBack : public test::RecordedPlan {};

TEST_F(PutBack, ADeletedNodeComesBackWithAllBelowItAndNothingElseDoes) {
    const std::int64_t first = deleteNode("T.1");
    deleteNode("T.2");
    const outline::PutBack done = putBack(first, "T.1");
    EXPECT_EQ(done.key, "T.1");
    EXPECT_EQ(done.names, QStringList({"章", "文", "附"}));
    EXPECT_TRUE(done.missing.isEmpty());
    EXPECT_EQ(world.keys("T"), QStringList({"T", "T.1", "T.1.1", "T.1.1.1"}));
    EXPECT_EQ(world.copiedKeys("T"), world.keys("T"));
    EXPECT_EQ(world.selectedKey(), "T.1");
    EXPECT_EQ(world.workbench.TrvCurrent.Item("T.1.1.1").Text(), "附");
}

TEST_F(PutBack, ASingleDocumentComesBackFromBelowADeletedFolderOnceItsParentIsThere) {
    const std::int64_t step = deleteNode("T.1.1");
    const std::int64_t later = deleteNode("T.1");
    const Change document = changeOf(step, "T.1.1");
    EXPECT_EQ(test::errorNumberOf([&] { outline::putBack(world.state, step, document); }),
              error::invalidCall);
    EXPECT_EQ(world.keys("T"), QStringList({"T", "T.2"}));
    putBack(later, "T.1");
    EXPECT_EQ(putBack(step, "T.1.1").names, QStringList({"文", "附"}));
    EXPECT_EQ(world.keys("T"), QStringList({"T", "T.2", "T.1", "T.1.1", "T.1.1.1"}));
}

TEST_F(PutBack, ItGetsAnotherKeyAndItsFilesWithItWhereItsOwnIsTaken) {
    const std::int64_t step = deleteNode("T.1");
    run("添加", [&] {
        addRow({"T.1", "别的", "是"});
        addRow({"T.1.1", "别的文", "是"});
        world.folder.write("new.doc", "new");
        world.state.gFso->CopyFile(world.folder.path("new.doc"), world.folder.path(file("T.1.1")),
                                   true);
    });
    const outline::PutBack done = putBack(step, "T.1");
    EXPECT_EQ(done.key, "T.3");
    EXPECT_EQ(world.keys("T"),
              QStringList({"T", "T.2", "T.1", "T.1.1", "T.3", "T.3.1", "T.3.1.1"}));
    EXPECT_EQ(world.folder.read(file("T.3.1")), "T.1.1") << "as it was before the deletion";
    EXPECT_EQ(world.folder.read(file("T.3.1.1")), "T.1.1.1");
    EXPECT_EQ(world.folder.read(file("T.1.1")), "new");
}

TEST_F(PutBack, TheOtherKeyIsTheNextBesideItWhateverNumbersStandBelowOtherNodes) {
    const std::int64_t step = deleteNode("T.1.1");
    run("添加", [&] {
        addRow({"T.1.1", "别的", "是"});
        addRow({"T.2.7", "远的", "是"});
    });
    EXPECT_EQ(putBack(step, "T.1.1").key, "T.1.2");
}

TEST_F(PutBack, ADocumentWhoseFileIsNowhereIsTold) {
    const std::int64_t step = deleteNode("T.1");
    QFile::remove(world.folder.path(file("T.1.1")));
    EXPECT_EQ(putBack(step, "T.1").missing, QStringList("文"));
}

TEST_F(PutBack, ARenamedNodeGetsItsName) {
    putBack(rename("T.2", "改"), "T.2");
    EXPECT_EQ(world.workbench.TrvCurrent.Item("T.2").Text(), "节");
}

TEST_F(PutBack, ARenamedNodeWhoseKeyIsAnotherNodesNowComesBackUnderAnotherOne) {
    const std::int64_t step = rename("T.2", "改");
    deleteNode("T.2");
    run("添加", [this] { addRow({"T.2", "别的"}); });
    const outline::PutBack done = putBack(step, "T.2");
    EXPECT_EQ(done.key, "T.3");
    EXPECT_EQ(done.names, QStringList("节"));
    EXPECT_EQ(world.workbench.TrvCurrent.Item("T.2").Text(), "别的");
    EXPECT_EQ(world.workbench.TrvCurrent.Item("T.3").Text(), "节");
}

TEST_F(PutBack, ARenamedNodeThatWentAndCameBackGetsItsName) {
    const std::int64_t step = rename("T.2", "改");
    const std::int64_t deletion = deleteNode("T.2");
    putBack(deletion, "T.2");
    EXPECT_EQ(putBack(step, "T.2").key, "T.2");
    EXPECT_EQ(world.workbench.TrvCurrent.Item("T.2").Text(), "节");
    EXPECT_EQ(world.keys("T").filter("T.3"), QStringList());
}

// The renaming lies on a branch that was left; there was another node behind the undo of it.
TEST_F(PutBack, ARenamedNodeOfABranchThatWasLeftIsFollowedOverTheUndo) {
    const std::int64_t step = rename("T.2", "改");
    outline::undo(world.state, world.workbench, world.services());
    rename("T.2", "他");
    EXPECT_EQ(putBack(step, "T.2").key, "T.2") << "it is the same node still";
    EXPECT_EQ(world.workbench.TrvCurrent.Item("T.2").Text(), "节");
    deleteNode("T.2");
    run("添加", [this] { addRow({"T.2", "别的"}); });
    EXPECT_EQ(putBack(step, "T.2").key, "T.3");
    EXPECT_EQ(world.workbench.TrvCurrent.Item("T.2").Text(), "别的");
}

TEST_F(PutBack, ARenamedNodeThatWasAddedOnTheBranchThatWasLeftIsNotTheOneUnderItsKeyNow) {
    run("添加", [this] { addRow({"T.3", "新"}); });
    world.openPlan("T");
    const std::int64_t step = rename("T.3", "改");
    outline::undo(world.state, world.workbench, world.services());
    outline::undo(world.state, world.workbench, world.services());
    run("添加", [this] { addRow({"T.3", "别的"}); });
    EXPECT_EQ(putBack(step, "T.3").key, "T.4");
    EXPECT_EQ(world.workbench.TrvCurrent.Item("T.3").Text(), "别的");
}

// The key that the move finds is that of the last row's number, here another document's.
TEST_F(PutBack, ANodeWhoseKeyAnotherTookComesBackWithItsDocument) {
    world.makePlan(
        "R", {{"R", "R"}, {"R.1", "甲文", "是"}, {"R.2", "乙文", "是"}, {"R.4", "丙文", "是"}});
    for (const char* key : {"R.1", "R.2", "R.4"}) {
        world.folder.write(QString("用户模板/R/%1.doc").arg(key), key);
    }
    outline::setCurrentPlan(*world.state.gDbUser, "R");
    world.openPlan("R", "R.1");
    const std::int64_t step = run("拖放", [&] {
        outline::OLEStartDrag(world.workbench);
        outline::OutlineTree& tree = world.workbench.TrvCurrent;
        outline::OLEDragDrop(world.state, world.workbench, world.services(), &tree.Item("R.2"));
    });
    ASSERT_EQ(world.keys("R"), QStringList({"R", "R.4", "R.2"}));
    EXPECT_EQ(world.state.History->step(step)->note,
              "同时移除了 1 个节点：丙文\n覆盖了 1 个文件：R.4.doc");
    const Change taken = changeOf(step, "R.4");
    EXPECT_EQ(history::lineOf(taken), "替换 丙文（R.4），现为 甲文");
    const outline::PutBack done = putBack(step, "R.4");
    EXPECT_EQ(done.key, "R.5");
    EXPECT_EQ(done.names, QStringList("丙文"));
    EXPECT_TRUE(done.missing.isEmpty());
    EXPECT_EQ(world.folder.read("用户模板/R/R.5.doc"), "R.4");
    EXPECT_EQ(world.folder.read("用户模板/R/R.4.doc"), "R.1") << "the one that took its key stays";
    EXPECT_EQ(world.workbench.TrvCurrent.Item("R.5").Text(), "丙文");
}

TEST_F(PutBack, AReplacedFileGetsItsContentAndTheNewOneIsKept) {
    const QString path = world.folder.path(file("T.1.1"));
    world.folder.write("new.doc", "new");
    const std::int64_t step =
        run("覆盖", [&] { world.state.gFso->CopyFile(world.folder.path("new.doc"), path, true); });
    putBack(step, path);
    EXPECT_EQ(world.folder.read(file("T.1.1")), "T.1.1");
    outline::undo(world.state, world.workbench, world.services());
    EXPECT_EQ(world.folder.read(file("T.1.1")), "new");
}

TEST_F(PutBack, AFileThatTheHistoryHasNotKeptIsToldByItsName) {
    const std::int64_t step = deleteNode("T.2");
    const Change file{Kind::fileRemoved, {}, {}, world.folder.path("neu"), "neu.doc", {}};
    const auto description =
        test::descriptionOf([&] { outline::putBack(world.state, step, file); });
    EXPECT_EQ(QString::fromStdU16String(description), "操作历史没有保留“neu.doc”的内容。");
}

TEST_F(PutBack, KeepsWhatIsSelectedInTheLibraries) {
    const std::int64_t step = deleteNode("T.1");
    auto& plans = world.workbench.TrvTemplate_Us;
    plans.Select(&plans.Item("T.2"));
    putBack(step, "T.1");
    ASSERT_NE(plans.SelectedItem(), nullptr);
    EXPECT_EQ(plans.SelectedItem()->Key(), "T.2");
    EXPECT_NE(plans.find("T.1.1"), nullptr);
}

TEST_F(PutBack, IsACommandThatCanBeTakenBack) {
    const std::int64_t step = deleteNode("T.1");
    const QStringList keys = world.keys("T");
    putBack(step, "T.1");
    const auto taken = outline::undo(world.state, world.workbench, world.services());
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->title, "放回[章]");
    EXPECT_EQ(world.keys("T"), keys);
}

TEST_F(PutBack, OfADeletedPlanIsRefusedAndItsFilesCanBeTakenOut) {
    const std::int64_t step = deleteNode("T");
    const Change document = changeOf(step, "T.1.1");
    EXPECT_EQ(test::errorNumberOf([&] { outline::putBack(world.state, step, document); }),
              error::invalidCall);
    const QString taken =
        outline::takenOutPath(world.state, *world.state.History->step(step),
                              outline::fileBefore(world.state, step, document), "文");
    EXPECT_TRUE(taken.startsWith(world.state.gWorkPath + "文-")) << taken.toStdString();
    world.state.History->takeOut(step, outline::fileBefore(world.state, step, document), taken);
    EXPECT_EQ(world.folder.read(QFileInfo(taken).fileName()), "T.1.1");
    EXPECT_NE(outline::takenOutPath(world.state, *world.state.History->step(step),
                                    outline::fileBefore(world.state, step, document), "文"),
              taken)
        << "a file that is there is not replaced";
}

TEST_F(PutBack, AFileIsOfferedWhereTheHistoryHasOne) {
    const std::int64_t step = deleteNode("T.1");
    const auto fileOf = [&](const QString& key) {
        return outline::fileBefore(world.state, step, changeOf(step, key));
    };
    EXPECT_TRUE(fileOf("T.1.1").endsWith("T.1.1.doc"));
    EXPECT_EQ(fileOf("T.1"), QString()) << "a folder has none";
    const std::int64_t added = run("添加", [this] { addRow({"T.1.1", "新", "是"}); });
    EXPECT_EQ(outline::fileBefore(world.state, added, changeOf(added, "T.1.1")), QString());
    world.folder.write("new.doc", "new");
    const QString document = world.folder.path(file("T.1.1"));
    const std::int64_t replaced = run(
        "替换", [&] { world.state.gFso->CopyFile(world.folder.path("new.doc"), document, true); });
    EXPECT_EQ(outline::fileBefore(world.state, replaced, changeOf(replaced, document)), document);
}

TEST_F(PutBack, IsACommandOnThePlanOfTheNodeAlsoWhenAnotherOneIsOpen) {
    world.makePlan(QStringList{"U", "U.1"});
    const std::int64_t step = deleteNode("T.1");
    world.openPlan("U");
    putBack(step, "T.1");
    EXPECT_EQ(world.state.History->undoable()->plan, "T");
}

TEST_F(PutBack, KeepsWhatIsSelectedInAPlanThatHasNotTheNode) {
    world.makePlan(QStringList{"U", "U.1", "U.2"});
    const std::int64_t step = deleteNode("T.1");
    outline::setCurrentPlan(*world.state.gDbUser, "U");
    world.openPlan("U", "U.1");
    EXPECT_EQ(putBack(step, "T.1").key, "T.1");
    ASSERT_NE(world.workbench.TrvCurrent.SelectedItem(), nullptr);
    EXPECT_EQ(world.workbench.TrvCurrent.SelectedItem()->Key(), "U.1");
    outline::setCurrentPlan(*world.state.gDbUser, "T");
    world.openPlan("T", "T.2");
    const std::int64_t second = deleteNode("T.1");
    putBack(second, "T.1");
    EXPECT_EQ(world.workbench.TrvCurrent.SelectedItem()->Key(), "T.1") << "where it is shown";
}

TEST_F(PutBack, ANodeOfATemplateComesBackWithItsFile) {
    const std::vector<OutlineRowText> rows{
        {"M", "M"}, {"M.1", "模板章"}, {"M.1.1", "模板文", "是"}};
    world.folder.makeFolder("Sys/标书模板/M");
    const auto own = world.create(world.folder.path("Sys/标书模板/M/M.mdb"));
    test::OutlineWorld::makeTable(*own, "M", rows);
    test::OutlineWorld::makeTable(*world.state.gDbTemplate, "M", rows);
    world.registerName(*world.state.gDbTemplate, "M");
    world.folder.write("Sys/标书模板/M/M.1.1.doc", "template");
    outline::refreshTemplates(world.state, world.workbench, world.messages, world.splash);
    world.messages.otherwise = desktop::Answer::ok;
    const std::int64_t step = run("删除", [&] {
        auto& tree = world.workbench.TrvTemplate;
        tree.Select(&tree.Item("M.1"));
        outline::mnuDelTemplate(world.state, world.workbench, world.services());
    });
    EXPECT_FALSE(world.folder.exists("Sys/标书模板/M/M.1.1.doc"));
    putBack(step, "M.1");
    EXPECT_EQ(world.folder.read("Sys/标书模板/M/M.1.1.doc"), "template");
    EXPECT_NE(world.workbench.TrvTemplate.find("M.1.1"), nullptr);
}

// As a command does that ends the program: the next run has a history of its own.
TEST_F(PutBack, ACommandThatEndedTheProgramIsNoStepOfTheHistoryThatIsOpenedNext) {
    const auto steps = [this] { return world.state.History->steps().size(); };
    const auto before = steps();
    outline::RecordedCommand recorded(world.state, world.workbench.TrvCurrent, "退出",
                                      world.messages);
    addRow({"T.3", "新"});
    world.state.History->finish({});
    world.state.History.reset();
    openHistory();
    EXPECT_EQ(steps(), before + 1);
    EXPECT_FALSE(recorded.finish());
    EXPECT_EQ(steps(), before + 1);
    run("添加", [this] { addRow({"T.4", "后"}); });
    EXPECT_EQ(steps(), before + 2);
}

TEST_F(PutBack, WhatCameOrIsNoNodeCannotBePutBack) {
    EXPECT_FALSE(outline::canPutBack({Kind::rowAdded, "D", "T", "T.1", "章", {}}));
    EXPECT_FALSE(outline::canPutBack({Kind::tableDropped, "D", "T", {}, "T", {}}));
    EXPECT_FALSE(outline::canPutBack({Kind::fileAdded, {}, {}, "/a.doc", "a.doc", {}}));
    EXPECT_FALSE(outline::canPutBack({Kind::rowRemoved, "D", "temp", "T.1", "章", {}}));
    EXPECT_FALSE(outline::canPutBack({Kind::rowChanged, "D", "页面设置表", {}, {}, {}}));
    EXPECT_FALSE(outline::canPutBack({Kind::fileReplaced, {}, {}, "/T.mdb", "T.mdb", {}}));
    EXPECT_TRUE(outline::canPutBack({Kind::rowRemoved, "D", "T", "T.1", "章", {}}));
    EXPECT_TRUE(outline::canPutBack({Kind::rowReplaced, "D", "T", "T.1", "章", "旧"}));
    EXPECT_FALSE(outline::canPutBack({Kind::fileReplaced, {}, {}, {}, "a.doc", {}}));
    EXPECT_TRUE(outline::canPutBack({Kind::rowChanged, "D", "T", "T.1", "章", "旧"}));
    EXPECT_TRUE(outline::canPutBack({Kind::fileRemoved, {}, {}, "/a.doc", "a.doc", {}}));
    EXPECT_TRUE(outline::canPutBack({Kind::fileReplaced, {}, {}, "/a.doc", "a.doc", {}}));
}

TEST_F(PutBack, AStepBearsThePlanThatItsCommandOpenedOrWasSaidToBeAbout) {
    world.makePlan(QStringList{"U", "U.1"});
    const auto addTo = [this](const QString& plan, const QString& key) {
        test::OutlineWorld::add(*world.state.gDbUser->OpenRecordset("Select * from " + plan),
                                {key, "新"});
    };
    const std::int64_t opening = run("打开", [&] {
        addTo("U", "U.2");
        world.openPlan("U");
    });
    EXPECT_EQ(world.state.History->step(opening)->plan, "U");
    outline::RecordedCommand other(world.state, world.workbench.TrvCurrent, "添加", world.messages);
    addTo("T", "T.3");
    other.isAbout("T");
    EXPECT_EQ(other.finish()->plan, "T");
    const std::int64_t closing = run("关闭", [&] {
        addTo("U", "U.3");
        world.workbench.TrvCurrent.Clear();
    });
    EXPECT_EQ(world.state.History->step(closing)->plan, "U");
}

TEST_F(PutBack, ACommandDropsEarlierRemarksAndOneWithinItKeepsItsOwn) {
    world.state.Remarks << "早先的";
    outline::RecordedCommand outer(world.state, world.workbench.TrvCurrent, "复制", world.messages);
    EXPECT_EQ(world.state.Remarks, QStringList());
    world.state.Remarks << "外面的";
    {
        const outline::RecordedCommand inner(world.state, world.workbench.TrvCurrent, "删除",
                                             world.messages);
    }
    EXPECT_EQ(world.state.Remarks, QStringList("外面的"));
    EXPECT_FALSE(outer.finish());
}

TEST_F(PutBack, AFileThatIsAsItWasBeforeTheStepIsNotPutBackInWordsAlone) {
    const QString document = world.folder.path(file("T.1.1"));
    world.folder.write("新.doc", "new");
    const std::int64_t step = run(
        "覆盖", [&] { world.state.gFso->CopyFile(world.folder.path("新.doc"), document, true); });
    const Change change = changeOf(step, history::spelt(document));
    ASSERT_TRUE(world.state.History->undo());
    EXPECT_EQ(test::errorNumberOf([&] { outline::putBack(world.state, step, change); }),
              error::invalidCall);
    EXPECT_EQ(world.folder.read(file("T.1.1")), "T.1.1");
    ASSERT_TRUE(world.state.History->redo());
    EXPECT_EQ(outline::putBack(world.state, step, change).names, QStringList("T.1.1.doc"));
    EXPECT_EQ(world.folder.read(file("T.1.1")), "T.1.1");
}

TEST_F(PutBack, AnUndoAsksInABoxWhetherToLeaveOutAFolderThatIsGone) {
    const test::TemporaryFolder other(test::inMemory());
    other.write("Sys/图片库/page.doc", "old");
    world.state.History.reset();
    world.state.History = std::make_unique<history::History>(
        world.state.gUserTplPath + ".~history",
        history::Places(world.state.gUserTplPath, {other.path()}), *world.state.gWs,
        *world.state.gFso, "测试");
    world.folder.write("new.doc", "new");
    run("改写", [&] {
        addRow({"T.3", "新"});
        world.state.gFso->CopyFile(world.folder.path("new.doc"), other.path("Sys/图片库/page.doc"),
                                   true);
    });
    QDir(other.path("Sys")).removeRecursively();
    const QStringList keys = world.keys("T");
    const auto takeBack = [&](desktop::Answer answer) {
        world.messages.otherwise = answer;
        outline::RecordedCommand recorded(world.state, world.workbench.TrvCurrent, "撤消",
                                          world.messages);
        return outline::undo(world.state, world.workbench, world.services()).has_value();
    };
    EXPECT_THROW(takeBack(desktop::Answer::no), RunTimeError);
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_TRUE(world.messages.shown[0].text.contains(other.path("Sys")));
    EXPECT_EQ(world.messages.shown[0].buttons, desktop::Buttons::yesNo);
    EXPECT_EQ(world.keys("T"), keys);
    EXPECT_TRUE(takeBack(desktop::Answer::yes));
    EXPECT_FALSE(world.keys("T").contains("T.3"));
    EXPECT_FALSE(other.exists("Sys"));
}

// A command that stands is not said to have done nothing.
TEST_F(PutBack, ACommandThatCanNeitherBeRecordedNorTakenBackIsSaidToStand) {
    const QString document = world.folder.path(file("T.1.1"));
    outline::RecordedCommand recorded(world.state, world.workbench.TrvCurrent, "删除(&D)",
                                      world.messages);
    world.state.gFso->DeleteFile(document);
    QDir().mkpath(document + "/in the way");
    const QString history = world.state.gUserTplPath + ".~history/history.db";
    test::PlainSqlite(history).rows(
        "CREATE TRIGGER full BEFORE INSERT ON steps BEGIN SELECT RAISE(ABORT,'full'); END");
    EXPECT_FALSE(recorded.finish());
    EXPECT_TRUE(recorded.wasRefused());
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_TRUE(
        world.messages.shown[0].text.startsWith("“删除”所做的不能记入操作历史，也没有能全部收回："))
        << world.messages.shown[0].text.toStdString();
    EXPECT_EQ(world.messages.shown[0].buttons, desktop::Buttons::ok);
}

#ifdef __linux__
TEST_F(PutBack, BehindAnUndoThatWasKilledOnItsWayTheNextCommandEndsItAndTellsSo) {
    deleteNode("T.1");
    const int changes = undoneByAnother(0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    ASSERT_TRUE(world.state.History->redo());
    ASSERT_EQ(world.keys("T"), (QStringList{"T", "T.2"}));
    ASSERT_EQ(undoneByAnother(changes / 2), changes / 2 - 1);
    run("添加", [this] { addRow({"T.3", "后"}); });
    EXPECT_TRUE(world.state.HistoryFound.restored);
    EXPECT_FALSE(world.state.HistoryFound.unfinished);
    EXPECT_EQ(world.keys("T"), (QStringList{"T", "T.1", "T.1.1", "T.1.1.1", "T.2", "T.3"}));
    EXPECT_EQ(outline::takeMended(world.state, "撤消"), "上一次撤消或恢复中断了，现已做完。");
    EXPECT_EQ(outline::takeMended(world.state, "撤消"), "") << "it is told once";
}

// The user has seen neither state whole, and presses 撤消 once more.
TEST_F(PutBack, AnUndoWhoseBeginEndsAnotherOneShowsThatStateAndTakesNothingElse) {
    deleteNode("T.2");
    deleteNode("T.1");
    const int changes = undoneByAnother(0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    ASSERT_TRUE(world.state.History->redo());
    undoneByAnother(changes / 2);
    outline::RecordedCommand recorded(world.state, world.workbench.TrvCurrent, "撤消",
                                      world.messages);
    EXPECT_FALSE(outline::undo(world.state, world.workbench, world.services()));
    recorded.finish();
    EXPECT_EQ(world.keys("T"), (QStringList{"T", "T.1", "T.1.1", "T.1.1.1"}));
    EXPECT_NE(world.workbench.TrvCurrent.find("T.1.1"), nullptr);
}
#endif

} // namespace
