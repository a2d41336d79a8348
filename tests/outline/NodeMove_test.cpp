#include "outline/TreeDrag.h"

#include "support/DragWorld.h"
#include "support/HeldLock.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::DragWorld;
using test::FailingDisk;
using Call = FailingDisk::Call;

namespace {

struct MoveNode : testing::Test, DragWorld {
    QStringList shownKeys() const { return shown(workbench.TrvCurrent); }
    void failWith(FailingDisk::Failure failure) {
        state.gFso = std::make_unique<FailingDisk>(std::move(failure));
    }
};

TEST_F(MoveNode, ADocumentMovesUpIntoAFolderAsItsFirstChild) {
    plan({"T", "T.1", "T.1.1d", "T.2", "T.3d", "T.4"});
    const Dropped dropped = drag("T.3", "T.1");
    EXPECT_TRUE(dropped.done);
    EXPECT_EQ(dropped.failure, "");
    EXPECT_EQ(dropped.newKeys, QStringList("T.1.2"));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.1.2", "T.1.1", "T.2", "T.4"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "7", "8", "9", "10"}));
    EXPECT_EQ(column(*state.gDbUser, "T", u"名称"),
              QStringList({"名T", "名T.1", "名T.3", "名T.1.1", "名T.2", "名T.4"}));
    EXPECT_EQ(column(*state.gDbUser, "T", u"是否文档"),
              QStringList({"否", "否", "是", "是", "否", "否"}));
    EXPECT_EQ(shownKeys(), keys("T"));
    EXPECT_EQ(selectedKey(), "T.1.2");
    EXPECT_EQ(documents(), QStringList({"T.1.1.doc", "T.1.2.doc"}));
    EXPECT_EQ(document("T.1.2"), "T.3");
    EXPECT_EQ(workbench.dragKey, "");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(MoveNode, ADocumentMovesDownBeforeADocument) {
    plan({"T", "T.1d", "T.2", "T.2.1d", "T.2.2d"});
    EXPECT_EQ(drag("T.1", "T.2.2").newKeys, QStringList("T.2.3"));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2", "T.2.1", "T.2.3", "T.2.2"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "3", "4", "6", "7"}));
    EXPECT_EQ(document("T.2.3"), "T.1");
    EXPECT_FALSE(documents().contains("T.1.doc"));
}

TEST_F(MoveNode, TheNextKeyCountsFromTheLastIdLessTheRowCount) {
    plan({"T", "T.1d", "T.2", "T.2.1d", "T.2.2d"});
    drag("T.1", "T.2.2");
    EXPECT_EQ(drag("T.2.3", "T").newKeys, QStringList("T.7"));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.7", "T.2", "T.2.1", "T.2.2"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "8", "9", "10", "11"}));
}

TEST_F(MoveNode, AFolderMovesDownIntoAFolderWithAllThatIsBelowIt) {
    plan({"T", "T.1", "T.1.1d", "T.1.2", "T.1.2.1d", "T.2", "T.3"});
    EXPECT_EQ(drag("T.1", "T.3").newKeys, QStringList("T.3.1"));
    EXPECT_EQ(keys("T"),
              QStringList({"T", "T.2", "T.3", "T.3.1", "T.3.1.1", "T.3.1.2", "T.3.1.2.1"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "6", "7", "8", "9", "10", "11"}));
    EXPECT_EQ(shownKeys(), keys("T"));
    EXPECT_EQ(documents(), QStringList({"T.3.1.1.doc", "T.3.1.2.1.doc"}));
    EXPECT_EQ(document("T.3.1.1"), "T.1.1");
    EXPECT_EQ(document("T.3.1.2.1"), "T.1.2.1");
}

TEST_F(MoveNode, AFolderMovesUpBeforeADocument) {
    plan({"T", "T.1d", "T.2", "T.2.1d", "T.3"});
    EXPECT_EQ(drag("T.2", "T.1").newKeys, QStringList("T.5"));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.5", "T.1", "T.5.1", "T.3"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "6", "7", "8", "9"}));
    EXPECT_EQ(shownKeys(), QStringList({"T", "T.5", "T.5.1", "T.1", "T.3"}));
    EXPECT_EQ(documents(), QStringList({"T.1.doc", "T.5.1.doc"}));
}

TEST_F(MoveNode, AFolderMovesDownBeforeANestedDocument) {
    plan({"T", "T.1", "T.1.1", "T.1.1.1d", "T.2", "T.2.1", "T.2.1.1d"});
    // Base 7 - 7; T.2.1 and T.2.1.1 begin with the parent's key.
    EXPECT_EQ(drag("T.1", "T.2.1.1").newKeys, QStringList("T.2.1.2"));
    EXPECT_EQ(keys("T"),
              QStringList({"T", "T.2", "T.2.1", "T.2.1.2", "T.2.1.1", "T.2.1.2.1", "T.2.1.2.1.1"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "5", "6", "8", "9", "10", "11"}));
    EXPECT_EQ(document("T.2.1.2.1.1"), "T.1.1.1");
}

TEST_F(MoveNode, AFolderMovesUpIntoANestedFolder) {
    plan({"T", "T.1", "T.1.1", "T.2", "T.2.1d", "T.2.2"});
    // Base 6 - 6; T.1.1 alone begins with the parent's key.
    EXPECT_EQ(drag("T.2", "T.1.1").newKeys, QStringList("T.1.1.1"));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.1.1", "T.1.1.1", "T.1.1.1.1", "T.1.1.1.2"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3", "7", "8", "9"}));
    EXPECT_EQ(documents(), QStringList("T.1.1.1.1.doc"));
}

