#include "outline/RenameNode.h"

#include "platform/jet/ChangeObserver.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::OutlineWorld;

namespace {

struct RenameNodes : testing::Test, OutlineWorld {
    RenameNodes() { makePlan({"T", "T.1", "T.2", "T.2.4d"}); }

    bool rename(const QString& key, const QString& text) {
        openPlan("T", key);
        workbench.clickedKey = key;
        BeforeLabelEdit(workbench, *mnuRename(workbench, messages));
        return AfterLabelEdit(state, workbench, messages, text);
    }
    QStringList names() { return column(*state.gDbUser, "T", u"名称"); }
    QString textOf(const QString& key) const { return workbench.TrvCurrent.Item(key).Text(); }
};

TEST_F(RenameNodes, OnlyTheNameOfTheRowChanges) {
    folder.write("用户模板/T/T.2.4.doc", "text");
    EXPECT_TRUE(rename("T.2.4", "新名"));
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "名T.2", "新名"}));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2", "T.2.4"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3", "4"}));
    EXPECT_EQ(column(*state.gDbUser, "T", u"是否文档"), QStringList({"否", "否", "否", "是"}));
    EXPECT_EQ(folder.read("用户模板/T/T.2.4.doc"), "text");
    EXPECT_EQ(textOf("T.2.4"), "新名");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(RenameNodes, ThePlansOwnCopyIsNotTouched) {
    rename("T.1", "新名");
    EXPECT_EQ(copiedKeys("T", u"名称"), QStringList({"名T", "名T.1", "名T.2", "名T.2.4"}));
}

TEST_F(RenameNodes, AnEmptyTextIsRefusedAndTheOldOneStands) {
    workbench.mnuRename = false;
    EXPECT_FALSE(rename("T.1", ""));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "对不起，名称不能为空");
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::information);
    EXPECT_EQ(messages.shown[0].title, "");
    EXPECT_EQ(names()[1], "名T.1");
    EXPECT_EQ(textOf("T.1"), "名T.1");
    EXPECT_TRUE(workbench.mnuRename);
}

TEST_F(RenameNodes, BlanksAreKeptAndABlankNameIsNoEmptyOne) {
    EXPECT_TRUE(rename("T.1", "  "));
    EXPECT_TRUE(rename("T.2", " 章 "));
    EXPECT_EQ(names(), QStringList({"名T", "  ", " 章 ", "名T.2.4"}));
}

TEST_F(RenameNodes, TheTextOfASiblingIsAccepted) {
    EXPECT_TRUE(rename("T.2", "名T.1"));
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "名T.1", "名T.2.4"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(RenameNodes, ARootKeepsTableFolderAndKeys) {
    EXPECT_TRUE(rename("T", "新工程"));
    EXPECT_EQ(names()[0], "新工程");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2", "T.2.4"}));
    EXPECT_TRUE(folder.exists("用户模板/T/T.mdb"));
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"T"}));
    EXPECT_FALSE(state.gDbUser->TableDefs().Contains("新工程"));
}

TEST_F(RenameNodes, TheRenameCommandIsOpenAfterwards) {
    workbench.mnuRename = false;
    rename("T.1", "新名");
    EXPECT_TRUE(workbench.mnuRename);
}

TEST_F(RenameNodes, TheTextBeforeIsKept) {
    rename("T.1", "新名");
    EXPECT_EQ(workbench.textBeforeEdit, "名T.1");
}

TEST_F(RenameNodes, TheRowIsThatOfTheKeyClickedLast) {
    openPlan("T", "T.1");
    workbench.clickedKey = "T.2";
    EXPECT_TRUE(AfterLabelEdit(state, workbench, messages, "新名"));
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "新名", "名T.2.4"}));
    EXPECT_EQ(textOf("T.1"), "新名");
}

TEST_F(RenameNodes, AKeyWithoutARowIsToldAndTheOldTextStands) {
    openPlan("T", "T.1");
    state.gDbUser->Execute("Delete * from T where Key='T.1'");
    workbench.clickedKey = "T.1";
    EXPECT_FALSE(AfterLabelEdit(state, workbench, messages, "新名"));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_EQ(textOf("T.1"), "名T.1");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2", "T.2.4"}));
}

TEST_F(RenameNodes, ARowThatCannotBeWrittenLeavesTheOldTextInTheTree) {
    class FullStore : public jet::ChangeObserver {
    public:
        void BeforeChange(const QString& /*path*/) override {
            throw RunTimeError(error::storeDiskFull, u"磁盘已满");
        }
        void BeforeCreation(const QString& /*path*/) override {}
        void BeforeCommit(const std::function<QByteArray()>& /*image*/) override {}
        void AfterChange(const QString& /*path*/, const QString& /*table*/) override {}
    } full;
    state.gWs->Observe(&full);
    const bool isTaken = rename("T.1", "新名");
    state.gWs->Observe(nullptr);
    EXPECT_FALSE(isTaken);
    EXPECT_EQ(messages.shown.back().text, "磁盘已满");
    EXPECT_EQ(textOf("T.1"), "名T.1");
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "名T.2", "名T.2.4"}));
}

TEST_F(RenameNodes, WithoutASelectionThereIsNothingToEdit) {
    openPlan("T");
    EXPECT_EQ(mnuRename(workbench, messages), nullptr);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "提示");
    EXPECT_FALSE(AfterLabelEdit(state, workbench, messages, "新名"));
    EXPECT_EQ(messages.shown.size(), 2U);
}

struct NewTexts : RenameNodes, testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Texts, NewTexts,
                         testing::Values("甲'乙", "a' or 'a'='a", "[甲]", "甲.乙", "*?#", "😀",
                                         "مشروع", "a/b", "\"甲\""));

TEST_P(NewTexts, OfAnySortAreTakenAsTheyAre) {
    const QString text = GetParam();
    EXPECT_TRUE(rename("T.1", text));
    EXPECT_EQ(names(), QStringList({"名T", text, "名T.2", "名T.2.4"}));
}

TEST_F(RenameNodes, ATextOfTwoHundredAndFiftyCharactersIsTakenWhole) {
    const QString text(250, QChar(u'长'));
    EXPECT_TRUE(rename("T.1", text));
    EXPECT_EQ(names()[1], text);
}

TEST_F(RenameNodes, ATableThatAStatementCannotNameIsToldAndNoOtherIsTouched) {
    makePlan({"T 乙", "T 乙.1"});
    openPlan("T 乙", "T 乙.1");
    workbench.clickedKey = "T 乙.1";
    EXPECT_FALSE(AfterLabelEdit(state, workbench, messages, "新名"));
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(names(), QStringList({"名T", "名T.1", "名T.2", "名T.2.4"}));
    EXPECT_EQ(column(*state.gDbUser, "T 乙", u"名称"), QStringList({"名T 乙", "名T 乙.1"}));
}

} // namespace
