#include "outline/BrowseDocument.h"

#include "outline/OutlinePaths.h"
#include "support/FakePreview.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::OutlineWorld;

namespace {

struct BrowseDocuments : testing::Test, OutlineWorld {
    test::FakePreview preview;

    BrowseDocuments() {
        makePlan("T", {{"T", "T"},
                       {"T.1", "夹"},
                       {"T.2", "档", "是"},
                       {"T.2.3", "下", "是"},
                       {"T.20", "别", "是"}});
    }

    void makeFile(const QString& key) { folder.write("用户模板/T/" + key + ".doc", "text"); }
    QString file(const QString& key) const { return documentPath(state, "T", key); }
    void doubleClick(const QString& key) {
        openPlan("T", key);
        browseOrDropDocument(state, workbench, services(), preview);
    }
    void browse(const QString& key) {
        openPlan("T", key);
        mnuBrowseDoc(state, workbench, messages, preview);
    }
    void expectOnly(const QString& text, desktop::Icon icon, const QString& title) {
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].text, text);
        EXPECT_EQ(messages.shown[0].icon, icon);
        EXPECT_EQ(messages.shown[0].title, title);
    }
};

// A double click

TEST_F(BrowseDocuments, ADoubleClickShowsADocument) {
    makeFile("T.2");
    doubleClick("T.2");
    EXPECT_EQ(preview.shown, QStringList({file("T.2")}));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(keys("T").size(), 5);
}

TEST_F(BrowseDocuments, ADoubleClickOnAFolderOrARootDoesNothing) {
    doubleClick("T.1");
    doubleClick("T");
    EXPECT_TRUE(preview.shown.isEmpty());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(keys("T").size(), 5);
}

TEST_F(BrowseDocuments, ADocumentWhoseFileHasGoneIsToldAndDropped) {
    doubleClick("T.2");
    expectOnly("找不到 [ " + file("T.2") +
                   " ] \n此文件可能是被删除了,或是文件路径名不正确！\n文档：档（T.2）",
               desktop::Icon::exclamation, "提示");
    EXPECT_TRUE(preview.shown.isEmpty());
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.1", "T.20"}));
}

TEST_F(BrowseDocuments, TheDroppedRowIsMatchedExactlyAndItsChildrenStayInTheTable) {
    doubleClick("T.2");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2.3", "T.20"}));
    EXPECT_EQ(copiedKeys("T"), QStringList({"T", "T.1", "T.2", "T.2.3", "T.20"}));
}

TEST_F(BrowseDocuments, TheUsersPlansAreListedAnewAfterADrop) {
    doubleClick("T.20");
    EXPECT_EQ(shown(workbench.TrvTemplate_Us), QStringList({"T", "T.1", "T.2", "T.2.3"}));
}

TEST_F(BrowseDocuments, AfterADropTheNeighbourIsSelected) {
    doubleClick("T.2");
    EXPECT_EQ(selectedKey(), "T.20");
}

TEST_F(BrowseDocuments, AKeyThatLeadsOutOfThePlansFolderShowsNothingAndDropsNothing) {
    folder.write("用户模板/外.doc", "outside");
    for (const char* key : {"T./../../外", "T.\\..\\外", "T./etc/外", "T.C:外", "T.NUL"}) {
        messages.shown.clear();
        OutlineWorld::add(*state.gDbUser->OpenRecordset("Select * from T"), {key, "外", "是"});
        openPlan("T");
        workbench.TrvCurrent.Select(&workbench.TrvCurrent.AddChild(
            "T", QString(key) + "x", "外", image::document, image::documentSelected));
        browseOrDropDocument(state, workbench, services(), preview);
        ASSERT_EQ(messages.shown.size(), 1U) << key;
        EXPECT_TRUE(messages.shown[0].text.contains("不是文档的编号")) << key;
    }
    EXPECT_TRUE(preview.shown.isEmpty());
    EXPECT_EQ(keys("T").size(), 10);
    EXPECT_EQ(folder.read("用户模板/外.doc"), "outside");
}

