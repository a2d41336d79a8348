#include "plans/DeletePlan.h"

#include "outline/CurrentPlan.h"
#include "outline/LibraryTree.h"
#include "outline/TrvCurrentEvents.h"
#include "store/OutlineFolders.h"
#include "support/FakePreview.h"
#include "support/HeldLock.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::plans;
using test::OutlineWorld;

namespace {

struct DeletePlans : testing::Test, OutlineWorld {
    DeletePlans() { messages.otherwise = desktop::Answer::yes; }

    // As DlgNew leaves it: open, current, with its information table.
    void makeWholePlan(const QString& plan) {
        makePlan(plan, {{plan, plan}, {plan + ".1", "章"}, {plan + ".2", "档", "是"}});
        makeTable(*state.gDbUser, plan + "Org", {});
        folder.write("用户模板/" + plan + "/" + plan + ".2.doc", "text");
    }
    void makeCurrent(const QString& plan) {
        const auto rs = state.gDbUser->OpenRecordset("Select * from 当前表");
        rs->AddNew();
        rs->Set(u"名称", plan);
        rs->Update();
    }
    // Clicks a node of the plan as a user does.
    void click(const QString& plan, const QString& key) {
        openPlan(plan, key);
        refresh();
        messages.shown.clear();
        test::FakePreview preview;
        outline::TrvCurrentEvents events_(state, workbench, services(), preview);
        events_.NodeClick(*workbench.TrvCurrent.SelectedItem());
    }
    bool remove() { return mnuDelete(state, workbench, messages); }
    void refresh() {
        outline::updateTreeTemplate(state, *state.gDbUser, workbench.TrvTemplate_Us, false,
                                    messages, splash);
    }
    bool hasTable(const QString& name) { return state.gDbUser->TableDefs().Contains(name); }
    QStringList plans() { return registered(*state.gDbUser); }
    QStringList current() { return registered(*state.gDbUser, "当前表"); }
};

TEST_F(DeletePlans, TheRootsPlanGoesAltogether) {
    makeWholePlan("甲");
    makeWholePlan("乙");
    makeCurrent("甲");
    click("甲", "甲");
    EXPECT_TRUE(remove());
    EXPECT_FALSE(folder.exists("用户模板/甲"));
    EXPECT_FALSE(hasTable("甲"));
    EXPECT_FALSE(hasTable("甲Org"));
    EXPECT_EQ(plans(), QStringList({"乙"}));
    EXPECT_EQ(current(), QStringList());
    EXPECT_EQ(state.gSelectedPlan, "");
    EXPECT_EQ(workbench.TrvCurrent.Count(), 0);
    EXPECT_EQ(shown(workbench.TrvTemplate_Us), QStringList({"乙", "乙.1", "乙.2"}));
    EXPECT_EQ(keys("乙").size(), 3);
    EXPECT_EQ(folder.read("用户模板/乙/乙.2.doc"), "text");
}

TEST_F(DeletePlans, ItAsksWithTheNameOfTheFirstNode) {
    makeWholePlan("甲");
    click("甲", "甲.1");
    messages.otherwise = desktop::Answer::no;
    EXPECT_FALSE(remove());
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "确实要删除工程 [ 甲 ]");
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::question);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(messages.shown[0].buttons, desktop::Buttons::yesNo);
}

TEST_F(DeletePlans, OnNoNothingHappens) {
    makeWholePlan("甲");
    makeCurrent("甲");
    click("甲", "甲");
    messages.otherwise = desktop::Answer::no;
    EXPECT_FALSE(remove());
    EXPECT_TRUE(folder.exists("用户模板/甲/甲.2.doc"));
    EXPECT_TRUE(hasTable("甲") && hasTable("甲Org"));
    EXPECT_EQ(plans(), QStringList({"甲"}));
    EXPECT_EQ(current(), QStringList({"甲"}));
    EXPECT_EQ(state.gSelectedPlan, "甲");
    EXPECT_EQ(workbench.TrvCurrent.Count(), 3);
}

