#include "outline/DeleteNode.h"

#include "outline/CurrentPlan.h"
#include "outline/LibraryTree.h"
#include "platform/desktop/OpenDocuments.h"
#include "support/FailingFiles.h"
#include "support/HeldLock.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::OutlineWorld;

namespace {

struct DeleteNodes : testing::Test, OutlineWorld {
    DeleteNodes() { messages.otherwise = desktop::Answer::yes; }

    Deleted remove(const QString& plan, const QString& key) {
        openPlan(plan, key);
        updateTreeTemplate(state, *state.gDbUser, workbench.TrvTemplate_Us, false, messages,
                           splash);
        messages.shown.clear();
        workbench.TbarBid.fill(true);
        return mnuEditDelete(state, workbench, services());
    }
    // A plan as it is made by the program: with its information table.
    void makeWholePlan(const QStringList& keys) {
        makePlan(keys);
        makeTable(*state.gDbUser, keys.front() + "Org", {});
    }
    void setCurrent(const QString& plan) {
        const auto rs = state.gDbUser->OpenRecordset("Select * from 当前表");
        rs->AddNew();
        rs->Set(u"名称", plan);
        rs->Update();
    }
    bool hasTable(const QString& name) { return state.gDbUser->TableDefs().Contains(name); }
    QStringList shownPlans() const { return shown(workbench.TrvTemplate_Us); }

    // What the databases hold when they are opened anew by another program.
    QStringList lastingKeys(const QString& plan) {
        jet::DBEngine other;
        const auto db = other.Workspaces(0).OpenDatabase(state.gDbUser->Name());
        return column(*db, plan, u"Key");
    }
    void expectBox(std::size_t at, const QString& text, desktop::Icon icon, const QString& title) {
        ASSERT_LT(at, messages.shown.size());
        EXPECT_EQ(messages.shown[at].text, text);
        EXPECT_EQ(messages.shown[at].icon, icon);
        EXPECT_EQ(messages.shown[at].title, title);
    }
};

// The question

TEST_F(DeleteNodes, ItAsksWithTheNodesTextAndNoTitle) {
    makePlan({"T", "T.1"});
    EXPECT_EQ(remove("T", "T.1"), Deleted::deleted);
    ASSERT_EQ(messages.shown.size(), 1U);
    expectBox(0, "真的要删除[名T.1]吗？", desktop::Icon::question, "");
    EXPECT_EQ(messages.shown[0].buttons, desktop::Buttons::yesNo);
}

TEST_F(DeleteNodes, WhileNodesAreLeftThePlanCanBeEditedAgain) {
    makePlan({"T", "T.1"});
    openPlan("T", "T.1");
    workbench.TbarBid.fill(false);
    EXPECT_EQ(mnuEditDelete(state, workbench, services()), Deleted::deleted);
    EXPECT_TRUE(workbench.TbarBid[12]);
}

TEST_F(DeleteNodes, WhatWasAskedForGoesEvenWhenTheTreeWasFilledAnewMeanwhile) {
    makePlan({"T", "T.1", "T.2"});
    messages.whileOpen = [this] { openPlan("T", "T.2"); };
    EXPECT_EQ(remove("T", "T.1"), Deleted::deleted);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.2"}));
}

TEST_F(DeleteNodes, OnNoNothingHappens) {
    makePlan({"T", "T.1"});
    messages.otherwise = desktop::Answer::no;
    EXPECT_EQ(remove("T", "T.1"), Deleted::answeredNo);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.1"}));
    EXPECT_TRUE(workbench.TbarBid[1]);
    EXPECT_FALSE(state.gWs->InTransaction());
}

TEST_F(DeleteNodes, WithNoNodeSelectedTheErrorsDescriptionIsShown) {
    makePlan({"T", "T.1"});
    EXPECT_EQ(remove("T", {}), Deleted::failed);
    ASSERT_EQ(messages.shown.size(), 1U);
    expectBox(0, "没有选中节点，请先选中一个节点。", desktop::Icon::exclamation, "提示");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1"}));
    EXPECT_FALSE(state.gWs->InTransaction());
}

// A plan whose name cannot be handled

TEST_F(DeleteNodes, APlanWhoseNameCanBeNoFoldersKeepsItsTablesAndItsPlaceInTheList) {
    makeTable(*state.gDbUser, "NUL", {{"NUL", "NUL"}, {"NUL.1", "章"}});
    makeTable(*state.gDbUser, "NULOrg", {});
    registerName(*state.gDbUser, "NUL");
    setCurrent("NUL");
    EXPECT_EQ(remove("NUL", "NUL"), Deleted::failed);
    state.gWs->CommitTrans();
    EXPECT_EQ(keys("NUL"), QStringList({"NUL", "NUL.1"}));
    EXPECT_TRUE(hasTable("NULOrg"));
    EXPECT_EQ(registered(*state.gDbUser), QStringList{"NUL"});
    EXPECT_EQ(registered(*state.gDbUser, "当前表"), QStringList{"NUL"});
}

TEST_F(DeleteNodes, APlanWhoseNameHasAnApostropheKeepsItsTablesItsPlaceInTheListAndItsFolder) {
    makeWholePlan({"甲'乙", "甲'乙.1"});
    EXPECT_EQ(remove("甲'乙", "甲'乙"), Deleted::failed);
    state.gWs->CommitTrans();
    EXPECT_EQ(keys("甲'乙").size(), 2);
    EXPECT_TRUE(hasTable("甲'乙Org"));
    EXPECT_EQ(registered(*state.gDbUser), QStringList{"甲'乙"});
    EXPECT_TRUE(folder.exists("用户模板/甲'乙/甲'乙.mdb"));
}

TEST_F(DeleteNodes, APlanWithAWriteProtectedDocumentKeepsItsFolder) {
    makeWholePlan({"甲", "甲.1"});
    folder.write("用户模板/甲/甲.1.doc", "mine");
    QFile::setPermissions(folder.path("用户模板/甲/甲.1.doc"), QFile::ReadOwner);
    EXPECT_EQ(remove("甲", "甲"), Deleted::failed);
    EXPECT_TRUE(folder.exists("用户模板/甲/甲.1.doc"));
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[1].icon, desktop::Icon::exclamation);
}

