#include "outline/dlgAddDoc.h"

#include "support/Commits.h"
#include "support/Errors.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::OutlineWorld;

namespace {

struct AddFolder : testing::Test, OutlineWorld {
    QString key;

    Added add(const QString& selectedKey, AddMode mode, const QString& name = "新文件夹") {
        openPlan("T", selectedKey);
        dlgAddDoc dialog(state, workbench, services(), mode);
        const Added outcome = dialog.OK(name);
        key = dialog.newKey();
        return outcome;
    }
    void expectOnly(const QString& text, desktop::Icon icon, const QString& title) {
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].text, text);
        EXPECT_EQ(messages.shown[0].icon, icon);
        EXPECT_EQ(messages.shown[0].title, title);
    }
};

TEST_F(AddFolder, WorkedExampleBeside) {
    makePlan({"T", "T.1", "T.2", "T.3"});
    EXPECT_EQ(add("T.1", AddMode::beside), Added::added);
    EXPECT_EQ(key, "T.4");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.4", "T.2", "T.3"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "5", "6", "7"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.1", "T.4", "T.2", "T.3"}));
    EXPECT_EQ(selectedKey(), "T.4");
    EXPECT_EQ(workbench.TrvCurrent.Item("T.4").Image(), 4);
}

TEST_F(AddFolder, WorkedExampleBelow) {
    makePlan({"T", "T.1", "T.2", "T.3"});
    EXPECT_EQ(add("T.1", AddMode::below), Added::added);
    EXPECT_EQ(key, "T.1.1");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2", "T.3", "T.1.1"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3", "4", "5"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.1", "T.1.1", "T.2", "T.3"}));
}

// A process killed in between would leave the rows behind the place out of the table.
TEST_F(AddFolder, TheRowsThatMakeRoomLastTogetherWithTheNewOne) {
    makePlan({"T", "T.1", "T.2", "T.3"});
    test::Commits commits(state.gDbUser->Name());
    EXPECT_EQ(add("T.1", AddMode::beside), Added::added);
    EXPECT_EQ(commits.count(), 1);
    EXPECT_FALSE(state.gWs->InTransaction());
}

TEST_F(AddFolder, APlanNameThatNeedsBracketsIsToldAndNotTakenForAnotherTable) {
    makePlan({"T", "T.1"});
    makePlan({"T 乙", "T 乙.1", "T 乙.2"});
    for (const AddMode mode : {AddMode::below, AddMode::beside}) {
        messages.shown.clear();
        openPlan("T 乙", "T 乙.1");
        dlgAddDoc dialog(state, workbench, services(), mode);
        EXPECT_EQ(dialog.OK("章"), Added::failed);
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_TRUE(messages.shown[0].text.contains("T 乙"))
            << messages.shown[0].text.toStdString();
        EXPECT_EQ(keys("T"), QStringList({"T", "T.1"}));
        EXPECT_EQ(keys("T 乙"), QStringList({"T 乙", "T 乙.1", "T 乙.2"}));
    }
}

TEST_F(AddFolder, ATransactionThatWasLeftOpenStaysOpen) {
    makePlan({"T", "T.1", "T.2"});
    state.gWs->BeginTrans();
    EXPECT_EQ(add("T.1", AddMode::beside), Added::added);
    EXPECT_TRUE(state.gWs->InTransaction());
}

TEST_F(AddFolder, AfterDeletingTheLastNodeTheSameNumberComesAgain) {
    makePlan({"T", "T.1", "T.2"});
    add("T", AddMode::below);
    EXPECT_EQ(key, "T.3");
    state.gDbUser->Execute("Delete * from T where Key='T.3'");
    add("T", AddMode::below, "又一个");
    EXPECT_EQ(key, "T.3");
}

TEST_F(AddFolder, MovedRowsKeepKeyNameAndKind) {
    makePlan("T", {{"T", "T"}, {"T.1", "一"}, {"T.2", "二", "是"}, {"T.2.5", "三", "别的"}});
    add("T.1", AddMode::beside);
    EXPECT_EQ(column(*state.gDbUser, "T", u"名称"),
              QStringList({"T", "一", "新文件夹", "二", "三"}));
    EXPECT_EQ(column(*state.gDbUser, "T", u"是否文档"),
              QStringList({"否", "否", "否", "是", "别的"}));
    EXPECT_EQ(keys("T").last(), "T.2.5");
}