TEST_F(DeletePlans, AnEmptyTreeEndsItBeforeTheQuestion) {
    makeWholePlan("甲");
    makeCurrent("甲");
    EXPECT_FALSE(remove());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(current(), QStringList({"甲"}));
}

TEST_F(DeletePlans, AFirstNodeWithoutTextEndsItBeforeTheQuestion) {
    makeWholePlan("甲");
    click("甲", "甲");
    workbench.TrvCurrent.setText(workbench.TrvCurrent.Item(1), "");
    EXPECT_FALSE(remove());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(folder.exists("用户模板/甲"));
}

TEST_F(DeletePlans, WithAnotherNodeSelectedTheTablesAndTheRegistrationStay) {
    makeWholePlan("甲");
    makeCurrent("甲");
    click("甲", "甲.1");
    EXPECT_TRUE(remove());
    EXPECT_FALSE(folder.exists("用户模板/甲"));
    EXPECT_TRUE(hasTable("甲") && hasTable("甲Org"));
    EXPECT_EQ(plans(), QStringList({"甲"}));
    EXPECT_EQ(current(), QStringList());
    EXPECT_EQ(workbench.TrvCurrent.Count(), 0);
    EXPECT_EQ(workbench.TrvTemplate_Us.Count(), 0);
}

TEST_F(DeletePlans, TheNextRefreshRemovesWhatSuchADeletionLeft) {
    makeWholePlan("甲");
    makeWholePlan("乙");
    click("甲", "甲.1");
    remove();
    refresh();
    EXPECT_FALSE(hasTable("甲") || hasTable("甲Org"));
    EXPECT_EQ(plans(), QStringList({"乙"}));
}

TEST_F(DeletePlans, WithoutASelectedPlanNoTableIsTouchedNotEvenOneCalledOrg) {
    makeWholePlan("甲");
    makeWholePlan("Org");
    click("甲", "甲.1");
    remove();
    EXPECT_EQ(keys("Org"), QStringList({"Org", "Org.1", "Org.2"}));
    EXPECT_EQ(plans(), QStringList({"甲", "Org"}));
}

TEST_F(DeletePlans, WithoutASelectedPlanATableCalledOrgThatNoPlanListsStaysToo) {
    makeWholePlan("甲");
    makeTable(*state.gDbUser, "Org", {});
    click("甲", "甲.1");
    EXPECT_TRUE(remove());
    EXPECT_TRUE(hasTable("Org"));
}

TEST_F(DeletePlans, AnOutlineNamedLikeAMissingInformationTableStays) {
    makePlan("甲", {{"甲", "甲"}, {"甲.1", "章"}});
    makeWholePlan("甲Org");
    click("甲", "甲");
    EXPECT_TRUE(remove());
    EXPECT_FALSE(hasTable("甲"));
    EXPECT_EQ(plans(), QStringList({"甲Org"}));
    EXPECT_EQ(keys("甲Org"), QStringList({"甲Org", "甲Org.1", "甲Org.2"}));
}

TEST_F(DeletePlans, AFolderInUseStaysWholeAndTheRestGoesWithoutABox) {
    makeWholePlan("甲");
    makeCurrent("甲");
    click("甲", "甲");
    const QStringList before = folder.names("用户模板/甲");
    const test::HeldLock lock(folder.path("用户模板/甲/甲.2.doc"), test::LockKind::whole);
    EXPECT_TRUE(remove());
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(state.Remarks,
              QStringList("文件夹没有删除，其中可能有文件正在使用；下次启动时会重新列入：" +
                          store::planFolder(state, "甲")));
    EXPECT_EQ(folder.names("用户模板/甲"), before);
    EXPECT_FALSE(hasTable("甲") || hasTable("甲Org"));
    EXPECT_EQ(plans(), QStringList());
    EXPECT_EQ(current(), QStringList());
    EXPECT_EQ(workbench.TrvCurrent.Count(), 0);
}