TEST_F(MoveNode, TheCountTakesInEveryKeyThatMerelyBeginsAlike) {
    plan({"T", "T.1", "T.10", "T.10.1", "T.2d"});
    EXPECT_EQ(drag("T.2", "T.1").newKeys, QStringList("T.1.3"));
}

TEST_F(MoveNode, DroppingANodeOnItselfDoesNothing) {
    plan({"T", "T.1", "T.2d"});
    EXPECT_FALSE(drag("T.2", "T.2").done);
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3"}));
    EXPECT_EQ(workbench.dragKey, "");
}

TEST_F(MoveNode, DraggingTheRootDoesNothing) {
    plan({"T", "T.1", "T.2d"});
    EXPECT_FALSE(drag("T", "T.1").done);
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3"}));
    EXPECT_EQ(workbench.dragKey, "");
}

TEST_F(MoveNode, ADropOutsideAnyNodeLeavesTheDragKeySoTheNextTemplateDropIsAMove) {
    plan({"T", "T.1", "T.2d"});
    systemTemplate({{"M", "模板"}, {"M.1", "章"}});
    startDrag("T.2");
    EXPECT_FALSE(OLEDragDrop(state, workbench, services(), nullptr).done);
    EXPECT_EQ(workbench.dragKey, "T.2");
    EXPECT_EQ(dragTemplate("M.1", "T.1").newKeys, QStringList("T.1.1"));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.1.1"}));
    EXPECT_EQ(document("T.1.1"), "T.2");
    EXPECT_EQ(workbench.dragKey, "");
    EXPECT_EQ(dragTemplate("M.1", "T.1").newKeys, QStringList("T.1.2"));
}

