#include "gui/support/WorkbenchHistory.h"
#include "outline/RecordedCommand.h"

namespace qvnd::test {
namespace {

// What the menu, the toolbar, the bar and the list name is what they take, also when another window
// or program adds a step meanwhile.
class MenuOfHistory : public WorkbenchHistory {
protected:
    void openWithDeletedNode() {
        open("T.1");
        deleteNode("T.3");
        ASSERT_EQ(item("mnuUndo").text(), "撤消 删除[名T.3]");
        world.messages.shown.clear();
    }
    void anotherWindowAddsAStep() {
        outline::RecordedCommand another(world.state, world.workbench.TrvCurrent, "添加文档",
                                         world.messages);
        OutlineWorld::add(*world.state.gDbUser->OpenRecordset("Select * from U"),
                          {"U.9", "别处添的"});
        ASSERT_TRUE(another.finish());
    }
    void comeBackToTheWindow() {
        QEvent activation(QEvent::WindowActivate);
        QCoreApplication::sendEvent(form.get(), &activation);
    }
    QStringList told() const {
        QStringList texts;
        for (const desktop::Message& message : world.messages.shown) {
            texts << message.text;
        }
        return texts;
    }
    void expectNothingTaken(const QString& words) {
        EXPECT_TRUE(world.keys("U").contains("U.9"));
        EXPECT_EQ(told(), QStringList(words));
    }
};

TEST_F(MenuOfHistory, TheMenuTakesBackNoOtherStepThanItNames) {
    openWithDeletedNode();
    anotherWindowAddsAStep();
    item("mnuUndo").trigger();
    expectNothingTaken("撤消的操作已变，请再看一看。");
    EXPECT_FALSE(isShown("T.3"));
    EXPECT_EQ(item("mnuUndo").text(), "撤消 添加文档[别处添的]");
    item("mnuUndo").trigger();
    EXPECT_FALSE(world.keys("U").contains("U.9")) << "the user has read what is taken back now";
    item("mnuUndo").trigger();
    EXPECT_TRUE(isShown("T.3"));
    EXPECT_EQ(told().size(), 1);
}

TEST_F(MenuOfHistory, TheToolbarTakesBackNoOtherStepThanItNames) {
    openWithDeletedNode();
    anotherWindowAddsAStep();
    toolbar().undo()->trigger();
    expectNothingTaken("撤消的操作已变，请再看一看。");
    EXPECT_EQ(toolbar().undo()->toolTip(), "撤消 添加文档[别处添的]");
    toolbar().undo()->trigger();
    EXPECT_FALSE(world.keys("U").contains("U.9"));
}

TEST_F(MenuOfHistory, TheKeysTakeNoOtherStepThanTheMenuNames) {
    openWithDeletedNode();
    form->addAction(&item("mnuUndo")); // as the frame does with its menu bar
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    anotherWindowAddsAStep();
    QTest::keyClick(&trvCurrent(), Qt::Key_Z, Qt::ControlModifier);
    expectNothingTaken("撤消的操作已变，请再看一看。");
}

TEST_F(MenuOfHistory, TheMenuDoesNothingAgainThatItDoesNotName) {
    openWithDeletedNode();
    item("mnuUndo").trigger();
    ASSERT_EQ(item("mnuRedo").text(), "恢复 删除[名T.3]");
    {
        outline::RecordedCommand another(world.state, world.workbench.TrvCurrent, "生成标书",
                                         world.messages);
        world.state.gFso->CopyFile(world.folder.path("用户模板/T/T.2.doc"),
                                   world.folder.path("施工方案.doc"), true);
        ASSERT_TRUE(another.finish());
    }
    item("mnuRedo").trigger();
    EXPECT_EQ(told(), QStringList("恢复的操作已变，请再看一看。"));
    EXPECT_TRUE(world.folder.exists("施工方案.doc"));
    EXPECT_TRUE(isShown("T.3"));
    EXPECT_FALSE(item("mnuRedo").isEnabled()) << "the step of the other window ended its branch";
}

TEST_F(MenuOfHistory, TheBarTakesBackNoOtherStepThanItsOwnAndSaysSo) {
    open("T.1");
    deleteNodeThatTakesAnother();
    ASSERT_TRUE(hasButtons({"noteUndo", "noteDetails"}));
    world.messages.shown.clear();
    anotherWindowAddsAStep();
    press("noteUndo");
    expectNothingTaken("撤消的操作已变，请再看一看。");
    EXPECT_FALSE(isShown("T.2"));
    EXPECT_TRUE(bar().isHidden());
}

TEST_F(MenuOfHistory, TheListLeadsNowhereWhileItDoesNotShowTheLatestStep) {
    openWithDeletedNode();
    item("mnuHistory").trigger();
    chooseStep(0);
    anotherWindowAddsAStep();
    press("historyBefore");
    expectNothingTaken("操作历史已变，请再看一看。");
    EXPECT_FALSE(isShown("T.3"));
    EXPECT_EQ(titles(), QStringList({"添加文档[别处添的]", "删除[名T.3]"}));
    chooseStep(1);
    press("historyBefore");
    EXPECT_TRUE(isShown("T.3"));
    EXPECT_FALSE(world.keys("U").contains("U.9"));
}

TEST_F(MenuOfHistory, TheListMarksAStateThatAnotherProgramWentBackToWhenTheUserComesBack) {
    openWithDeletedNode();
    anotherWindowAddsAStep();
    comeBackToTheWindow();
    item("mnuHistory").trigger();
    ASSERT_TRUE(steps().topLevelItem(0)->text(2).contains("现在"));
    world.state.History->undo();
    comeBackToTheWindow();
    EXPECT_TRUE(steps().topLevelItem(1)->text(2).contains("现在"));
    chooseStep(1);
    press("historyBefore");
    EXPECT_TRUE(isShown("T.3"));
    EXPECT_TRUE(told().isEmpty()) << told().join('|').toStdString();
}

TEST_F(MenuOfHistory, TheMenuNamesAStepOfAnotherWindowWhenTheUserComesBack) {
    openWithDeletedNode();
    anotherWindowAddsAStep();
    comeBackToTheWindow();
    EXPECT_EQ(item("mnuUndo").text(), "撤消 添加文档[别处添的]");
    EXPECT_EQ(toolbar().undo()->toolTip(), "撤消 添加文档[别处添的]");
    item("mnuUndo").trigger();
    EXPECT_FALSE(world.keys("U").contains("U.9"));
    EXPECT_TRUE(told().isEmpty());
}

TEST_F(MenuOfHistory, TheMenuNamesAStepOfAnotherWindowWhenTheWorkbenchIsShownAgain) {
    openWithDeletedNode();
    form->hide();
    anotherWindowAddsAStep();
    form->show();
    EXPECT_EQ(item("mnuUndo").text(), "撤消 添加文档[别处添的]");
}

TEST_F(MenuOfHistory, NothingElseIsTakenWhereARestorationHasBeenBroughtToItsEnd) {
    openWithDeletedNode();
    anotherWindowAddsAStep();
    world.state.HistoryFound.restored = true;
    item("mnuUndo").trigger();
    EXPECT_TRUE(world.keys("U").contains("U.9"));
    EXPECT_TRUE(told().isEmpty());
    EXPECT_TRUE(barText().contains("上一次撤消或恢复中断了，现已做完。"))
        << barText().toStdString();
}

TEST_F(MenuOfHistory, WhatWasDoneAgainIsNotToldAsNewsOfAnotherProgram) {
    open("T.1");
    deleteNodeThatTakesAnother();
    item("mnuUndo").trigger();
    form.reset(); // the program ends, and starts again
    openAsItIs();
    item("mnuRedo").trigger();
    ASSERT_FALSE(isShown("T.2"));
    EXPECT_TRUE(bar().isHidden());
    comeBackToTheWindow();
    EXPECT_TRUE(bar().isHidden());
}

} // namespace
} // namespace qvnd::test