TEST_F(DeletePlans, AFolderInUseOfAPlanThatStaysListedIsToldWithoutAPromise) {
    makeWholePlan("甲");
    click("甲", "甲.1");
    const test::HeldLock lock(folder.path("用户模板/甲/甲.2.doc"), test::LockKind::whole);
    EXPECT_TRUE(remove());
    EXPECT_EQ(state.Remarks, QStringList("文件夹没有删除，其中可能有文件正在使用：" +
                                         store::planFolder(state, "甲")));
}

TEST_F(DeletePlans, AWriteProtectedFileThatKeepsAFolderIsNamed) {
    makeWholePlan("甲");
    click("甲", "甲.1");
    QFile::setPermissions(folder.path("用户模板/甲/甲.2.doc"), QFile::ReadOwner);
    EXPECT_TRUE(remove());
    EXPECT_EQ(state.Remarks, QStringList("文件夹没有删除，其中的“甲.2.doc”设为只读：" +
                                         store::planFolder(state, "甲")));
    EXPECT_TRUE(folder.exists("用户模板/甲/甲.2.doc"));
}

TEST_F(DeletePlans, AWriteProtectedFileInAFolderBelowIsNamed) {
    makeWholePlan("甲");
    click("甲", "甲.1");
    folder.write("用户模板/甲/附图/总平面.doc", "mine");
    QFile::setPermissions(folder.path("用户模板/甲/附图/总平面.doc"), QFile::ReadOwner);
    EXPECT_TRUE(remove());
    EXPECT_EQ(state.Remarks, QStringList("文件夹没有删除，其中的“总平面.doc”设为只读：" +
                                         store::planFolder(state, "甲")));
}

TEST_F(DeletePlans, APlanWhoseFolderGoesLeavesNothingToTell) {
    makeWholePlan("甲");
    click("甲", "甲");
    EXPECT_TRUE(remove());
    EXPECT_TRUE(state.Remarks.isEmpty());
}

TEST_F(DeletePlans, SuchAFolderIsAdoptedAgainAtTheNextStart) {
    makeWholePlan("甲");
    click("甲", "甲");
    {
        const test::HeldLock lock(folder.path("用户模板/甲/甲.2.doc"), test::LockKind::whole);
        remove();
    }
    outline::adoptPlanFolders(state, workbench, messages, splash);
    EXPECT_EQ(plans(), QStringList({"甲"}));
    EXPECT_EQ(keys("甲"), QStringList({"甲", "甲.1", "甲.2"}));
}

TEST_F(DeletePlans, AMissingFolderOrTableStopsNothing) {
    makeWholePlan("甲");
    makeCurrent("甲");
    click("甲", "甲");
    QDir(folder.path("用户模板/甲")).removeRecursively();
    state.gDbUser->TableDefs().Delete("甲");
    EXPECT_TRUE(remove());
    EXPECT_TRUE(state.Remarks.isEmpty());
    EXPECT_FALSE(hasTable("甲Org"));
    EXPECT_EQ(plans(), QStringList());
    EXPECT_EQ(current(), QStringList());
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(DeletePlans, AMissingListOfPlansKeepsNoTableBack) {
    makeWholePlan("甲");
    click("甲", "甲");
    state.gDbUser->TableDefs().Delete("遍历表");
    EXPECT_TRUE(remove());
    EXPECT_FALSE(hasTable("甲"));
    EXPECT_FALSE(hasTable("甲Org"));
}

TEST_F(DeletePlans, OnlyTheFirstCurrentRowIsDeletedWhateverPlanItNames) {
    makeWholePlan("甲");
    makeCurrent("乙");
    makeCurrent("丙");
    click("甲", "甲");
    remove();
    EXPECT_EQ(current(), QStringList({"丙"}));
}

TEST_F(DeletePlans, NoTransactionIsOpened) {
    makeWholePlan("甲");
    click("甲", "甲");
    state.gWs->BeginTrans();
    remove();
    EXPECT_TRUE(state.gWs->InTransaction());
    state.gWs->CommitTrans();
}

TEST_F(DeletePlans, TheCommandsOfTheWorkbenchStayAsTheyWere) {
    makeWholePlan("甲");
    click("甲", "甲");
    const auto buttons = workbench.TbarBid;
    remove();
    EXPECT_EQ(workbench.TbarBid, buttons);
    EXPECT_TRUE(workbench.mnuDelete && workbench.cmdEdit && workbench.mnuEdit);
}

// The folder goes by the first node's text, the tables by the plan that was selected.
TEST_F(DeletePlans, ARootRenamedAfterItsClickPartsFolderAndTables) {
    makeWholePlan("甲");
    makeWholePlan("乙");
    click("甲", "甲");
    workbench.TrvCurrent.setText(workbench.TrvCurrent.Item(1), "乙");
    remove();
    EXPECT_TRUE(folder.exists("用户模板/甲"));
    EXPECT_FALSE(folder.exists("用户模板/乙"));
    EXPECT_FALSE(hasTable("甲"));
    EXPECT_TRUE(hasTable("乙"));
    EXPECT_EQ(plans(), QStringList({"乙"}));
    EXPECT_EQ(shown(workbench.TrvTemplate_Us), QStringList({"甲", "甲.1", "甲.2"}));
}

struct StrayTexts : DeletePlans, testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Texts, StrayTexts,
                         testing::Values("..", ".", "../Sys", "../Sys/标书模板", "甲/..", " ", "*",
                                         "甲\\..", "?", "/", "Db_UsTemplate.mdb"));