TEST_F(MoveNode, MovingANodeOntoItsOwnChildRunsAsWritten) {
    plan({"T", "T.1", "T.1.1", "T.1.1.1d", "T.2"});
    drag("T.1", "T.1.1");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2", "T.1.1.2.1", "T.1.1.2.1.2", "T.1.1.2.1.1"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "8", "9", "10", "11"}));
    EXPECT_EQ(column(*state.gDbUser, "T", u"名称"),
              QStringList({"名T", "名T.2", "名T.1.1", "名T.1", "名T.1.1.1"}));
    // The new parent has no row, so the fill ends there.
    EXPECT_EQ(shownKeys(), QStringList({"T", "T.2"}));
    EXPECT_EQ(selectedKey(), "");
    EXPECT_EQ(documents(), QStringList("T.1.1.2.1.1.doc"));
    EXPECT_EQ(workbench.dragKey, "");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(MoveNode, AFolderMayComeBelowADocument) {
    plan({"T", "T.1d", "T.1.1d", "T.2", "T.2.1"});
    EXPECT_EQ(drag("T.2", "T.1.1").newKeys, QStringList("T.1.2"));
    const OutlineNode& node = workbench.TrvCurrent.Item("T.1.2");
    EXPECT_EQ(node.Image(), image::folder);
    EXPECT_EQ(node.Parent()->Image(), image::document);
}

TEST_F(MoveNode, TheMovedSubtreeMayPassNineLevels) {
    QStringList rows{"T"};
    for (int level = 1; level <= 9; ++level) {
        rows << rows.last() + ".1";
    }
    const QString ninth = rows.last();
    plan(rows << "T.2"
              << "T.2.1");
    const Dropped dropped = drag("T.2", ninth);
    EXPECT_EQ(dropped.newKeys, QStringList(ninth + ".1"));
    EXPECT_EQ(depthOfKey(keys("T").last()), 11);
    EXPECT_EQ(shownKeys(), keys("T"));
}

TEST_F(MoveNode, WhatIsBelowAMovedDocumentKeepsItsKeys) {
    plan({"T", "T.1", "T.2d", "T.2.1d"});
    EXPECT_EQ(drag("T.2", "T.1").newKeys, QStringList("T.1.1"));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.1.1", "T.2.1"}));
    EXPECT_EQ(shownKeys(), QStringList({"T", "T.1", "T.1.1"}));
    EXPECT_EQ(documents(), QStringList({"T.1.1.doc", "T.2.1.doc"}));
}

TEST_F(MoveNode, KeysThatHoldTheKeyFurtherInChangeTooAtEveryPlace) {
    plan({"T", "T.1", "T.1.T", "T.1.T.1", "T.1.T.1.5d", "T.2", "T.2.T", "T.2.T.1", "T.2.T.1.6d"});
    EXPECT_EQ(drag("T.1", "T.2").newKeys, QStringList("T.2.4"));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2", "T.2.4", "T.2.T", "T.2.T.1", "T.2.4.T",
                                      "T.2.4.T.2.4", "T.2.4.T.2.4.5", "T.2.T.2.4.6"}));
    // Texts that are no keys name no files.
    EXPECT_EQ(document("T.1.T.1.5"), "T.1.T.1.5");
    EXPECT_EQ(documents(), QStringList({"T.1.T.1.5.doc", "T.2.T.1.6.doc"}));
}

TEST_F(MoveNode, AFolderMovesTheFilesOfItsDocumentsAndNoneThatATextNamesOutside) {
    plan({"T", "T.1", "T.1.5d", "T.2"});
    add(*state.gDbUser->OpenRecordset("Select * from T"), {"T.1./../../外", "外", "是"});
    openPlan("T");
    folder.write("用户模板/外.doc", "outside");
    const QString newKey = drag("T.1", "T.2").newKeys.value(0);
    EXPECT_EQ(document(newKey + ".5"), "T.1.5");
    EXPECT_EQ(folder.read("用户模板/外.doc"), "outside");
    EXPECT_FALSE(folder.exists("外.doc"));
}

TEST_F(MoveNode, ATargetWhoseKeyIsNoKeyIsRefusedAndNothingChanges) {
    plan({"T", "T.1d", "T.甲"});
    const Dropped dropped = drag("T.1", "T.甲");
    EXPECT_FALSE(dropped.done);
    EXPECT_EQ(dropped.failure, "“T.甲”不是节点的编号，不能移到那里");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.甲"}));
    EXPECT_EQ(document("T.1"), "T.1");
}