TEST_F(AddFolder, ThePlansOwnCopyIsLevelledWithItsIds) {
    makePlan({"T", "T.1", "T.2", "T.3"});
    add("T.1", AddMode::beside);
    EXPECT_EQ(copiedKeys("T"), keys("T"));
    EXPECT_EQ(copiedKeys("T", u"ID"), ids("T"));
    EXPECT_EQ(state.gDbPlan, nullptr);
}

TEST_F(AddFolder, BesideTheLastRowNothingMoves) {
    makePlan({"T", "T.1", "T.2"});
    EXPECT_EQ(add("T.2", AddMode::beside), Added::added);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2", "T.3"}));
    EXPECT_TRUE(keys("temp").isEmpty());
}

TEST_F(AddFolder, TheScratchTableKeepsTheMovedRowsAndHasNoIndexes) {
    makePlan({"T", "T.1", "T.2"});
    add("T.1", AddMode::beside);
    EXPECT_EQ(keys("temp"), QStringList({"T.2"}));
    EXPECT_TRUE(state.gDbUser->TableDefs()["temp"].Indexes.empty());
}

TEST_F(AddFolder, AMissingScratchTableIsMade) {
    makePlan({"T", "T.1"});
    state.gDbUser->TableDefs().Delete("temp");
    EXPECT_EQ(add("T.1", AddMode::beside), Added::added);
    EXPECT_TRUE(state.gDbUser->TableDefs().Contains("temp"));
}

TEST_F(AddFolder, TwoInsertsBesideTheSameNodeGetDifferentKeys) {
    makePlan({"T", "T.1", "T.2"});
    add("T.1", AddMode::beside, "一");
    const QString first = key;
    add("T.1", AddMode::beside, "二");
    EXPECT_NE(key, first);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", key, first, "T.2"}));
}

TEST_F(AddFolder, TheCountTakesInEveryKeyThatMerelyBeginsAlike) {
    makePlan({"T", "T.1", "T.10", "T.10.1"});
    EXPECT_EQ(add("T.1", AddMode::below), Added::added);
    EXPECT_EQ(key, "T.1.3");
}

TEST_F(AddFolder, BaseIsTheLastIdLessTheRowCount) {
    makePlan({"T", "T.1"});
    setNextId("T", 12);
    EXPECT_EQ(add("T", AddMode::below), Added::added);
    EXPECT_EQ(key, "T.2");
    EXPECT_EQ(ids("T").last(), "12");
    EXPECT_EQ(add("T.1", AddMode::below), Added::added);
    EXPECT_EQ(key, "T.1.10");
}

TEST_F(AddFolder, AFolderOfTheSameNameIsRefused) {
    makePlan("T", {{"T", "T"}, {"T.1", " 章 "}, {"T.2", "节"}});
    EXPECT_EQ(add("T.2", AddMode::beside, "章  "), Added::duplicateName);
    expectOnly("对不起，命名重复！", desktop::Icon::exclamation, "警告！");
    EXPECT_EQ(keys("T").size(), 3);
    EXPECT_EQ(add("T", AddMode::below, "章"), Added::duplicateName);
    EXPECT_EQ(add("T.1", AddMode::below, "章"), Added::added);
}

TEST_F(AddFolder, ADocumentOfTheSameNameIsNoDuplicate) {
    makePlan("T", {{"T", "T"}, {"T.1", "章", "是"}, {"T.2", "节"}});
    EXPECT_EQ(add("T.2", AddMode::beside, "章"), Added::added);
}

TEST_F(AddFolder, AnEmptyNameIsAccepted) {
    makePlan({"T", "T.1"});
    EXPECT_EQ(add("T", AddMode::below, "   "), Added::added);
    EXPECT_EQ(column(*state.gDbUser, "T", u"名称").last(), "");
}

