#include "outline/CurrentPlan.h"
#include "outline/TrvTemplateEvents.h"
#include "outline/TrvTemplate_UsEvents.h"

#include "TemplateWorld.h"
#include "support/Commits.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using desktop::Icon;

namespace {

struct TemplateTree : testing::Test, test::TemplateWorld {
    TemplateTree() {
        makeTemplate({"T", "T.1", "T.1.1d", "T.2d"});
        listTemplates();
    }
    OutlineNode& node(const QString& key) { return workbench.TrvTemplate.Item(key); }
    QString selected() { return workbench.TrvTemplate.SelectedItem()->Key(); }

    TrvTemplateEvents events_{state, workbench, messages, preview};
};

TEST_F(TemplateTree, AClickOnARootKeepsItsTextAndOpensDelete) {
    workbench.TrvTemplate.setText(node("T"), "文字");
    events_.NodeClick(node("T"));
    EXPECT_TRUE(workbench.TbarBid[9]);
    EXPECT_TRUE(workbench.mnuDelete);
    EXPECT_EQ(workbench.selectedTemplate, "文字");
}

TEST_F(TemplateTree, AClickOnAnyOtherNodeClosesDeleteAndEmptiesTheSelectedTemplate) {
    for (const char* key : {"T.1", "T.2"}) {
        events_.NodeClick(node("T"));
        workbench.TbarBid[9] = false;
        events_.NodeClick(node(key));
        EXPECT_TRUE(workbench.TbarBid[9]);
        EXPECT_FALSE(workbench.mnuDelete);
        EXPECT_EQ(workbench.selectedTemplate, "");
        EXPECT_EQ(selected(), key);
    }
}

TEST_F(TemplateTree, AClickBesideANodeEmptiesTheSelectedTemplateAndNothingElse) {
    events_.NodeClick(node("T"));
    events_.Click();
    EXPECT_EQ(workbench.selectedTemplate, "");
    EXPECT_TRUE(workbench.mnuDelete);
    EXPECT_EQ(selected(), "T");
}

TEST_F(TemplateTree, ADoubleClickShowsADocument) {
    selectTemplate("T.2");
    events_.DblClick();
    EXPECT_EQ(preview.shown, QStringList{folder.path(templateFile("T.2"))});
}

TEST_F(TemplateTree, ADoubleClickOnAFolderShowsNothing) {
    folder.write(templateFile("T.1"), "stray");
    selectTemplate("T.1");
    events_.DblClick();
    EXPECT_TRUE(preview.shown.isEmpty());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(TemplateTree, ADoubleClickGoesByTheRowAndNotByTheImage) {
    state.gDbTemplate->Execute(QStringLiteral("Delete * from T where Key='T.2'"));
    selectTemplate("T.2");
    events_.DblClick();
    EXPECT_TRUE(preview.shown.isEmpty());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(TemplateTree, ASecondDoubleClickOnAMissingDocumentFindsNoRowAndSaysNothing) {
    QFile::remove(folder.path(templateFile("T.2")));
    selectTemplate("T.2");
    events_.DblClick();
    EXPECT_EQ(messages.shown.size(), 1U);
    events_.DblClick();
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(TemplateTree, ADoubleClickWithoutASelectionDoesNothing) {
    events_.DblClick();
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(TemplateTree, AMousePressSelectsTheNodeAndKeepsItToBeCopied) {
    EXPECT_FALSE(events_.MouseDown(MouseButton::left, &node("T.1")));
    EXPECT_EQ(selected(), "T.1");
    EXPECT_EQ(workbench.copySourceKey, "T.1");
    EXPECT_FALSE(workbench.mnuDelBrowse);
}

TEST_F(TemplateTree, AMousePressBesideEveryNodeKeepsWhatWasKept) {
    events_.MouseDown(MouseButton::left, &node("T.1"));
    events_.MouseDown(MouseButton::left, nullptr);
    EXPECT_EQ(selected(), "T.1");
    EXPECT_EQ(workbench.copySourceKey, "T.1");
}

TEST_F(TemplateTree, TheRightButtonPopsTheMenuUpAndTheReleaseHidesIt) {
    EXPECT_TRUE(events_.MouseDown(MouseButton::right, &node("T.2")));
    EXPECT_TRUE(workbench.mnuDelBrowse);
    EXPECT_TRUE(workbench.mnuBroTemplate);
    events_.MouseUp();
    EXPECT_FALSE(workbench.mnuDelBrowse);
}

TEST_F(TemplateTree, TheBrowseItemIsHiddenForAFolderAndARoot) {
    EXPECT_TRUE(events_.MouseDown(MouseButton::right, &node("T.1")));
    EXPECT_FALSE(workbench.mnuBroTemplate);
    events_.MouseDown(MouseButton::right, &node("T.2"));
    EXPECT_TRUE(workbench.mnuBroTemplate);
    events_.MouseDown(MouseButton::right, &node("T"));
    EXPECT_FALSE(workbench.mnuBroTemplate);
}

// The look-up is by prefix and takes the first row that it finds.
TEST_F(TemplateTree, TheBrowseItemGoesByTheFirstRowWhoseKeyMerelyBeginsAlike) {
    makeTemplate({"U", "U.10d", "U.1"});
    listTemplates();
    events_.MouseDown(MouseButton::right, &node("U.1"));
    EXPECT_TRUE(workbench.mnuBroTemplate);
}

TEST_F(TemplateTree, TheBrowseItemIsHiddenWhenTheRowHasGone) {
    state.gDbTemplate->Execute(QStringLiteral("Delete * from T where Key='T.2'"));
    EXPECT_TRUE(events_.MouseDown(MouseButton::right, &node("T.2")));
    EXPECT_FALSE(workbench.mnuBroTemplate);
}

TEST_F(TemplateTree, TheRightButtonBesideEveryNodeIsForTheNodeKeptBefore) {
    events_.MouseDown(MouseButton::left, &node("T.2"));
    selectTemplate("T.1");
    workbench.mnuBroTemplate = false;
    EXPECT_TRUE(events_.MouseDown(MouseButton::right, nullptr));
    EXPECT_EQ(selected(), "T.2");
    EXPECT_TRUE(workbench.mnuBroTemplate);
}

TEST_F(TemplateTree, TheRightButtonPopsNothingUpForANodeOfAnotherTree) {
    workbench.copySourceKey = "P.1";
    EXPECT_FALSE(events_.MouseDown(MouseButton::right, nullptr));
    workbench.copySourceKey.clear();
    EXPECT_FALSE(events_.MouseDown(MouseButton::right, nullptr));
}

TEST_F(TemplateTree, AFailureOfTheLookUpIsToldAndNothingIsShownOrPopsUp) {
    state.gDbTemplate->TableDefs().Delete("T");
    selectTemplate("T.2");
    events_.DblClick();
    EXPECT_FALSE(events_.MouseDown(MouseButton::right, &node("T.2")));
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(messages.shown[1].icon, Icon::exclamation);
    EXPECT_TRUE(preview.shown.isEmpty());
}

struct PlansTree : testing::Test, test::TemplateWorld {
    PlansTree() {
        makePlan("P", rowsOf({"P", "P.1", "P.2d"}));
        makePlan("Q", rowsOf({"Q", "Q.1d"}));
        folder.write("用户模板/P/P.2.doc", "document");
        updateTreeTemplate(state, *state.gDbUser, workbench.TrvTemplate_Us, false, messages,
                           splash);
    }
    OutlineNode& node(const QString& key) { return workbench.TrvTemplate_Us.Item(key); }
    void doubleClick(const QString& key) {
        workbench.TrvTemplate_Us.Select(&node(key));
        events_.DblClick();
    }
    void click(const QString& key) { clickUserPlan(state, workbench, splash, node(key)); }

    TrvTemplate_UsEvents events_{state, workbench, messages, preview};
};

TEST_F(PlansTree, ADoubleClickShowsADocument) {
    doubleClick("P.2");
    EXPECT_EQ(preview.shown, QStringList{folder.path("用户模板/P/P.2.doc")});
}

TEST_F(PlansTree, ADoubleClickOnAnythingElseDoesNothing) {
    folder.write("用户模板/P/P.1.doc", "stray");
    folder.write("用户模板/P/P.doc", "stray");
    doubleClick("P.1");
    doubleClick("P");
    workbench.TrvTemplate_Us.Select(nullptr);
    events_.DblClick();
    EXPECT_TRUE(preview.shown.isEmpty());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(PlansTree, AMissingFileIsToldAndNothingIsCleanedUp) {
    QFile::remove(folder.path("用户模板/P/P.2.doc"));
    doubleClick("P.2");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text,
              "文件没找到。可能是被删除或是文件路径不正确！\n文档：名P.2（P.2）");
    EXPECT_EQ(messages.shown[0].icon, Icon::exclamation);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(keys("P"), QStringList({"P", "P.1", "P.2"}));
    EXPECT_NE(workbench.TrvTemplate_Us.find("P.2"), nullptr);
}

TEST_F(PlansTree, EveryErrorOfThePreviewHasTheSameTextAndItsCauseBehind) {
    preview.failure = RunTimeError(31024, u"无法显示");
    doubleClick("P.2");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "打开文档时出现意外的错误！\n无法显示\n文档：名P.2（P.2）");
}

TEST_F(PlansTree, AnErrorOfThePreviewThatTurnsOutLaterHasThatTextToo) {
    doubleClick("P.2");
    ASSERT_TRUE(preview.lateFailure);
    preview.lateFailure(RunTimeError(31024, u"无法显示"));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "打开文档时出现意外的错误！\n无法显示\n文档：名P.2（P.2）");
}

TEST_F(PlansTree, AMousePressSelectsTheNodeAndKeepsItToBeCopied) {
    events_.MouseDown(&node("P.1"));
    EXPECT_EQ(workbench.TrvTemplate_Us.SelectedItem()->Key(), "P.1");
    EXPECT_EQ(workbench.copySourceKey, "P.1");
    EXPECT_EQ(workbench.copySourceText, node("P.1").Text());
    events_.MouseDown(nullptr);
    EXPECT_EQ(workbench.copySourceKey, "P.1");
}

TEST_F(PlansTree, AClickOnARootSavesTheOpenPlanAndShowsTheClickedOne) {
    openPlan("P");
    add(*state.gDbUser->OpenRecordset(QStringLiteral("Select * from P")), {"P.3", "新"});
    click("Q");
    EXPECT_EQ(copiedKeys("P").back(), "P.3");
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"Q", "Q.1"}));
    EXPECT_EQ(registered(*state.gDbUser, "当前表"), QStringList{"Q"});
}