TEST_F(MoveNode, AKeyOfOtherCaseIsFoundButNotReplacedAndKeepsItsFile) {
    plan({"T", "T.1", "T.2", "t.1.5d"});
    folder.write("用户模板/T/t.1.5.doc", "small");
    drag("T.1", "T.2");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2", "T.2.1", "t.1.5"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "3", "5", "7"}));
    EXPECT_EQ(folder.read("用户模板/T/t.1.5.doc"), "small");
}

TEST_F(MoveNode, ADocumentThatComesToItsOldKeyKeepsItsFile) {
    // Base 4 - 3 and three rows: the new key is the old one.
    plan({"T", "T.1", "T.2", "T.4d"});
    state.gDbUser->Execute("Delete * from T where key='T.2'");
    openPlan("T");
    EXPECT_EQ(drag("T.4", "T").newKeys, QStringList("T.4"));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.4", "T.1"}));
    EXPECT_EQ(document("T.4"), "T.4");
}

TEST_F(MoveNode, OnlyTheWorkingTableChanges) {
    plan({"T", "T.1", "T.2d"});
    drag("T.2", "T.1");
    EXPECT_EQ(copiedKeys("T"), QStringList({"T", "T.1", "T.2"}));
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.1.1"}));
}

TEST_F(MoveNode, TheScratchTableIsEmptiedAndNotMadeAnew) {
    plan({"T", "T.1", "T.2d", "T.3"});
    const auto rs = state.gDbUser->OpenRecordset("Select * from temp");
    add(*rs, {"left", "behind"});
    drag("T.2", "T.1");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.1.1", "T.3"}));
    EXPECT_TRUE(keys("temp").isEmpty());
    EXPECT_EQ(state.gDbUser->TableDefs()["temp"].Indexes.size(), 2U);
}

TEST_F(MoveNode, WithoutAScratchTableNoRowIsLost) {
    plan({"T", "T.1", "T.2d", "T.3"});
    state.gDbUser->TableDefs().Delete("temp");
    const Dropped dropped = drag("T.2", "T.1");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.3", "T.1.1"}));
    EXPECT_EQ(document("T.1.1"), "T.2");
    EXPECT_NE(dropped.failure, "");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(MoveNode, RowsOfEveryKindOfTextComeBackUnchanged) {
    const QString name = QString("'[*?#] 😀 مرحبا \"") + QString(250, u'长');
    makePlan("T", {{"T", "T"}, {"T.1", "一"}, {"T.2", name, "是"}, {"T.3", name, "别的"}});
    makeCurrent("T");
    openPlan("T");
    drag("T.2", "T.1");
    EXPECT_EQ(column(*state.gDbUser, "T", u"名称"), QStringList({"T", "一", name, name}));
    EXPECT_EQ(column(*state.gDbUser, "T", u"是否文档"), QStringList({"否", "否", "是", "别的"}));
}

TEST_F(MoveNode, TheMoveLooksInThePlanThatTheCurrentTableNames) {
    makePlan({"U", "U.1"});
    plan({"T", "T.1", "T.2d"});
    makeCurrent("U");
    EXPECT_FALSE(drag("T.2", "T.1").done);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2"}));
    EXPECT_EQ(ids("U"), QStringList({"1", "2"}));
    EXPECT_EQ(documents(), QStringList("T.2.doc"));
    EXPECT_EQ(workbench.dragKey, "");
}

TEST_F(MoveNode, ANodeWhoseRowHasGoneIsNotMoved) {
    plan({"T", "T.1", "T.2d"});
    state.gDbUser->Execute("Delete * from T where key='T.2'");
    EXPECT_FALSE(drag("T.2", "T.1").done);
    EXPECT_EQ(ids("T"), QStringList({"1", "2"}));
    EXPECT_EQ(documents(), QStringList("T.2.doc"));
    EXPECT_EQ(workbench.dragKey, "");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(MoveNode, ATargetWhoseRowHasGoneTakesNothing) {
    plan({"T", "T.1", "T.10", "T.2", "T.2.1d"});
    state.gDbUser->Execute("Delete * from T where key like 'T.1*'");
    EXPECT_FALSE(drag("T.2", "T.10").done);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.2", "T.2.1"}));
    EXPECT_EQ(documents(), QStringList("T.2.1.doc"));
}

TEST_F(MoveNode, NumbersBeyondSixteenBitsEndTheMoveBeforeAnythingChanges) {
    plan({"T", "T.1", "T.2d"});
    setNextId("T", 32766);
    add(*state.gDbUser->OpenRecordset("Select * from T"), {"T.3", "末"});
    openPlan("T");
    EXPECT_EQ(drag("T.2", "T.1").newKeys, QStringList("T.1.32763"));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "32767", "32768"}));
    const Dropped dropped = drag("T.3", "T.1");
    EXPECT_FALSE(dropped.done);
    EXPECT_EQ(dropped.failure, "溢出");
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "32767", "32768"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(MoveNode, AKeyLongerThanItsFieldEndsTheMoveBeforeAnythingChanges) {
    const QString deep = "T." + QString(240, u'9');
    plan({"T", deep, "T.2", "T.2." + QString(12, u'8'), "T.2." + QString(12, u'8') + ".1d"});
    EXPECT_FALSE(drag("T.2", deep).done);
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3", "4", "5"}));
    EXPECT_EQ(documents().size(), 1);
}

