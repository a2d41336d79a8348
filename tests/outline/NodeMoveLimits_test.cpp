#include "outline/TreeDrag.h"

#include "outline/DocumentMove.h"
#include "platform/jet/ChangeObserver.h"
#include "support/DragWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::DragWorld;

namespace {

constexpr qsizetype longestKey = 255;

struct MoveLimits : testing::Test, DragWorld {
    // A key below T of that length.
    static QString keyOf(qsizetype length) { return "T." + QString(length - 2, u'9'); }
    void addRow(const test::OutlineRowText& row) {
        add(*state.gDbUser->OpenRecordset("Select * from T"), row);
    }
};

TEST_F(MoveLimits, ANewKeyMayFillItsFieldAndNotExceedItByOne) {
    const QString fits = keyOf(longestKey - 2); // ".1" comes behind it
    plan({"T", fits, "T.2"});
    EXPECT_TRUE(drag("T.2", fits).done);
    EXPECT_EQ(keys("T"), QStringList({"T", fits, fits + ".1"}));

    const QString exceeds = keyOf(longestKey - 1);
    addRow({exceeds, "长"});
    openPlan("T");
    const QStringList before = keys("T");
    const Dropped dropped = drag(fits + ".1", exceeds);
    EXPECT_FALSE(dropped.done);
    EXPECT_EQ(dropped.failure, "移动后的键超过 255 个字符，不能移动");
    EXPECT_EQ(keys("T"), before);
}

TEST_F(MoveLimits, ADocumentThatMovesDownLeavesWhatStandsBelowItInItsPlace) {
    plan({"T", "T.1d", "T.1.1d", "T.2", "T.2.1d"});
    EXPECT_TRUE(drag("T.1", "T.2.1").done);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1.1", "T.2", "T.2.2", "T.2.1"}));
    EXPECT_EQ(document("T.1.1"), "T.1.1");
}

TEST_F(MoveLimits, WhatWasLeftOnTheBlankMovesAtTheNextDropAndThisIsRemarked) {
    plan({"T", "T.1", "T.2", "T.3"});
    startDrag("T.1");
    EXPECT_FALSE(OLEDragDrop(state, workbench, services(), nullptr).done);
    EXPECT_TRUE(dropOn("T.2").done);
    EXPECT_EQ(state.Remarks, QStringList("移动的是上次拖到空白处的“名T.1”，没有复制模板的内容。"));
    state.Remarks.clear();
    startDrag("T.3");
    EXPECT_FALSE(OLEDragDrop(state, workbench, services(), nullptr).done);
    EXPECT_TRUE(drag("T.3", "T.2").done);
    EXPECT_TRUE(state.Remarks.isEmpty()) << "a drag that is begun anew is asked for";
}

TEST_F(MoveLimits, ADragStartsAtTheLastNodeThatItsIndexCanNameAndNotBehindIt) {
    constexpr int last = 32767;
    OutlineTree& tree = workbench.TrvCurrent;
    for (int i = 1; i <= last + 1; ++i) {
        tree.Add('K' + QString::number(i), {}, image::folder, image::folderSelected);
    }
    tree.Select(&tree.Item(last + 1));
    EXPECT_FALSE(OLEStartDrag(workbench));
    EXPECT_EQ(workbench.dragKey, "");
    tree.Select(&tree.Item(last));
    EXPECT_TRUE(OLEStartDrag(workbench));
    EXPECT_EQ(workbench.dragIndex, last);
}

TEST_F(MoveLimits, TheKeyOfADescendantMayFillItsFieldAndNotExceedItByOne) {
    const QString fits = keyOf(longestKey - 4); // ".1.7"
    plan({"T", fits, "T.2", "T.2.7"});
    EXPECT_TRUE(drag("T.2", fits).done);
    EXPECT_EQ(keys("T"), QStringList({"T", fits, fits + ".1", fits + ".1.7"}));

    const QString exceeds = keyOf(longestKey - 3);
    addRow({exceeds, "长"});
    openPlan("T");
    const QStringList before = keys("T");
    EXPECT_FALSE(drag(fits + ".1", exceeds).done);
    EXPECT_EQ(keys("T"), before);
}

// The condition for this key names other rows: those of T.1, and those without a key.
TEST_F(MoveLimits, AKeyThatReadsAsAnotherConditionMovesNoOtherRow) {
    const QString key = QStringLiteral("T.1' or key='");
    plan({"T", "T.1d", key, "T.2"});
    const Dropped dropped = drag(key, "T.2");
    EXPECT_FALSE(dropped.done);
    EXPECT_EQ(dropped.failure, "方案“T”中没有编号为“" + key + "”的行");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", key, "T.2"}));
    EXPECT_EQ(ids("T"), QStringList({"1", "2", "3", "4"}));
    EXPECT_EQ(document("T.1"), "T.1");
}

TEST_F(MoveLimits, ADocumentWhoseRowKeepsItsKeyKeepsItsFile) {
    plan({"T", "T.1", "T.1.1d", "T.2"});
    addRow({"T.2.2.1", "占", "是"}); // the key that T.1.1 would get
    EXPECT_EQ(drag("T.1", "T.2").newKeys, QStringList("T.2.2"));
    EXPECT_TRUE(keys("T").contains("T.1.1"));
    EXPECT_EQ(document("T.1.1"), "T.1.1");
}

TEST_F(MoveLimits, AnOldFileGoesWhenARowHasTheNewKeyAndNoneTheOldOne) {
    plan({"T", "T.1d", "T.2d", "T.3d"});
    RecordedErrors errors;
    DocumentMove move(state, messages, errors, "T");
    move.copy("T.1", "T.7");
    move.copy("T.2", "T.8");
    move.copy("T.3", "T.9");
    move.deleteOld({"T", "T.2", "T.7", "T.8"});
    EXPECT_EQ(documents(), QStringList({"T.2.doc", "T.3.doc", "T.7.doc", "T.8.doc", "T.9.doc"}));
    EXPECT_EQ(document("T.7"), "T.1");
    EXPECT_EQ(errors.number(), 0);
}

// As while another program reads the file.
class RefusedCommit : public jet::ChangeObserver {
public:
    void BeforeChange(const QString& /*path*/) override {}
    void BeforeCreation(const QString& /*path*/) override {}
    void BeforeCommit(const std::function<QByteArray()>& /*image*/) override {
        throw RunTimeError(error::diskFull, u"磁盘已满");
    }
    void AfterChange(const QString& /*path*/, const QString& /*table*/) override {}
};

TEST_F(MoveLimits, TheOldFilesStayWhereTheNewRowsDoNotLast) {
    plan({"T", "T.1", "T.2d"});
    RefusedCommit refused;
    state.gWs->Observe(&refused);
    EXPECT_EQ(drag("T.2", "T.1").failure, "磁盘已满");
    state.gWs->Observe(nullptr);
    EXPECT_EQ(document("T.2"), "T.2");
}

} // namespace