TEST_F(PlansTree, AClickOnARootSavesAPlanThatHasItsRootAlone) {
    makePlan("R", rowsOf({"R"}));
    openPlan("R");
    add(*state.gDbUser->OpenRecordset(QStringLiteral("Select * from R")), {"R.1", "新"});
    click("Q");
    EXPECT_EQ(copiedKeys("R"), QStringList({"R", "R.1"}));
}

TEST_F(PlansTree, AClickOnARootShowsItThoughTheFolderOfTheOpenPlanIsGone) {
    openPlan("P");
    QDir(folder.path("用户模板/P")).removeRecursively();
    click("Q");
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"Q", "Q.1"}));
    EXPECT_FALSE(folder.exists("用户模板/P"));
}

TEST_F(PlansTree, AClickOnANodeOfTheCurrentPlanWritesNothing) {
    click("P");
    test::Commits commits(state.gDbUser->Name());
    click("P.1");
    EXPECT_EQ(commits.count(), 0);
    click("Q.1");
    EXPECT_EQ(commits.count(), 1);
}

TEST_F(PlansTree, AClickOnAnyOtherNodeMakesItsPlanCurrentAndLeavesTheOpenOneOnTheScreen) {
    openPlan("P");
    add(*state.gDbUser->OpenRecordset(QStringLiteral("Select * from P")), {"P.3", "新"});
    click("Q.1");
    EXPECT_EQ(shown(workbench.TrvCurrent).front(), "P");
    EXPECT_EQ(registered(*state.gDbUser, "当前表"), QStringList{"Q"});
    EXPECT_EQ(copiedKeys("P").back(), "P.2");
}