TEST_F(MoveNode, ANewKeyThatIsTakenLeavesWhatTheStatementsMakeOfTheTable) {
    plan({"T", "T.1", "T.1.2", "T.1.1", "T.2"});
    state.gDbUser->Execute("Delete * from T where key='T.1.1'");
    state.gDbUser->Execute("Delete * from T where key='T.2'");
    openPlan("T");
    add(*state.gDbUser->OpenRecordset("Select * from T"), {"T.3", "三"});
    openPlan("T");
    // Base 6 - 4, and two rows that begin with T.1: T.1.4 is free; taken by hand.
    state.gDbUser->Execute("Delete * from T where key='T.1.2'");
    add(*state.gDbUser->OpenRecordset("Select * from T"), {"T.1.5", "占"});
    openPlan("T");
    // Base 7 - 4 and two rows: T.1.5, which stands behind the place and so goes missing.
    EXPECT_EQ(drag("T.3", "T.1").newKeys, QStringList("T.1.5"));
    EXPECT_EQ(column(*state.gDbUser, "T", u"名称"), QStringList({"名T", "名T.1", "三"}));
}

TEST_F(MoveNode, APlanNameThatNeedsBracketsIsNotMistakenForAnotherTable) {
    makePlan({"甲", "甲.1", "甲.2"});
    makeTable(*state.gDbUser, "甲 乙", {{"甲 乙", "根"}, {"甲 乙.1", "一"}, {"甲 乙.2", "二"}});
    makeCurrent("甲 乙");
    openPlan("甲 乙");
    const Dropped dropped = drag("甲 乙.2", "甲 乙.1");
    EXPECT_FALSE(dropped.done);
    EXPECT_TRUE(dropped.failure.contains("甲 乙"));
    EXPECT_EQ(ids("甲"), QStringList({"1", "2", "3"}));
    EXPECT_EQ(ids("甲 乙"), QStringList({"1", "2", "3"}));
}