// A subtree

TEST_F(DeleteNodes, ASubtreeGoesFromBothTablesAndTheTree) {
    makePlan({"T", "T.1", "T.1.3", "T.1.3.4d", "T.2"});
    EXPECT_EQ(remove("T", "T.1"), Deleted::deleted);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(copiedKeys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.2"}));
    EXPECT_EQ(shownPlans(), QStringList({"T", "T.2"}));
    EXPECT_FALSE(state.gWs->InTransaction());
    EXPECT_FALSE(state.gDbPlan);
}

TEST_F(DeleteNodes, RowsWhoseKeysMerelyBeginAlikeGoTooWhileTheirNodesStayOnTheScreen) {
    makePlan({"T", "T.1", "T.2", "T.10", "T.10.3d", "T.11"});
    EXPECT_EQ(remove("T", "T.1"), Deleted::deleted);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(copiedKeys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.2", "T.10", "T.10.3", "T.11"}));
    openPlan("T");
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.2"}));
}

TEST_F(DeleteNodes, KeysAndNumbersOfTheOtherRowsStayAsTheyAre) {
    makePlan({"T", "T.1", "T.2", "T.3"});
    remove("T", "T.2");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.3"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "4"}));
}

TEST_F(DeleteNodes, DocumentFilesOfASubtreeStayInTheFolder) {
    makePlan({"T", "T.1", "T.1.2d"});
    folder.write("用户模板/T/T.1.2.doc", "text");
    remove("T", "T.1");
    EXPECT_EQ(folder.read("用户模板/T/T.1.2.doc"), "text");
}

TEST_F(DeleteNodes, AnotherPlanWhoseNameBeginsAlikeIsLeftAlone) {
    makePlan({"T", "T.1"});
    makePlan({"T1", "T1.1"});
    remove("T", "T.1");
    EXPECT_EQ(keys("T1"), QStringList({"T1", "T1.1"}));
    EXPECT_EQ(copiedKeys("T1"), QStringList({"T1", "T1.1"}));
}

TEST_F(DeleteNodes, TheLastChildGoneLeavesItsParentWithoutAnyMark) {
    makePlan({"T", "T.1", "T.1.2"});
    remove("T", "T.1.2");
    EXPECT_EQ(workbench.TrvCurrent.Item("T.1").Children(), 0);
    EXPECT_EQ(workbench.TrvCurrent.Item("T.1").Image(), image::folder);
    EXPECT_EQ(column(*state.gDbUser, "T", u"名称"), QStringList({"名T", "名T.1"}));
}

TEST_F(DeleteNodes, AfterASubtreeButtonsOneToEightAreOffAndTwelveOn) {
    makePlan({"T", "T.1"});
    remove("T", "T.1");
    for (int position = 1; position <= 8; ++position) {
        EXPECT_FALSE(workbench.TbarBid[position]) << position;
    }
    for (int position = 9; position <= 15; ++position) {
        EXPECT_TRUE(workbench.TbarBid[position]) << position;
    }
}

TEST_F(DeleteNodes, ASubtreeLeavesTheCommandsOfThePlanAsTheyWere) {
    makePlan({"T", "T.1"});
    remove("T", "T.1");
    EXPECT_TRUE(workbench.cmdEdit && workbench.mnuEdit);
}

TEST_F(DeleteNodes, AfterASubtreeTheNeighbourIsSelectedAndCountsAsClicked) {
    makePlan({"T", "T.1", "T.2d", "T.3"});
    remove("T", "T.1");
    EXPECT_EQ(selectedKey(), "T.2");
    EXPECT_EQ(workbench.clickedKey, "T.2");
    EXPECT_TRUE(workbench.mnuBrowseDoc && workbench.mnuRename);
    EXPECT_FALSE(workbench.mnuLTFolder);
    remove("T", "T.3");
    EXPECT_EQ(selectedKey(), "T.2");
    remove("T", "T.2");
    EXPECT_EQ(selectedKey(), "T");
    EXPECT_EQ(workbench.clickedKey, "T");
    EXPECT_FALSE(workbench.mnuRename);
    for (int position = 1; position <= 8; ++position) {
        EXPECT_FALSE(workbench.TbarBid[position]) << position;
    }
}

TEST_F(DeleteNodes, ATextThatIsNoKeyTakesItsOwnRowAloneAndNoFile) {
    makePlan("T", {{"T", "T"}, {"T.*", "星", "是"}, {"T.1", "甲"}, {"T./../外", "外", "是"}});
    folder.write("用户模板/外.doc", "outside");
    EXPECT_EQ(remove("T", "T.*"), Deleted::deleted);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T./../外"}));
    EXPECT_EQ(copiedKeys("T"), QStringList({"T", "T.1", "T./../外"}));
    EXPECT_EQ(folder.read("用户模板/外.doc"), "outside");
}

// The root

TEST_F(DeleteNodes, ARootTakesTablesRegistrationCurrentPlanAndFolder) {
    makeWholePlan({"T", "T.1d"});
    makeWholePlan({"U", "U.1"});
    setCurrent("T");
    folder.write("用户模板/T/T.1.doc", "text");
    EXPECT_EQ(remove("T", "T"), Deleted::deleted);
    EXPECT_FALSE(hasTable("T"));
    EXPECT_FALSE(hasTable("TOrg"));
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"U"}));
    EXPECT_EQ(registered(*state.gDbUser, "当前表"), QStringList());
    EXPECT_FALSE(folder.exists("用户模板/T"));
    EXPECT_EQ(keys("U"), QStringList({"U", "U.1"}));
    EXPECT_EQ(shownPlans(), QStringList({"U", "U.1"}));
    EXPECT_FALSE(state.gWs->InTransaction());
}

