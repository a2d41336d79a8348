#include "outline/TreeLoading.h"

#include "outline/LibraryTree.h"
#include "support/Errors.h"
#include "support/OutlineWorld.h"
#include "support/PlainSqlite.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::OutlineWorld;

namespace {

struct TreeLoading : testing::Test, OutlineWorld {
    OutlineTree tree{"TrvEdit"};

    std::unique_ptr<jet::Recordset> rows(const QString& table) {
        return state.gDbUser->OpenRecordset("Select * from " + table + " order by ID asc");
    }
    void fillFrom(const QString& table) { FillOutlineTree(*rows(table), tree); }
};

TEST_F(TreeLoading, AnEmptyTableGivesAnEmptyTreeAndNoMessage) {
    makeTable(*state.gDbUser, "T", {});
    fillFrom("T");
    EXPECT_EQ(tree.Count(), 0);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(TreeLoading, TheFirstRowIsARootWhateverItsKind) {
    makeTable(*state.gDbUser, "T", {{"T", "方案", "是"}});
    fillFrom("T");
    ASSERT_EQ(tree.Count(), 1);
    EXPECT_EQ(tree.Item(1).Image(), 1);
    EXPECT_EQ(tree.Item(1).SelectedImage(), 2);
    EXPECT_EQ(tree.Item(1).Text(), "方案");
}

TEST_F(TreeLoading, FoldersAndDocumentsBearTheirImages) {
    makePlan({"T", "T.1", "T.2d"});
    fillFrom("T");
    EXPECT_EQ(tree.Item("T.1").Image(), 4);
    EXPECT_EQ(tree.Item("T.1").SelectedImage(), 3);
    EXPECT_EQ(tree.Item("T.2").Image(), 5);
    EXPECT_EQ(tree.Item("T.2").SelectedImage(), 6);
}

TEST_F(TreeLoading, OnlyTheExactYesMeansADocument) {
    makePlan("T", {{"T", ""}, {"T.1", "", "是的"}, {"T.2", "", ""}, {"T.3", "", " 是"}});
    fillFrom("T");
    for (const char* key : {"T.1", "T.2", "T.3"}) {
        EXPECT_EQ(tree.Item(key).Image(), 4) << key;
    }
}

TEST_F(TreeLoading, ARowThatDoesNotSayItsKindIsAFolder) {
    makePlan({"T", "T.1", "T.2"});
    const auto table = rows("T");
    table->MoveNext();
    table->Edit();
    table->Set(u"是否文档", jet::Value());
    table->Update();
    fillFrom("T");
    EXPECT_EQ(shown(tree), QStringList({"T", "T.1", "T.2"}));
    EXPECT_EQ(tree.Item("T.1").Image(), 4);
}

TEST_F(TreeLoading, NumbersInKeysSortNothing) {
    makePlan({"T", "T.5", "T.2"});
    fillFrom("T");
    EXPECT_EQ(shown(tree), QStringList({"T", "T.5", "T.2"}));
}

TEST_F(TreeLoading, ChildrenFarBehindTheirParentAttachToIt) {
    makePlan({"T", "T.1", "T.2", "T.1.9"});
    fillFrom("T");
    EXPECT_EQ(shown(tree), QStringList({"T", "T.1", "T.1.9", "T.2"}));
}

TEST_F(TreeLoading, ARowWithoutItsParentEndsTheFillSilently) {
    makePlan({"T", "T.1", "T.7.1", "T.2"});
    fillFrom("T");
    EXPECT_EQ(shown(tree), QStringList({"T", "T.1"}));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.7.1", "T.2"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(TreeLoading, AKeyThatIsInTheTreeAlreadyEndsTheFillSilently) {
    makePlan({"T", "T.1", "T.2"});
    fillFrom("T");
    fillFrom("T");
    EXPECT_EQ(tree.Count(), 3);
}

TEST_F(TreeLoading, TheTreeIsNotClearedAndNothingIsSelected) {
    makePlan({"T", "T.1"});
    makePlan({"U", "U.1"});
    fillFrom("T");
    fillFrom("U");
    EXPECT_EQ(shown(tree), QStringList({"T", "T.1", "U", "U.1"}));
    EXPECT_EQ(tree.SelectedItem(), nullptr);
}

TEST_F(TreeLoading, AStoreThatIsBusyIsNoEmptyOutline) {
    makePlan("T", {{"T", "T"}, {"T.1", "一"}});
    test::PlainSqlite theirs(state.gDbUser->Name());
    EXPECT_EQ(readOutline(*state.gDbUser, "T").size(), 2U);
    theirs.rows("BEGIN EXCLUSIVE");
    EXPECT_EQ(test::errorNumberOf([&] { readOutline(*state.gDbUser, "T"); }), error::storeBusy);
    theirs.rows("ROLLBACK");
    EXPECT_EQ(readOutline(*state.gDbUser, "T").size(), 2U);
    EXPECT_TRUE(readOutline(*state.gDbUser, "没有").empty());
}

TEST_F(TreeLoading, UpdateTreeSelectsAndExpandsTheWantedNode) {
    makePlan({"T", "T.1", "T.2"});
    splash.up = true;
    updateTree(*rows("T"), tree, "T.1", splash);
    ASSERT_NE(tree.SelectedItem(), nullptr);
    EXPECT_EQ(tree.SelectedItem()->Key(), "T.1");
    EXPECT_TRUE(tree.Item("T.1").Expanded());
    EXPECT_FALSE(tree.Item("T.2").Expanded());
    EXPECT_FALSE(splash.up);
}

TEST_F(TreeLoading, UpdateTreeDoesNotCompareTheRoot) {
    makePlan({"T", "T.1"});
    updateTree(*rows("T"), tree, "T", splash);
    EXPECT_EQ(tree.SelectedItem(), nullptr);
}

TEST_F(TreeLoading, UpdateTreeTakesTheSplashDownAlsoWhenTheFillFails) {
    makePlan({"T", "T.7.1"});
    splash.up = true;
    updateTree(*rows("T"), tree, {}, splash);
    EXPECT_FALSE(splash.up);
}

TEST_F(TreeLoading, UpdateTreeViewClearsAndFillsFromTheKeysTable) {
    makePlan({"T", "T.1"});
    makePlan({"U", "U.1"});
    fillFrom("T");
    updateTreeView(state, "U.1", tree, splash);
    EXPECT_EQ(shown(tree), QStringList({"U", "U.1"}));
}

TEST_F(TreeLoading, ATableNameWithAPointCannotWork) {
    EXPECT_EQ(test::errorNumberOf([&] { updateTreeView(state, "甲.乙", tree, splash); }),
              error::tableNotFound);
}

TEST_F(TreeLoading, NineThousandRowsAllBecomeNodes) {
    std::vector<test::OutlineRowText> many{{"T", "T"}};
    for (int i = 1; i < 9000; ++i) {
        many.push_back({"T." + QString::number(i), "名"});
    }
    makeTable(*state.gDbUser, "T", many);
    fillFrom("T");
    EXPECT_EQ(tree.Count(), 9000);
}

struct LibraryTrees : testing::Test, OutlineWorld {
    OutlineTree& user = workbench.TrvTemplate_Us;
    OutlineTree& templates = workbench.TrvTemplate;

    void refreshUser(bool keepMissing = false) {
        updateTreeTemplate(state, *state.gDbUser, user, keepMissing, messages, splash);
    }
    void refreshTemplates() {
        updateTreeTemplate(state, *state.gDbTemplate, templates, false, messages, splash);
    }
    void makeTemplate(const QString& name) {
        makeTable(*state.gDbTemplate, name, {{name, name}, {name + ".1", "章"}});
        registerName(*state.gDbTemplate, name);
        folder.write("Sys/标书模板/" + name + "/" + name + ".mdb", "x");
    }
};

TEST_F(LibraryTrees, EveryRegisteredOutlineIsATreeOfItsOwn) {
    makePlan({"T", "T.1"});
    makePlan({"U"});
    user.Add("old", "old", 1, 2);
    splash.up = true;
    refreshUser();
    EXPECT_EQ(shown(user), QStringList({"T", "T.1", "U"}));
    EXPECT_FALSE(splash.up);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(LibraryTrees, APlanWhoseTableIsGoneIsForgottenWithoutAWord) {
    makePlan({"T"});
    makePlan({"U"});
    state.gDbUser->TableDefs().Delete("T");
    refreshUser();
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"U"}));
    EXPECT_EQ(shown(user), QStringList({"U"}));
    EXPECT_TRUE(folder.exists("用户模板/T/T.mdb"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(LibraryTrees, APlanWhoseFolderIsGoneIsForgottenWithItsTables) {
    makePlan({"T"});
    makeTable(*state.gDbUser, "TOrg", {});
    QDir(folder.path("用户模板/T")).removeRecursively();
    refreshUser();
    EXPECT_TRUE(registered(*state.gDbUser).isEmpty());
    EXPECT_FALSE(state.gDbUser->TableDefs().Contains("T"));
    EXPECT_FALSE(state.gDbUser->TableDefs().Contains("TOrg"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(LibraryTrees, WithKeepMissingAPlanWithoutItsFolderIsLeftAlone) {
    makePlan({"T"});
    QDir(folder.path("用户模板/T")).removeRecursively();
    refreshUser(true);
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"T"}));
    EXPECT_TRUE(state.gDbUser->TableDefs().Contains("T"));
    EXPECT_TRUE(shown(user).isEmpty());
}

TEST_F(LibraryTrees, ATemplateWhoseFolderIsGoneIsForgottenWithoutAWord) {
    makeTemplate("甲");
    makeTemplate("乙");
    QDir(folder.path("Sys/标书模板/甲")).removeRecursively();
    refreshTemplates();
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList({"乙"}));
    EXPECT_FALSE(state.gDbTemplate->TableDefs().Contains("甲"));
    EXPECT_EQ(shown(templates), QStringList({"乙", "乙.1"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(LibraryTrees, AnOutlineNamedLikeAnInformationTableIsNotForgottenWithAnother) {
    makeTemplate("甲");
    makeTemplate("甲Org");
    QDir(folder.path("Sys/标书模板/甲")).removeRecursively();
    refreshTemplates();
    EXPECT_EQ(registered(*state.gDbTemplate), QStringList({"甲Org"}));
    EXPECT_EQ(shown(templates), QStringList({"甲Org", "甲Org.1"}));
    EXPECT_TRUE(folder.exists("Sys/标书模板/甲Org/甲Org.mdb"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(LibraryTrees, ATemplateWhoseTableIsGoneLosesItsDatabaseFileToo) {
    makeTemplate("甲");
    state.gDbTemplate->TableDefs().Delete("甲");
    refreshTemplates();
    EXPECT_TRUE(registered(*state.gDbTemplate).isEmpty());
    EXPECT_FALSE(folder.exists("Sys/标书模板/甲/甲.mdb"));
    EXPECT_TRUE(folder.exists("Sys/标书模板/甲"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(LibraryTrees, ATemplateKeepsItsDatabaseWhenThePlanOfItsNameHasLostItsTable) {
    makePlan({"甲"});
    makeTemplate("甲");
    state.gDbUser->TableDefs().Delete("甲");
    refreshUser();
    EXPECT_TRUE(registered(*state.gDbUser).isEmpty());
    EXPECT_TRUE(folder.exists("Sys/标书模板/甲/甲.mdb"));
}

TEST_F(LibraryTrees, WhatHasGoneOfAnOutlineAlreadyIsNoErrorWhenItIsForgotten) {
    makeTemplate("甲");
    state.gDbTemplate->TableDefs().Delete("甲");
    QFile::remove(folder.path("Sys/标书模板/甲/甲.mdb"));
    refreshTemplates();
    EXPECT_TRUE(registered(*state.gDbTemplate).isEmpty());
    makePlan({"T"});
    state.gDbUser->TableDefs().Delete("T");
    QDir(folder.path("用户模板/T")).removeRecursively();
    refreshUser();
    EXPECT_TRUE(registered(*state.gDbUser).isEmpty());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(LibraryTrees, ANameWithABlankIsForgottenAtTheRefresh) {
    makePlan({"一 二"});
    refreshUser();
    EXPECT_TRUE(registered(*state.gDbUser).isEmpty());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(LibraryTrees, ANameThatNeedsBracketsLeavesOneMessageAndItsRow) {
    makePlan({"甲-乙"});
    makePlan({"甲+乙"});
    makePlan({"U"});
    refreshUser();
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"甲-乙", "甲+乙", "U"}));
    EXPECT_EQ(shown(user), QStringList({"U"}));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "更新标书模板库时发生错误!");
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_EQ(messages.shown[0].title, "");
}

TEST_F(LibraryTrees, AMissingRegistryTableIsToldOnce) {
    state.gDbUser->TableDefs().Delete("遍历表");
    refreshUser();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "更新标书模板库时发生错误!");
}

} // namespace