TEST_F(PlansTree, AClickChangesSomethingOnARootAndWhereItsPlanIsNotTheCurrentOne) {
    click("P");
    EXPECT_TRUE(opensPlan(state, node("P"))) << "it is saved and read anew";
    EXPECT_FALSE(opensPlan(state, node("P.2")));
    EXPECT_TRUE(opensPlan(state, node("Q.1")));
}

TEST_F(PlansTree, AClickExpandsTheNodeAndOpensTheCommandsOfAPlan) {
    workbench.cmdEdit = false;
    workbench.mnuEdit = false;
    workbench.TbarBid[9] = false;
    workbench.TbarBid[12] = false;
    click("P.1");
    EXPECT_EQ(workbench.TrvTemplate_Us.SelectedItem(), &node("P.1"));
    EXPECT_TRUE(node("P.1").Expanded());
    EXPECT_TRUE(workbench.cmdEdit);
    EXPECT_TRUE(workbench.mnuEdit);
    EXPECT_TRUE(workbench.TbarBid[9]);
    EXPECT_TRUE(workbench.TbarBid[12]);
}

TEST_F(PlansTree, AClickWritesIntoTheOneRowOfTheCurrentTable) {
    click("P");
    click("Q");
    EXPECT_EQ(registered(*state.gDbUser, "当前表"), QStringList{"Q"});
}

} // namespace