TEST_F(DeleteNodes, AfterTheWholePlanTheTreeIsEmptyAndEveryEditCommandIsOff) {
    makeWholePlan({"T", "T.1"});
    for (bool Workbench::*item :
         {&Workbench::mnuBrowseDoc, &Workbench::mnuEQFolder, &Workbench::mnuLTFolder,
          &Workbench::mnuAddDoc, &Workbench::mnuEQDoc, &Workbench::mnuLTDoc, &Workbench::mnuRename,
          &Workbench::mnuEditDelete, &Workbench::mnuSaveTemplate, &Workbench::mnuPaste,
          &Workbench::mnuDelete}) {
        workbench.*item = true;
    }
    remove("T", "T");
    EXPECT_EQ(workbench.TrvCurrent.Count(), 0);
    EXPECT_FALSE(workbench.cmdEdit || workbench.mnuEdit);
    EXPECT_FALSE(workbench.mnuBrowseDoc || workbench.mnuEQFolder || workbench.mnuLTFolder ||
                 workbench.mnuAddDoc || workbench.mnuEQDoc || workbench.mnuLTDoc ||
                 workbench.mnuRename || workbench.mnuEditDelete || workbench.mnuSaveTemplate);
    EXPECT_TRUE(workbench.mnuPaste && workbench.mnuDelete);
    const std::array<bool, 16> expected = {true,  false, false, false, false, false, false, false,
                                           false, false, false, true,  false, true,  true,  true};
    EXPECT_EQ(workbench.TbarBid, expected);
}

