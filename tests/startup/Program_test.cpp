#include "startup/Program.h"

#include "outline/CurrentPlan.h"
#include "platform/registry/RegistryFile.h"
#include "store/OutlineFolders.h"
#include "support/FakeLongRun.h"
#include "support/OutlineWorld.h"
#include "support/PlainSqlite.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::startup;
using test::OutlineWorld;

namespace {

struct WholeProgram : testing::Test {
    test::TemporaryFolder folder;
    test::FakeMessageBoxes messages;
    test::CountingSplash splash;
    test::FakeFileDialogs dialogs;
    test::CountingEvents events;
    test::CallLog log;
    test::RecordingApplicationFactory word{log};
    test::FakeLongRun longRun;
    registry::RegistryFile registry;
    std::unique_ptr<Program> program;

    WholeProgram() { folder.makeFolder("Sys/标书模板"); }

    bool start() {
        program = std::make_unique<Program>(
            registry, outline::Services{messages, splash, dialogs, events, word, longRun});
        return program->start(folder.path());
    }
    void restart() {
        program->exit();
        start();
    }
    modMain& state() { return program->state(); }
    outline::Workbench& workbench() { return program->workbench(); }
    QStringList currentTree() { return OutlineWorld::shown(workbench().TrvCurrent); }
    QStringList userTree() { return OutlineWorld::shown(workbench().TrvTemplate_Us); }
    void click(const QString& key) {
        outline::clickUserPlan(state(), workbench(), splash, workbench().TrvTemplate_Us.Item(key));
    }
    void setCurrent(const QString& name) {
        const auto rs = state().gDbUser->OpenRecordset("Select * from 当前表");
        rs->AddNew();
        rs->Set(u"名称", name);
        rs->Update();
    }
    QString current() {
        const auto rs = state().gDbUser->OpenRecordset("Select * from 当前表");
        return rs->Eof() ? QString("none") : rs->Get(u"名称").TextOrEmpty();
    }
    // A plan's folder with its database, as another user may hand it over.
    void dropPlanFolder(const QString& name, const std::vector<test::OutlineRowText>& rows) {
        folder.makeFolder("Sys/用户模板/" + name);
        const auto db = state().gWs->CreateDatabase(store::planDatabasePath(state(), name),
                                                    QString::fromUtf16(jet::dbLangGeneral));
        OutlineWorld::makeTable(*db, name, rows);
        OutlineWorld::makeTable(*db, name + "Org", {});
    }
    QStringList copiedKeys(const QString& plan) {
        const auto copy = state().gWs->OpenDatabase(store::planDatabasePath(state(), plan));
        return OutlineWorld::column(*copy, plan, u"Key");
    }
};

TEST_F(WholeProgram, AFirstStartSaysNothingAndHasNoPlan) {
    EXPECT_TRUE(start());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(workbench().TrvCurrent.Count(), 0);
    EXPECT_FALSE(workbench().cmdEdit);
    EXPECT_FALSE(workbench().mnuEdit);
    EXPECT_FALSE(workbench().TbarBid[12]);
}

TEST_F(WholeProgram, APlanFolderThatWasDroppedInIsAdoptedAtTheNextStart) {
    start();
    dropPlanFolder("外来", {{"外来", "外来"}, {"外来.1", "章"}});
    restart();
    EXPECT_EQ(userTree(), QStringList({"外来", "外来.1"}));
    EXPECT_TRUE(state().gDbUser->TableDefs().Contains("外来Org"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(WholeProgram, TheLoadShowsTheCurrentPlanAndSelectsItsLastNode) {
    start();
    dropPlanFolder("甲", {{"甲", "甲"}, {"甲.1", "章"}, {"甲.2", "节"}});
    restart();
    click("甲");
    restart();
    EXPECT_EQ(currentTree(), QStringList({"甲", "甲.1", "甲.2"}));
    EXPECT_EQ(workbench().TrvCurrent.SelectedItem()->Key(), "甲.2");
    EXPECT_TRUE(workbench().cmdEdit && workbench().mnuEdit && workbench().TbarBid[12]);
}

TEST_F(WholeProgram, ACurrentPlanWhoseFolderIsGoneLeavesAnEmptyTree) {
    start();
    setCurrent("失踪");
    restart();
    EXPECT_EQ(workbench().TrvCurrent.Count(), 0);
    EXPECT_FALSE(workbench().cmdEdit);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(current(), "失踪");
}

TEST_F(WholeProgram, ACurrentPlanWithoutItsTableIsToldAndEndsTheLoad) {
    start();
    folder.makeFolder("Sys/用户模板/甲");
    setCurrent("甲");
    splash.up = true;
    restart();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_FALSE(splash.up);
}

TEST_F(WholeProgram, AMissingTemplateFolderIsTold) {
    QDir(folder.path("Sys/标书模板")).removeRecursively();
    EXPECT_TRUE(start());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(messages.shown[0].text.contains("路径未找到"));
    EXPECT_EQ(messages.shown[0].title, "");
}

TEST_F(WholeProgram, TheOrderlyExitLevelsTheOpenPlansCopy) {
    start();
    dropPlanFolder("甲", {{"甲", "甲"}, {"甲.1", "章"}});
    restart();
    click("甲");
    state().gDbUser->Execute("Delete * from 甲 where Key='甲.1'");
    program->exit();
    EXPECT_EQ(state().gDbUser, nullptr);
    jet::DBEngine engine;
    const auto copy = engine.Workspaces(0).OpenDatabase(folder.path("Sys/用户模板/甲/甲.mdb"));
    EXPECT_EQ(OutlineWorld::column(*copy, "甲", u"Key"), QStringList({"甲"}));
}

// An exit behind which the history in the plans' folder has become unwritable, or its tables have.
struct UnrecordedExit : WholeProgram {
    UnrecordedExit() {
        start();
        dropPlanFolder("甲", {{"甲", "甲"}, {"甲.1", "章"}});
        restart();
        click("甲");
        state().gDbUser->Execute("Delete * from 甲 where Key='甲.1'");
    }
    QStringList copiedBehind(const std::function<void()>& harm, desktop::Answer answer) {
        state().gWs->Settle();
        harm();
        messages.otherwise = answer;
        program->exit();
        jet::DBEngine engine;
        return OutlineWorld::column(
            *engine.Workspaces(0).OpenDatabase(folder.path("Sys/用户模板/甲/甲.mdb")), "甲",
            u"Key");
    }
    void takeTheFolderAway() const {
        QDir(folder.path("Sys/用户模板/.~history")).removeRecursively();
        folder.write("Sys/用户模板/.~history", "in the way");
    }
    void expectOneBox(const QString& begin) {
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_TRUE(messages.shown[0].text.startsWith(begin))
            << messages.shown[0].text.toStdString();
    }
};

TEST_F(UnrecordedExit, AsksBeforeItSavesThePlanAndLeavesTheCopyWhereTheUserWantsThat) {
    EXPECT_EQ(copiedBehind([this] { takeTheFolderAway(); }, desktop::Answer::no),
              QStringList({"甲", "甲.1"}));
    expectOneBox("操作历史不能写入，退出时把大纲存入方案文件夹就不能撤消：");
}

TEST_F(UnrecordedExit, SavesThePlanWhereTheUserWantsThatAllTheSame) {
    EXPECT_EQ(copiedBehind([this] { takeTheFolderAway(); }, desktop::Answer::yes),
              QStringList({"甲"}));
    expectOneBox("操作历史不能写入，退出时把大纲存入方案文件夹就不能撤消：");
}

TEST_F(UnrecordedExit, TellsWhenItHasTakenTheSavedPlanBack) {
    const auto fill = [this] {
        test::PlainSqlite(folder.path("Sys/用户模板/.~history/history.db"))
            .rows("CREATE TRIGGER full BEFORE INSERT ON steps BEGIN SELECT RAISE(ABORT,'full'); "
                  "END");
    };
    EXPECT_EQ(copiedBehind(fill, desktop::Answer::no), QStringList({"甲", "甲.1"}));
    expectOneBox("退出时没有把大纲存入方案文件夹，因为操作历史不能写入：");
}

// mnuExit: the run's end without the orderly exit.
TEST_F(WholeProgram, ABareEndLevelsNoCopyAndKeepsWhatStandsInAnOpenTransaction) {
    start();
    dropPlanFolder("甲", {{"甲", "甲"}, {"甲.1", "章"}});
    restart();
    click("甲");
    state().gWs->BeginTrans();
    state().gDbUser->Execute("Delete * from 甲 where Key='甲.1'");
    program.reset();
    jet::DBEngine engine;
    const auto copy = engine.Workspaces(0).OpenDatabase(folder.path("Sys/用户模板/甲/甲.mdb"));
    EXPECT_EQ(OutlineWorld::column(*copy, "甲", u"Key"), QStringList({"甲", "甲.1"}));
    const auto user =
        engine.Workspaces(0).OpenDatabase(folder.path("Sys/用户模板/Db_UsTemplate.mdb"));
    EXPECT_EQ(OutlineWorld::column(*user, "甲", u"Key"), QStringList({"甲"}));
}

TEST_F(WholeProgram, ExitBeforeOrAfterTheRunIsHarmless) {
    start();
    program->exit();
    program->exit();
    Program other(registry, {messages, splash, dialogs, events, word, longRun});
    other.exit();
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(WholeProgram, ExitCommitsATransactionThatAFailureLeftOpen) {
    start();
    state().gWs->BeginTrans();
    setCurrent("甲");
    restart();
    EXPECT_EQ(current(), "甲");
}

TEST_F(WholeProgram, EveryDatabaseFileIsCompleteByItselfAfterTheExit) {
    start();
    program->exit();
    EXPECT_EQ(folder.names("Sys/Database"), QStringList({"Db_BidSet.mdb", "Db_Template.mdb"}));
    EXPECT_EQ(folder.names("Sys/用户模板"), QStringList({"Db_UsTemplate.mdb"}));
}

TEST_F(WholeProgram, ClickingARootMakesItTheCurrentPlanAndSavesTheOneBefore) {
    start();
    dropPlanFolder("甲", {{"甲", "甲"}, {"甲.1", "章"}});
    dropPlanFolder("乙", {{"乙", "乙"}});
    restart();
    click("甲");
    EXPECT_EQ(currentTree(), QStringList({"甲", "甲.1"}));
    EXPECT_EQ(current(), "甲");
    EXPECT_TRUE(workbench().TrvTemplate_Us.Item("甲").Expanded());
    EXPECT_TRUE(workbench().TbarBid[9] && workbench().TbarBid[12] && workbench().cmdEdit);
    state().gDbUser->Execute("Delete * from 甲 where Key='甲.1'");
    EXPECT_EQ(copiedKeys("甲").size(), 2);
    click("乙");
    EXPECT_EQ(current(), "乙");
    EXPECT_EQ(currentTree(), QStringList({"乙"}));
    EXPECT_EQ(copiedKeys("甲"), QStringList({"甲"}));
}

TEST_F(WholeProgram, ClickingAnotherNodeChangesTheCurrentPlanButNotTheTree) {
    start();
    dropPlanFolder("甲", {{"甲", "甲"}, {"甲.1", "章"}});
    dropPlanFolder("乙", {{"乙", "乙"}, {"乙.1", "章"}});
    restart();
    click("甲");
    click("乙.1");
    EXPECT_EQ(current(), "乙");
    EXPECT_EQ(currentTree(), QStringList({"甲", "甲.1"}));
}

} // namespace