TEST_F(MoveNode, PlanNamesOfEmojiAndRightToLeftTextMove) {
    for (const char* name : {"桥😀", "خطة", "_甲1", "1标段"}) {
        const QString root = QString::fromUtf8(name);
        plan({root, root + ".1", root + ".2d"});
        EXPECT_EQ(drag(root + ".2", root + ".1").newKeys, QStringList(root + ".1.1")) << name;
        EXPECT_EQ(document(root + ".1.1"), (root + ".2").toUtf8()) << name;
    }
}

TEST_F(MoveNode, AnApostropheInAKeyStrikesNoOtherRow) {
    plan({"T", "T.1", "T.1' or 'a'='a", "T.2d"});
    EXPECT_FALSE(drag("T.1' or 'a'='a", "T.1").done);
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3", "4"}));
}

TEST_F(MoveNode, ThePlansTreeIsRefreshed) {
    plan({"T", "T.1", "T.2d"});
    drag("T.2", "T.1");
    EXPECT_EQ(shown(workbench.TrvTemplate_Us), QStringList({"T", "T.1", "T.1.1"}));
}

TEST_F(MoveNode, ADocumentWithoutAFileIsMovedAllTheSame) {
    plan({"T", "T.1", "T.2d"});
    folder.write("用户模板/T/T.2.doc", {});
    QFile::remove(folder.path("用户模板/T/T.2.doc"));
    const Dropped dropped = drag("T.2", "T.1");
    EXPECT_TRUE(dropped.done);
    EXPECT_EQ(dropped.failure, "");
    EXPECT_EQ(keys("T").last(), "T.1.1");
    EXPECT_TRUE(documents().isEmpty());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(MoveNode, AfterAFileInUseIsClosedThereIsOneMoreMessage) {
    plan({"T", "T.1", "T.2d"});
    int refusals = 2;
    failWith([&](Call call, const QString&) {
        return call == Call::remove && refusals-- > 0 ? error::permissionDenied : 0;
    });
    EXPECT_TRUE(drag("T.2", "T.1").done);
    ASSERT_EQ(messages.shown.size(), 3U);
    for (const desktop::Message& box : messages.shown) {
        EXPECT_EQ(box.text, "请关闭打开的 [" + folder.path("用户模板/T/T.2.doc") + "] 文档！");
        EXPECT_EQ(box.icon, desktop::Icon::exclamation);
        EXPECT_EQ(box.title, "提示");
    }
    EXPECT_EQ(documents(), QStringList("T.1.1.doc"));
}

TEST_F(MoveNode, EveryDocumentOfAFolderHasItsOwnMessages) {
    plan({"T", "T.1", "T.1.1d", "T.1.2d", "T.1.3d", "T.2"});
    QStringList refused;
    failWith([&](Call call, const QString& path) -> long {
        if (call == Call::copy || path.contains("T.1.2") || refused.contains(path)) {
            return 0;
        }
        refused << path;
        return error::permissionDenied;
    });
    EXPECT_TRUE(drag("T.1", "T.2").done);
    EXPECT_EQ(messages.shown.size(), 4U);
    EXPECT_EQ(documents(), QStringList({"T.2.1.1.doc", "T.2.1.2.doc", "T.2.1.3.doc"}));
}

TEST_F(MoveNode, WhatIsSavedWhileTheDocumentIsOpenComesAlong) {
    plan({"T", "T.1", "T.2d"});
    test::ActingMessageBoxes boxes;
    const QString file = folder.path("用户模板/T/T.2.doc");
    auto reader = std::make_unique<test::HeldLock>(file, test::LockKind::whole);
    boxes.onBox = [&](std::size_t count) {
        if (count == 1) {
            folder.write("用户模板/T/T.2.doc", "saved");
            reader.reset();
        }
    };
    startDrag("T.2");
    OLEDragDrop(state, workbench, {boxes, splash, dialogs, events, word, longRun},
                &workbench.TrvCurrent.Item("T.1"));
    EXPECT_EQ(boxes.shown.size(), 2U);
    EXPECT_EQ(document("T.1.1"), "saved");
    EXPECT_EQ(documents(), QStringList("T.1.1.doc"));
}

TEST_F(MoveNode, AFileThatCannotBeCopiedStays) {
    plan({"T", "T.1", "T.2d"});
    failWith([](Call call, const QString&) { return call == Call::copy ? error::diskFull : 0; });
    const Dropped dropped = drag("T.2", "T.1");
    EXPECT_TRUE(dropped.done);
    EXPECT_EQ(dropped.failure, "磁盘出错");
    EXPECT_EQ(keys("T").last(), "T.1.1");
    EXPECT_EQ(document("T.2"), "T.2");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(MoveNode, WhenAFileIsDeletedTheRowsBearTheNewKeysForGood) {
    plan({"T", "T.1", "T.1.1d", "T.1.2d", "T.2"});
    QStringList seen;
    failWith([&](Call call, const QString&) -> long {
        if (call == Call::remove) {
            jet::Workspace other;
            seen = column(*other.OpenDatabase(state.gDbUser->Name()), "T", u"Key");
            EXPECT_EQ(document("T.2.1.1"), "T.1.1");
            EXPECT_EQ(document("T.2.1.2"), "T.1.2");
        }
        return 0;
    });
    drag("T.1", "T.2");
    EXPECT_EQ(seen, QStringList({"T", "T.2", "T.2.1", "T.2.1.1", "T.2.1.2"}));
    EXPECT_EQ(documents(), QStringList({"T.2.1.1.doc", "T.2.1.2.doc"}));
}

TEST_F(MoveNode, ATransactionThatWasLeftOpenStaysOpen) {
    plan({"T", "T.1", "T.2d"});
    state.gWs->BeginTrans();
    drag("T.2", "T.1");
    EXPECT_TRUE(state.gWs->InTransaction());
    drag("T.1.1", "T");
    state.gWs->CommitTrans();
    drag(keys("T")[1], "T.1");
    EXPECT_FALSE(state.gWs->InTransaction());
}

TEST_F(MoveNode, WhereNobodyClosesTheFileTheMoveEndsAndTheOldFileStays) {
    plan({"T", "T.1", "T.2d"});
    test::ActingMessageBoxes boxes;
    boxes.mostBoxes = 2;
    const test::HeldLock reader(folder.path("用户模板/T/T.2.doc"), test::LockKind::whole);
    startDrag("T.2");
    const Dropped dropped =
        OLEDragDrop(state, workbench, {boxes, splash, dialogs, events, word, longRun},
                    &workbench.TrvCurrent.Item("T.1"));
    EXPECT_EQ(boxes.shown.size(), 2U);
    EXPECT_TRUE(dropped.failure.contains("T.2.doc"));
    EXPECT_EQ(shownKeys(), QStringList({"T", "T.1", "T.1.1"}));
    EXPECT_EQ(documents(), QStringList({"T.1.1.doc", "T.2.doc"}));
}

TEST_F(MoveNode, StartingADragKeepsKeyAndIndex) {
    plan({"T", "T.1", "T.2d"});
    workbench.TrvCurrent.Select(nullptr);
    EXPECT_FALSE(OLEStartDrag(workbench));
    EXPECT_EQ(workbench.dragKey, "");
    workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item("T.2"));
    EXPECT_TRUE(OLEStartDrag(workbench));
    EXPECT_EQ(workbench.dragKey, "T.2");
    EXPECT_EQ(workbench.dragIndex, 3);
}

TEST_F(MoveNode, HoveringSelectsTheNodeUnderThePointer) {
    plan({"T", "T.1", "T.2d"});
    OLEDragOver(workbench, &workbench.TrvCurrent.Item("T.2"));
    EXPECT_EQ(selectedKey(), "T.2");
    OLEDragOver(workbench, nullptr);
    EXPECT_EQ(selectedKey(), "T.2");
}

} // namespace