TEST_F(AddFolder, TheNinthLevelIsTheDeepest) {
    const QString ninth = "T.1.1.1.1.1.1.1.1.1";
    QStringList rows{"T"};
    while (rows.last() != ninth) {
        rows << rows.last() + ".1";
    }
    makePlan(rows);
    EXPECT_EQ(add(parentKeyOf(ninth), AddMode::below), Added::added);
    EXPECT_EQ(depthOfKey(key), 9);
    EXPECT_EQ(add(ninth, AddMode::below), Added::tooDeep);
    expectOnly("对不起，系统最多支持九级深度！", desktop::Icon::exclamation, "警告！");
    EXPECT_EQ(keys("T").size(), 11);
}

TEST_F(AddFolder, ARefusedDepthBesideANodeLeavesTheRowsBehindItInTheScratchTable) {
    const QString tenth = "T.1.1.1.1.1.1.1.1.1.1";
    QStringList rows{"T"};
    while (rows.last() != tenth) {
        rows << rows.last() + ".1";
    }
    makePlan(rows + QStringList{"T.2"});
    EXPECT_EQ(add(tenth, AddMode::beside), Added::tooDeep);
    EXPECT_EQ(keys("T").last(), tenth);
    EXPECT_EQ(keys("temp"), QStringList({"T.2"}));
    EXPECT_EQ(shown(workbench.TrvCurrent).last(), "T.2");
    EXPECT_EQ(copiedKeys("T").last(), "T.2");
}

TEST_F(AddFolder, BesideARootFailsWithTheAbsentObjectInAPlainBox) {
    makePlan({"T", "T.1"});
    EXPECT_EQ(add("T", AddMode::beside), Added::failed);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::none);
    EXPECT_EQ(messages.shown[0].title, "");
    EXPECT_EQ(keys("T").size(), 2);
}

TEST_F(AddFolder, WithNothingSelectedItFailsInAPlainBox) {
    makePlan({"T"});
    openPlan("T");
    EXPECT_EQ(dlgAddDoc(state, workbench, services(), AddMode::below).OK("x"), Added::failed);
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(AddFolder, AnIdBeyondSixteenBitsOverflows) {
    makePlan({"T", "T.1"});
    setNextId("T", 32768);
    const auto rs = state.gDbUser->OpenRecordset("Select * from T");
    add("T", AddMode::below, "近");
    EXPECT_EQ(ids("T").last(), "32768");
    messages.shown.clear();
    EXPECT_EQ(add("T", AddMode::below, "远"), Added::failed);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(messages.shown[0].text.contains("溢出")) << messages.shown[0].text.toStdString();
}

TEST_F(AddFolder, AFailureAfterTheMoveLeavesTheRowsInTheScratchTable) {
    // The rule gives T.3, which is taken.
    makePlan({"T", "T.3", "T.9"});
    EXPECT_EQ(add("T.3", AddMode::beside), Added::failed);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(keys("temp"), QStringList({"T.9"}));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.3"}));
    EXPECT_EQ(copiedKeys("T").size(), 3);
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.3", "T.9"}));
}

TEST_F(AddFolder, AMissingPlanDatabaseFailsAfterTheRowsAreBack) {
    makePlan({"T", "T.1", "T.2"});
    QFile::remove(folder.path("用户模板/T/T.mdb"));
    EXPECT_EQ(add("T.1", AddMode::beside), Added::failed);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.3", "T.2"}));
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList({"T", "T.1", "T.2"}));
}

TEST_F(AddFolder, BesideANodeWhoseRowIsGoneNothingIsMovedOut) {
    makePlan({"T", "T.1", "T.2"});
    openPlan("T", "T.1");
    state.gDbUser->Execute("Delete * from T where Key='T.1'");
    EXPECT_EQ(dlgAddDoc(state, workbench, services(), AddMode::beside).OK("x"), Added::failed);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2"}));
    EXPECT_EQ(copiedKeys("T"), QStringList({"T", "T.1", "T.2"}));
}

TEST_F(AddFolder, ApostrophesInTheKeyAreNotQuoted) {
    makePlan({"T'x", "T'x.1"});
    openPlan("T'x", "T'x.1");
    EXPECT_EQ(dlgAddDoc(state, workbench, services(), AddMode::below).OK("x"), Added::failed);
    EXPECT_EQ(keys("T'x").size(), 2);
}

} // namespace