TEST_F(DeleteNodes, ARootWithoutItsFolderGoesAllTheSame) {
    makeWholePlan({"T", "T.1"});
    openPlan("T", "T");
    QDir(folder.path("用户模板/T")).removeRecursively();
    EXPECT_EQ(mnuEditDelete(state, workbench, services()), Deleted::deleted);
    EXPECT_FALSE(hasTable("T"));
    EXPECT_EQ(registered(*state.gDbUser), QStringList());
}

TEST_F(DeleteNodes, ARenamedRootDeletesThePlanOfItsKey) {
    makeWholePlan({"T", "T.1"});
    makeWholePlan({"U", "U.1"});
    openPlan("T", "T");
    workbench.TrvCurrent.setText(workbench.TrvCurrent.Item("T"), "U");
    EXPECT_EQ(mnuEditDelete(state, workbench, services()), Deleted::deleted);
    EXPECT_FALSE(hasTable("T"));
    EXPECT_FALSE(folder.exists("用户模板/T"));
    EXPECT_EQ(keys("U"), QStringList({"U", "U.1"}));
    EXPECT_TRUE(folder.exists("用户模板/U/U.mdb"));
}

// Failures

TEST_F(DeleteNodes, ADocumentInUseIsToldAndLeavesTheTransactionOpen) {
    makeWholePlan({"T", "T.1d"});
    folder.write("用户模板/T/T.1.doc", "text");
    const test::HeldLock lock(folder.path("用户模板/T/T.1.doc"), test::LockKind::record);
    EXPECT_EQ(remove("T", "T"), Deleted::failed);
    ASSERT_EQ(messages.shown.size(), 2U);
    expectBox(1, "请先关闭正在使用与此工程相关的内容！", desktop::Icon::exclamation, "提示");
    EXPECT_EQ(folder.names("用户模板/T"), QStringList({"T.1.doc", "T.mdb"}));
    EXPECT_TRUE(state.gWs->InTransaction());
    EXPECT_FALSE(hasTable("T"));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.1"}));
}

TEST_F(DeleteNodes, ADocumentWithALockFileBesideItIsInUse) {
    state.gFso =
        std::make_unique<files::DiskFileSystem>(std::make_unique<desktop::OpenDocuments>());
    makeWholePlan({"T", "T.1d"});
    folder.write("用户模板/T/T.1.doc", "text");
    folder.write("用户模板/T/.~lock.T.1.doc#", ",planner,another machine,21.11.2026 08:59,;");
    EXPECT_EQ(remove("T", "T"), Deleted::failed);
    expectBox(1, "请先关闭正在使用与此工程相关的内容！", desktop::Icon::exclamation, "提示");
    EXPECT_EQ(folder.read("用户模板/T/T.1.doc"), "text");
}

TEST_F(DeleteNodes, AfterErrorSeventyTheButtonsStayButForTheThreeThatWereOffBefore) {
    makeWholePlan({"T", "T.1d"});
    folder.write("用户模板/T/T.1.doc", "text");
    const test::HeldLock lock(folder.path("用户模板/T/T.1.doc"), test::LockKind::record);
    remove("T", "T");
    EXPECT_FALSE(workbench.cmdEdit || workbench.mnuEdit || workbench.TbarBid[9]);
    for (const int position : {1, 2, 3, 4, 5, 6, 7, 8, 10, 12}) {
        EXPECT_TRUE(workbench.TbarBid[position]) << position;
    }
}

TEST_F(DeleteNodes, WhatStandsInTheOpenTransactionIsKeptAtTheNextOne) {
    makeWholePlan({"T", "T.1d"});
    makeWholePlan({"U", "U.1"});
    auto failing = std::make_unique<test::FailingFiles>();
    failing->deletingFolder.emplace(error::permissionDenied, u"没有权限");
    state.gFso = std::move(failing);
    remove("T", "T");
    EXPECT_EQ(lastingKeys("T"), QStringList({"T", "T.1"}));
    state.gWs->BeginTrans();
    jet::DBEngine other;
    EXPECT_FALSE(
        other.Workspaces(0).OpenDatabase(state.gDbUser->Name())->TableDefs().Contains("T"));
}