TEST_F(BrowseDocuments, TheTableOfADropStandsInBrackets) {
    makePlan("甲 乙", {{"甲 乙", "甲 乙"}, {"甲 乙.1", "档", "是"}});
    openPlan("甲 乙", "甲 乙.1");
    browseOrDropDocument(state, workbench, services(), preview);
    EXPECT_EQ(keys("甲 乙"), QStringList({"甲 乙"}));
}

TEST_F(BrowseDocuments, ATextWithBracketsNamesNoTable) {
    makePlan("U", {{"U", "U"}, {"T.2", "同键", "是"}});
    openPlan("T", "T.2");
    workbench.TrvCurrent.setText(workbench.TrvCurrent.Item("T"), "U] [T");
    browseOrDropDocument(state, workbench, services(), preview);
    EXPECT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(keys("U"), QStringList({"U", "T.2"}));
    EXPECT_TRUE(workbench.TrvCurrent.find("T.2"));
}

TEST_F(BrowseDocuments, TheFirstNodesTextIsThePlan) {
    makeFile("T.2");
    makePlan({"U", "U.1"});
    openPlan("T", "T.2");
    workbench.TrvCurrent.setText(workbench.TrvCurrent.Item("T"), "U");
    browseOrDropDocument(state, workbench, services(), preview);
    expectOnly("找不到 [ " + documentPath(state, "U", "T.2") +
                   " ] \n此文件可能是被删除了,或是文件路径名不正确！\n文档：档（T.2）",
               desktop::Icon::exclamation, "提示");
    EXPECT_EQ(keys("T").size(), 5);
    EXPECT_EQ(keys("U"), QStringList({"U", "U.1"}));
    EXPECT_FALSE(workbench.TrvCurrent.find("T.2"));
}

TEST_F(BrowseDocuments, AFailedDropIsToldAndLeavesTheNode) {
    openPlan("T", "T.2");
    workbench.TrvCurrent.setText(workbench.TrvCurrent.Item("T"), "没有");
    browseOrDropDocument(state, workbench, services(), preview);
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[1].title, "提示");
    EXPECT_EQ(messages.shown[1].icon, desktop::Icon::none);
    EXPECT_TRUE(workbench.TrvCurrent.find("T.2"));
}