TEST_P(StrayTexts, OfARootNeverLeadOutOfThePlansFolders) {
    makeWholePlan("甲");
    click("甲", "甲.1");
    workbench.TrvCurrent.setText(workbench.TrvCurrent.Item(1), GetParam());
    remove();
    EXPECT_EQ(folder.read("用户模板/甲/甲.2.doc"), "text");
    EXPECT_TRUE(folder.exists("用户模板/Db_UsTemplate.mdb"));
    EXPECT_TRUE(folder.exists("Sys/标书模板"));
}

struct PlanNames : DeletePlans, testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Names, PlanNames,
                         testing::Values("甲 乙", "甲*", "甲#", "😀", "مشروع", "甲(1)", "甲;",
                                         "甲,乙", "select", "甲\"乙"));

TEST_P(PlanNames, OfAnySortGoWithTheirTablesAndTouchNoOther) {
    const QString plan = GetParam();
    makeWholePlan("甲");
    makeWholePlan(plan);
    click(plan, plan);
    remove();
    EXPECT_FALSE(folder.exists("用户模板/" + plan));
    EXPECT_FALSE(hasTable(plan) || hasTable(plan + "Org"));
    EXPECT_EQ(plans(), QStringList({"甲"}));
    EXPECT_EQ(keys("甲").size(), 3);
}

struct Apostrophes : DeletePlans, testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Names, Apostrophes,
                         testing::Values("甲'乙", "甲''乙", "x' or 'a'='a", "甲' or '"));

TEST_P(Apostrophes, InANameKeepItsRegistrationAndThatOfEveryOtherPlan) {
    const QString plan = GetParam();
    makeWholePlan("甲");
    makeWholePlan("甲'乙'");
    makeWholePlan(plan);
    click(plan, plan);
    remove();
    EXPECT_FALSE(hasTable(plan));
    EXPECT_EQ(plans(), QStringList({"甲", "甲'乙'", plan}));
    EXPECT_EQ(keys("甲").size(), 3);
}

TEST_F(DeletePlans, ANameOfTwoHundredAndFiftyCharactersHasNoTableAndLosesNothingElse) {
    makeWholePlan("甲");
    click("甲", "甲.1");
    workbench.TrvCurrent.setText(workbench.TrvCurrent.Item(1), QString(250, QChar(u'长')));
    EXPECT_TRUE(remove());
    EXPECT_EQ(keys("甲").size(), 3);
    EXPECT_TRUE(folder.exists("用户模板/甲/甲.2.doc"));
}

} // namespace
