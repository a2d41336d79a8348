#include "outline/TakeBack.h"

#include "outline/RecordedPlan.h"
#include "support/Errors.h"
#include "support/PlainSqlite.h"
#include "support/Text.h"

using namespace qvnd;

namespace {

constexpr std::size_t planButton = 12;

class TakeBack : public test::RecordedPlan {
protected:
    bool arePlanCommandsOffered() const {
        const outline::Workbench& workbench = world.workbench;
        EXPECT_EQ(workbench.cmdEdit, workbench.mnuEdit);
        EXPECT_EQ(workbench.cmdEdit, workbench.TbarBid[planButton]);
        return workbench.cmdEdit;
    }
    QString mended() { return outline::takeMended(world.state, "撤消"); }
};

TEST_F(TakeBack, APlansCommandsComeAndGoWithIt) {
    deleteNode("T");
    outline::undo(world.state, world.workbench, world.services());
    EXPECT_EQ(world.workbench.TrvCurrent.Count(), 5);
    EXPECT_TRUE(arePlanCommandsOffered());
    world.workbench.clickedKey = "T.1";
    world.workbench.mnuDelete = true;
    outline::redo(world.state, world.workbench, world.services());
    EXPECT_EQ(world.workbench.TrvCurrent.Count(), 0);
    EXPECT_FALSE(arePlanCommandsOffered());
    EXPECT_EQ(world.workbench.clickedKey, "");
    EXPECT_FALSE(world.workbench.mnuDelete);
}

TEST_F(TakeBack, TheNodeIsSelectedThatWasBeforeTheStepAndBehindItTheOneThatCameThen) {
    deleteNode("T.2");
    outline::undo(world.state, world.workbench, world.services());
    EXPECT_EQ(world.selectedKey(), "T.2");
    outline::redo(world.state, world.workbench, world.services());
    EXPECT_EQ(world.selectedKey(), "T.1");
}

TEST_F(TakeBack, WhereTheWantedNodeIsNotThereTheLastOneIsSelected) {
    const auto show = [this](const QString& key) {
        outline::showTables(world.state, world.workbench, world.services(), key);
        return world.workbench.TrvCurrent.SelectedItem();
    };
    EXPECT_EQ(show("T.1")->Key(), "T.1");
    EXPECT_EQ(show("T.9")->Key(), "T.2");
    world.state.gDbUser->Execute("Delete * from T where Key<>'T'");
    EXPECT_EQ(show("T.9")->Key(), "T");
    world.state.gDbUser->Execute("Delete * from 当前表");
    EXPECT_EQ(show("T.9"), nullptr);
}

TEST_F(TakeBack, ThatFailsShowsTheTablesAsTheyAre) {
    world.workbench.TrvCurrent.Clear();
    world.workbench.clickedKey = "T.1";
    EXPECT_TRUE(test::errorNumberOf(
        [&] { outline::goToStep(world.state, world.workbench, world.services(), 4711); }));
    EXPECT_EQ(world.workbench.TrvCurrent.Count(), 5);
    EXPECT_EQ(world.workbench.clickedKey, "");
}

TEST_F(TakeBack, GoesToTheStateBehindAStepWithItsNodeSelected) {
    const std::int64_t first = deleteNode("T.2");
    deleteNode("T.1.1.1");
    deleteNode("T.1");
    outline::goToStep(world.state, world.workbench, world.services(), first);
    EXPECT_EQ(world.keys("T"), QStringList({"T", "T.1", "T.1.1", "T.1.1.1"}));
    EXPECT_EQ(world.shown(world.workbench.TrvCurrent), world.keys("T"));
    EXPECT_EQ(world.selectedKey(), world.state.History->step(first)->selectedAfter);
    outline::goToStep(world.state, world.workbench, world.services(), history::beginning);
    EXPECT_EQ(world.keys("T").size(), 5);
}

TEST_F(TakeBack, WithoutAHistoryTakesNothing) {
    world.state.History.reset();
    EXPECT_EQ(outline::undo(world.state, world.workbench, world.services()), std::nullopt);
    EXPECT_EQ(outline::redo(world.state, world.workbench, world.services()), std::nullopt);
    EXPECT_EQ(world.workbench.TrvCurrent.Count(), 5) << "the tree stays as it is";
}

TEST_F(TakeBack, TheCommandThatWasNotDoneIsToldOnceWithWhatLeadsBackBeforeIt) {
    const auto step = world.state.History->step(deleteNode("T.2"));
    ASSERT_TRUE(step);
    world.state.HistoryFound.unfinished = step;
    EXPECT_EQ(mended(), "上次运行没有做完“" + step->title + "”就中断了。撤消可以回到它之前。");
    EXPECT_EQ(mended(), "");
    rename("T.1", "改");
    world.state.HistoryFound.unfinished = step;
    EXPECT_EQ(mended(),
              "上次运行没有做完“" + step->title + "”就中断了。操作历史中可以回到它之前。");
}

TEST_F(TakeBack, ACommandThatWasNotDoneIsNotToldAgainByTheNextStart) {
    const auto step = world.state.History->step(deleteNode("T.2"));
    ASSERT_TRUE(step);
    test::PlainSqlite(world.state.gUserTplPath + ".~history/history.db")
        .rows("INSERT INTO killed VALUES(" + QString::number(step->id) + ",0,0)");
    world.state.HistoryFound = world.state.History->mend();
    ASSERT_TRUE(world.state.HistoryFound.unfinished);
    EXPECT_TRUE(mended().contains(step->title));
    EXPECT_FALSE(world.state.History->mend().unfinished);
}

TEST_F(TakeBack, WhatTheStartHasMendedIsToldALineEach) {
    history::History::Found& found = world.state.HistoryFound;
    found.unfinishedBefore = QStringList({"甲", "乙"});
    found.restored = true;
    found.note = "还有";
    EXPECT_EQ(mended(), "在它以前也没有做完：甲、乙。\n上一次撤消或恢复中断了，现已做完。\n还有");
    found.restored = true;
    EXPECT_EQ(mended(), "上一次撤消或恢复中断了，现已做完。");
}

TEST_F(TakeBack, AStrayFileInTheFolderOfTheOpenPlanIsToldWithItsStep) {
    world.folder.write("new.doc", "new");
    const std::int64_t step = run("添加", [this] {
        world.state.gFso->CopyFile(world.folder.path("new.doc"),
                                   world.folder.path("用户模板/T/别的.doc"), true);
    });
    EXPECT_EQ(world.state.History->step(step)->note, "留下了没有节点的文件：别的.doc");
}

} // namespace