TEST_F(BrowseDocuments, ADoubleClickWithoutASelectionIsSilent) {
    doubleClick({});
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(BrowseDocuments, AnUnshowableDocumentIsToldInItsOwnSentenceAndItsCauseBehind) {
    makeFile("T.2");
    preview.failure.emplace(31024, u"说明");
    doubleClick("T.2");
    expectOnly("浏览文档时发生错误。可能是你的系统不稳定所造成，请重新启动计算机！\n说明\n"
               "文档：档（T.2）",
               desktop::Icon::exclamation, "错误提示");
    EXPECT_EQ(keys("T").size(), 5);
}

struct IgnoredNumbers : BrowseDocuments, testing::WithParamInterface<long> {};
INSTANTIATE_TEST_SUITE_P(Numbers, IgnoredNumbers, testing::Values(91, 0));

TEST_P(IgnoredNumbers, OfTheDoubleClickAreSilent) {
    makeFile("T.2");
    preview.failure.emplace(GetParam(), u"说明");
    doubleClick("T.2");
    EXPECT_TRUE(messages.shown.empty());
}

struct OtherNumbers : BrowseDocuments, testing::WithParamInterface<long> {};
INSTANTIATE_TEST_SUITE_P(Numbers, OtherNumbers, testing::Values(-1, 1, 70, 90, 92, 31023, 31025));

TEST_P(OtherNumbers, OfTheDoubleClickAreToldByTheirDescription) {
    makeFile("T.2");
    preview.failure.emplace(GetParam(), u"说明");
    doubleClick("T.2");
    expectOnly("说明\n文档：档（T.2）", desktop::Icon::none, "提示");
}

TEST_F(BrowseDocuments, WhatTurnsOutBehindADoubleClickIsToldAsWhatTurnsOutAtOnce) {
    makeFile("T.2");
    doubleClick("T.2");
    ASSERT_TRUE(preview.lateFailure);
    workbench.TrvCurrent.Select(nullptr);
    preview.lateFailure(RunTimeError(31024, u"说明"));
    expectOnly("浏览文档时发生错误。可能是你的系统不稳定所造成，请重新启动计算机！\n说明\n"
               "文档：档（T.2）",
               desktop::Icon::exclamation, "错误提示");
    messages.shown.clear();
    preview.lateFailure(RunTimeError(70, u"说明"));
    expectOnly("说明\n文档：档（T.2）", desktop::Icon::none, "提示");
}

TEST_F(BrowseDocuments, WhatTurnsOutWhileACommandRunsRaisesNoBoxInIt) {
    makeFile("T.2");
    doubleClick("T.2");
    state.Command.run(
        [&] { EXPECT_FALSE(preview.lateFailure(RunTimeError(31024, u"说明"))) << "not yet"; });
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(preview.lateFailure(RunTimeError(31024, u"说明"))) << "behind it";
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(BrowseDocuments, WhatTurnsOutBehindTheCommandIsToldInItsSentence) {
    makeFile("T.2");
    browse("T.2");
    ASSERT_TRUE(preview.lateFailure);
    preview.lateFailure(RunTimeError(31024, u"说明"));
    expectOnly("打开文档时出现意外的错误！\n说明\n文档：档（T.2）", desktop::Icon::none, "");
}

// The command

TEST_F(BrowseDocuments, TheCommandShowsADocument) {
    makeFile("T.2.3");
    browse("T.2.3");
    EXPECT_EQ(preview.shown, QStringList({file("T.2.3")}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(BrowseDocuments, TheCommandDoesNothingForAFolder) {
    browse("T.1");
    EXPECT_TRUE(preview.shown.isEmpty());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(BrowseDocuments, TheCommandGoesByTheRowAndNotByTheTree) {
    state.gDbUser->Execute("Delete * from T where Key='T.1'");
    OutlineWorld::add(*state.gDbUser->OpenRecordset("Select * from T"), {"T.1", "档", "是"});
    openPlan("T");
    auto& stale = workbench.TrvCurrent;
    stale.Clear();
    stale.Add("T", "T", image::root, image::rootSelected);
    stale.Select(&stale.AddChild("T", "T.1", "夹", image::folder, image::folderSelected));
    mnuBrowseDoc(state, workbench, messages, preview);
    EXPECT_EQ(preview.shown, QStringList({file("T.1")}));
}

TEST_F(BrowseDocuments, AnyFailureOfTheCommandIsToldInOneSentenceAndItsCauseBehind) {
    preview.failure.emplace(31024, u"说明");
    browse("T.2");
    expectOnly("打开文档时出现意外的错误！\n说明\n文档：档（T.2）", desktop::Icon::none, "");
    messages.shown.clear();
    browse({});
    expectOnly("打开文档时出现意外的错误！\n没有选中节点，请先选中一个节点。", desktop::Icon::none,
               "");
    messages.shown.clear();
    openPlan("T", "T.2");
    state.gDbUser->Execute("Delete * from T where Key='T.2'");
    mnuBrowseDoc(state, workbench, messages, preview);
    expectOnly("打开文档时出现意外的错误！\n编号为“T.2”的节点已不在“T”中，请重新打开它后再试。\n"
               "文档：档（T.2）",
               desktop::Icon::none, "");
}

TEST_F(BrowseDocuments, TheCommandNeverDropsARow) {
    preview.failure.emplace(53, u"文件未找到");
    browse("T.2");
    EXPECT_EQ(keys("T").size(), 5);
    EXPECT_TRUE(workbench.TrvCurrent.find("T.2"));
}

} // namespace