TEST_F(DeleteNodes, WhatStandsInTheOpenTransactionIsKeptWhenTheWorkspaceCloses) {
    makeWholePlan({"T", "T.1"});
    const QString database = state.gDbUser->Name();
    auto failing = std::make_unique<test::FailingFiles>();
    failing->deletingFolder.emplace(error::permissionDenied, u"没有权限");
    state.gFso = std::move(failing);
    remove("T", "T");
    state.gWs->Close();
    jet::DBEngine other;
    const auto db = other.Workspaces(0).OpenDatabase(database);
    EXPECT_FALSE(db->TableDefs().Contains("T"));
    EXPECT_EQ(registered(*db), QStringList());
}

TEST_F(DeleteNodes, AFailedPlanCopyLeavesTheRowsDeletedAndTheTreesShowIt) {
    makePlan({"T", "T.1", "T.2"});
    QFile::remove(folder.path("用户模板/T/T.mdb"));
    EXPECT_EQ(remove("T", "T.1"), Deleted::failed);
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_TRUE(messages.shown[1].text.contains("T.mdb")) << messages.shown[1].text.toStdString();
    EXPECT_EQ(messages.shown[1].icon, desktop::Icon::exclamation);
    EXPECT_EQ(messages.shown[1].title, "提示");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.2"}));
    EXPECT_EQ(shownPlans(), QStringList({"T", "T.2"}));
    EXPECT_EQ(selectedKey(), "T.2");
    EXPECT_TRUE(state.gWs->InTransaction());
    EXPECT_TRUE(workbench.TbarBid[1]);
}

TEST_F(DeleteNodes, ANodeWhoseRowStandsBehindAFailureStaysOnTheScreen) {
    makePlan({"甲 乙", "甲 乙.1"});
    EXPECT_EQ(remove("甲 乙", "甲 乙.1"), Deleted::failed);
    EXPECT_EQ(keys("甲 乙"), QStringList({"甲 乙", "甲 乙.1"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"甲 乙", "甲 乙.1"}));
}

TEST_F(DeleteNodes, AFailureInThePlanCopyLeavesNoHandleOnIt) {
    makePlan({"T", "T.1", "T.2"});
    state.gWs->OpenDatabase(folder.path("用户模板/T/T.mdb"))->TableDefs().Delete("T");
    EXPECT_EQ(remove("T", "T.1"), Deleted::failed);
    EXPECT_EQ(state.gDbPlan, nullptr);
}

TEST_F(DeleteNodes, AMissingTableEndsItInSilence) {
    makePlan({"T", "T.1"});
    EXPECT_EQ(remove("T", "T"), Deleted::failed);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_FALSE(hasTable("T"));
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"T"}));
    EXPECT_TRUE(folder.exists("用户模板/T"));
    EXPECT_TRUE(state.gWs->InTransaction());
}

TEST_F(DeleteNodes, AnOutlineNamedLikeTheMissingInformationTableStays) {
    makePlan({"T", "T.1"});
    makeWholePlan({"TOrg", "TOrg.1"});
    EXPECT_EQ(remove("T", "T"), Deleted::failed);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(keys("TOrg"), QStringList({"TOrg", "TOrg.1"}));
}

struct SilentNumbers : DeleteNodes, testing::WithParamInterface<long> {};
INSTANTIATE_TEST_SUITE_P(Numbers, SilentNumbers, testing::Values(3265, 20, 0, -1, -2147221504));

TEST_P(SilentNumbers, AreNotTold) {
    makeWholePlan({"T", "T.1"});
    auto failing = std::make_unique<test::FailingFiles>();
    failing->deletingFolder.emplace(GetParam(), u"说明");
    state.gFso = std::move(failing);
    EXPECT_EQ(remove("T", "T"), Deleted::failed);
    EXPECT_EQ(messages.shown.size(), 1U);
}

struct ToldNumbers : DeleteNodes, testing::WithParamInterface<long> {};
INSTANTIATE_TEST_SUITE_P(Numbers, ToldNumbers, testing::Values(1, 19, 21, 75, 76, 3264, 3266));

TEST_P(ToldNumbers, AreToldByTheirDescription) {
    makeWholePlan({"T", "T.1"});
    auto failing = std::make_unique<test::FailingFiles>();
    failing->deletingFolder.emplace(GetParam(), u"说明");
    state.gFso = std::move(failing);
    EXPECT_EQ(remove("T", "T"), Deleted::failed);
    ASSERT_EQ(messages.shown.size(), 2U);
    expectBox(1, "说明", desktop::Icon::exclamation, "提示");
}

// Names

struct BareNames : DeleteNodes, testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Names, BareNames,
                         testing::Values("工程甲", "😀工程", "مشروع", "a_1", "甲　乙", "施工（一）",
                                         "ａ＊"));

TEST_P(BareNames, ThatAStatementCanTakeAreDeletedFrom) {
    const QString plan = GetParam();
    makeWholePlan({plan, plan + ".1", plan + ".1.2d", plan + ".3"});
    EXPECT_EQ(remove(plan, plan + ".1"), Deleted::deleted);
    EXPECT_EQ(keys(plan), QStringList({plan, plan + ".3"}));
    EXPECT_EQ(copiedKeys(plan), QStringList({plan, plan + ".3"}));
    EXPECT_EQ(remove(plan, plan), Deleted::deleted);
    EXPECT_FALSE(hasTable(plan));
    EXPECT_FALSE(folder.exists("用户模板/" + plan));
}

struct OddNames : DeleteNodes, testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Names, OddNames,
                         testing::Values("甲 乙", "甲'乙", "甲*", "甲?", "甲#", "甲-乙", "甲(1)",
                                         "甲 where Key='甲' or Key<>'", "甲;", "甲,乙", "select",
                                         "甲\"乙", "甲 like '*' or ''='"));

TEST_P(OddNames, ThatAStatementCannotTakeAreToldAndTouchNoOtherTable) {
    const QString plan = GetParam();
    makePlan({"甲", "甲.1", "甲.2"});
    makePlan({"乙", "乙.1"});
    makePlan({plan, plan + ".1", plan + ".2"});
    EXPECT_EQ(remove(plan, plan + ".1"), Deleted::failed);
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_FALSE(messages.shown[1].text.isEmpty());
    EXPECT_EQ(messages.shown[1].title, "提示");
    EXPECT_EQ(keys(plan), QStringList({plan, plan + ".1", plan + ".2"}));
    EXPECT_EQ(keys("甲"), QStringList({"甲", "甲.1", "甲.2"}));
    EXPECT_EQ(copiedKeys("甲"), QStringList({"甲", "甲.1", "甲.2"}));
    EXPECT_EQ(keys("乙"), QStringList({"乙", "乙.1"}));
}

TEST_P(OddNames, AreDeletedAsAWholeOrToldAndTouchNoOtherPlan) {
    const QString plan = GetParam();
    makeWholePlan({"甲", "甲.1"});
    makeWholePlan({plan, plan + ".1"});
    folder.write("用户模板/甲/甲.1.doc", "text");
    const Deleted outcome = remove(plan, plan);
    EXPECT_EQ(hasTable(plan), plan.contains('\''));
    if (plan.contains('\'')) {
        EXPECT_EQ(outcome, Deleted::failed);
        ASSERT_GE(messages.shown.size(), 2U);
        EXPECT_TRUE(messages.shown[1].text.contains("撇号"));
        EXPECT_EQ(registered(*state.gDbUser), QStringList({"甲", plan}));
    } else {
        EXPECT_EQ(outcome, Deleted::deleted);
        EXPECT_EQ(registered(*state.gDbUser), QStringList({"甲"}));
        EXPECT_FALSE(folder.exists("用户模板/" + plan));
    }
    EXPECT_EQ(keys("甲"), QStringList({"甲", "甲.1"}));
    EXPECT_EQ(folder.read("用户模板/甲/甲.1.doc"), "text");
}

TEST_F(DeleteNodes, ABracketInAKeyIsNoPattern) {
    makePlan("T", {{"T", "T"}, {"T.[1", "开"}, {"T.1", "甲"}});
    EXPECT_EQ(remove("T", "T.[1"), Deleted::deleted);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1"}));
}

TEST_F(DeleteNodes, ARootWithAnEmptyKeyDeletesNothing) {
    makeWholePlan({"T", "T.1"});
    openPlan("T");
    workbench.TrvCurrent.Select(&workbench.TrvCurrent.Add("", "空", 1, 2));
    EXPECT_EQ(mnuEditDelete(state, workbench, services()), Deleted::failed);
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"T"}));
    EXPECT_TRUE(folder.exists("用户模板/T/T.mdb"));
}

} // namespace
