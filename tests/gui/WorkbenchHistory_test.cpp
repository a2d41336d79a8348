#include "gui/support/Renaming.h"
#include "gui/support/WorkbenchHistory.h"
#include "outline/TakeBack.h"
#include "outline/windows/HistoryWindow.h"
#include "outline/windows/NoteBar.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTreeWidget>

namespace qvnd::test {

TEST_F(WorkbenchHistory, ACancelledAdditionIsNoStep) {
    world.folder.makeFolder("Sys/用户模板");
    world.folder.write("来源/说明.rtf", "text");
    world.dialogs.chosen = world.folder.path("来源/说明.rtf");
    world.longRun.cancel = [] { return true; };
    open("T.1");
    item("mnuEQDoc").trigger();
    EXPECT_EQ(world.log.lines.size(), 3U) << "it was opened and no more";
    EXPECT_FALSE(world.state.History->undoable());
    EXPECT_TRUE(bar().isHidden());
    EXPECT_TRUE(world.messages.shown.empty());
    world.longRun.cancel = nullptr;
    item("mnuEQDoc").trigger();
    EXPECT_TRUE(world.state.History->undoable());
}

TEST_F(WorkbenchHistory, UndoNamesTheCommandAndBringsRowsFilesTreeAndSelectionBack) {
    open("T.1");
    EXPECT_FALSE(item("mnuUndo").isEnabled());
    const QStringList keys = world.keys("T");
    const QStringList ids = world.ids("T");
    deleteNode("T.1");
    EXPECT_EQ(item("mnuUndo").text(), "撤消 删除[名T.1]");
    EXPECT_FALSE(isShown("T.1"));
    item("mnuUndo").trigger();
    EXPECT_EQ(world.keys("T"), keys);
    EXPECT_EQ(world.ids("T"), ids);
    EXPECT_EQ(world.copiedKeys("T"), keys);
    EXPECT_TRUE(isShown("T.1.1"));
    EXPECT_EQ(selected(), "T.1");
    EXPECT_EQ(item("mnuRedo").text(), "恢复 删除[名T.1]");
    item("mnuRedo").trigger();
    EXPECT_FALSE(isShown("T.1"));
    EXPECT_FALSE(item("mnuRedo").isEnabled());
}

TEST_F(WorkbenchHistory, ABranchThatAnUndoBringsBackIsExpandedAsItWas) {
    open("T.3");
    trvCurrent().expandAll();
    const auto isExpanded = [this](const QString& key) {
        outline::OutlineModel& model = trvCurrent().outline();
        return trvCurrent().isExpanded(model.indexOf(&model.tree().Item(key)));
    };
    deleteNode("T.1");
    QCoreApplication::processEvents();
    EXPECT_TRUE(isExpanded("T.2"));
    item("mnuUndo").trigger();
    QCoreApplication::processEvents();
    EXPECT_TRUE(isExpanded("T") && isExpanded("T.2")) << "what stayed meanwhile";
    EXPECT_TRUE(isExpanded("T.1")) << "what was gone";
    trvCurrent().collapse(trvCurrent().currentIndex());
    item("mnuRedo").trigger();
    item("mnuUndo").trigger();
    QCoreApplication::processEvents();
    EXPECT_FALSE(isExpanded("T.1")) << "the user has collapsed it since";
}

TEST_F(WorkbenchHistory, TheKeysAreControlZAndControlShiftZAndControlY) {
    open("T.1");
    EXPECT_EQ(item("mnuUndo").shortcut(), QKeySequence("Ctrl+Z"));
    EXPECT_EQ(item("mnuRedo").shortcuts(),
              (QList<QKeySequence>{QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")}));
}

TEST_F(WorkbenchHistory, TheToolbarHasBothBehindThePositions) {
    open("T.1");
    const QList<QAction*> buttons = toolbar().actions();
    ASSERT_EQ(buttons.size(), outline::WorkbenchToolbar::positions + 3);
    EXPECT_EQ(buttons[14], toolbar().at(15));
    deleteNode("T.1");
    EXPECT_EQ(toolbar().undo()->toolTip(), "撤消 删除[名T.1]");
    toolbar().undo()->trigger();
    EXPECT_TRUE(isShown("T.1"));
    toolbar().redo()->trigger();
    EXPECT_FALSE(isShown("T.1"));
}

TEST_F(WorkbenchHistory, ADeletedPlanComesBackAndIsOpen) {
    open("T");
    deleteNode("T");
    EXPECT_EQ(world.workbench.TrvCurrent.Count(), 0);
    EXPECT_FALSE(world.folder.exists("用户模板/T"));
    item("mnuUndo").trigger();
    EXPECT_TRUE(isShown("T.2.1"));
    EXPECT_EQ(world.folder.read("用户模板/T/T.1.1.doc"), "document");
    EXPECT_TRUE(world.workbench.cmdEdit);
}

TEST_F(WorkbenchHistory, ARenamingIsTakenBack) {
    open("T.1");
    QLineEdit* editor = beginRenaming(trvCurrent());
    ASSERT_NE(editor, nullptr);
    editor->setText("新名");
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents(); // the editor closes with the next event
    EXPECT_EQ(item("mnuUndo").text(), "撤消 重命名[新名]");
    item("mnuUndo").trigger();
    EXPECT_EQ(world.workbench.TrvCurrent.Item("T.1").Text(), "名T.1");
}

TEST_F(WorkbenchHistory, TheMenuShortensTheNameOfANodeThatIsVeryLong) {
    const QString name = "首" + QString(200, u'长') + "尾";
    OutlineWorld::add(*world.state.gDbUser->OpenRecordset("Select * from T"), {"T.9", name, "否"});
    open("T.9");
    deleteNode("T.9");
    const QString text = item("mnuUndo").text();
    EXPECT_LT(text.size(), 50);
    EXPECT_TRUE(text.startsWith("撤消 删除[首") && text.contains("…") && text.endsWith("尾]"))
        << text.toStdString();
    EXPECT_EQ(toolbar().undo()->toolTip(), "撤消 删除[" + name + "]");
}

TEST_F(WorkbenchHistory, WhatACopyLeavesOutIsToldWithoutAWayBackWhereNothingWasCopied) {
    open("T.1");
    const auto paste = [this] {
        click(trvTemplate(), "M");
        item("mnuCopy").trigger();
        click(trvCurrent(), "T.1");
        item("mnuPaste").trigger();
    };
    paste();
    EXPECT_FALSE(bar().isVisible()) << "all came in";
    const QStringList keys = world.keys("T");
    paste();
    EXPECT_EQ(world.keys("T"), keys);
    ASSERT_TRUE(bar().isVisible());
    EXPECT_TRUE(form->findChild<outline::NoteBar*>()->text().contains("没有复制 2 项"));
    EXPECT_FALSE(form->findChild<QPushButton*>("noteUndo")->isVisible());
    EXPECT_FALSE(form->findChild<QPushButton*>("noteDetails")->isVisible());
}

TEST_F(WorkbenchHistory, TheBarTellsWhatElseACommandTookAndLeadsBack) {
    open("T.2");
    OutlineWorld::add(*world.state.gDbUser->OpenRecordset("Select * from T"),
                      {"T.20", "二十", "否"});
    EXPECT_TRUE(bar().isHidden());
    deleteNode("T.2");
    ASSERT_FALSE(bar().isHidden());
    EXPECT_EQ(barText(), "同时移除了 1 个节点：二十");
    press("noteUndo");
    EXPECT_TRUE(world.keys("T").contains("T.20"));
    EXPECT_TRUE(bar().isHidden());
}

TEST_F(WorkbenchHistory, TheBarTellsWhatARedoHasFoundChangedOutside) {
    open("T");
    deleteNode("T");
    item("mnuUndo").trigger();
    EXPECT_TRUE(bar().isHidden());
    world.folder.write("用户模板/T/T.1.1.doc", "edited in a word processor");
    item("mnuRedo").trigger();
    EXPECT_FALSE(world.folder.exists("用户模板/T"));
    ASSERT_FALSE(bar().isHidden());
    EXPECT_TRUE(barText().endsWith("外部改动[T.1.1.doc]")) << barText().toStdString();
    world.state.History->goTo(world.state.History->steps().last().id);
    EXPECT_EQ(world.folder.read("用户模板/T/T.1.1.doc"), "edited in a word processor");
}

TEST_F(WorkbenchHistory, TheBarOfAnUndoOffersToDoItAgainAndNotToGoFurtherBack) {
    open("T.1");
    deleteNode("T.3");
    click(trvTemplate(), "M.2");
    item("mnuCopy").trigger();
    click(trvCurrent(), "T.1");
    item("mnuPaste").trigger();
    const QString pasted = world.keys("T").back();
    world.folder.write("用户模板/T/" + pasted + ".doc", "edited in a word processor");
    item("mnuUndo").trigger();
    ASSERT_FALSE(isShown(pasted));
    ASSERT_TRUE(bar().isVisible());
    EXPECT_TRUE(barText().contains(pasted + ".doc")) << barText().toStdString();
    EXPECT_TRUE(hasButtons({"noteRedo", "noteDetails"}));
    EXPECT_LT(bar().height(), form->findChild<QPushButton*>("noteRedo")->height() + 20)
        << "for one line of text";
    press("noteRedo");
    EXPECT_TRUE(isShown(pasted));
    EXPECT_FALSE(isShown("T.3"));
}

TEST_F(WorkbenchHistory, TheBarTakesBackNoOtherStepThanItsOwn) {
    open("T.1");
    deleteNode("T.3");
    deleteNodeThatTakesAnother();
    ASSERT_TRUE(hasButtons({"noteUndo", "noteDetails"}));
    outline::undo(world.state, world.workbench, world.services());
    press("noteUndo");
    EXPECT_FALSE(isShown("T.3"));
    EXPECT_TRUE(isShown("T.2"));
    EXPECT_TRUE(bar().isHidden());
}

TEST_F(WorkbenchHistory, TheBarOfAStepThatWasTakenBackElsewhereGoesWhenTheUserComesBack) {
    open("T.1");
    deleteNodeThatTakesAnother();
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(form.get(), &activation);
    EXPECT_TRUE(bar().isVisible());
    world.state.History->undo();
    QCoreApplication::sendEvent(form.get(), &activation);
    EXPECT_TRUE(bar().isHidden());
}

TEST_F(WorkbenchHistory, TheBarOfAnUndoThatWasKilledAndEndedNowOffersDetailsAlone) {
    world.state.HistoryFound.restored = true;
    open("T.1");
    ASSERT_TRUE(bar().isVisible());
    EXPECT_TRUE(hasButtons({"noteDetails"}));
}

TEST_F(WorkbenchHistory, AKilledCommandBehindWhichAnotherCameIsLedToByTheListAlone) {
    open("T.1");
    deleteNode("T.3");
    world.state.HistoryFound.unfinished = world.state.History->undoable();
    deleteNode("T.2");
    ASSERT_TRUE(bar().isVisible());
    EXPECT_EQ(barText(), "上次运行没有做完“删除[名T.3]”就中断了。操作历史中可以回到它之前。");
    EXPECT_TRUE(hasButtons({"noteDetails"}));
}

TEST_F(WorkbenchHistory, TheBarHidesNothingAndGoesWithTheNextCommand) {
    open("T.2");
    OutlineWorld::add(*world.state.gDbUser->OpenRecordset("Select * from T"),
                      {"T.20", "二十", "否"});
    const QRect tree = form->findChild<QTabWidget*>("TabCurrent")->geometry();
    deleteNode("T.2");
    for (const char* name : {"TabCurrent", "fraSee", "TabTemplate", "lblResize", "imgSpliter"}) {
        EXPECT_FALSE(form->findChild<QWidget*>(name)->geometry().intersects(bar().geometry()))
            << name;
    }
    EXPECT_GT(bar().height(), 20);
    deleteNode("T.3"); // takes nothing else
    EXPECT_TRUE(bar().isHidden());
    EXPECT_EQ(form->findChild<QTabWidget*>("TabCurrent")->geometry(), tree);
}

TEST_F(WorkbenchHistory, TheWindowListsTheCommandsAndLeadsBackToBeforeOne) {
    open("T.1");
    deleteNode("T.1");
    deleteNode("T.3");
    item("mnuHistory").trigger();
    auto* steps = form->findChild<QTreeWidget*>("historySteps");
    ASSERT_EQ(steps->topLevelItemCount(), 2);
    EXPECT_TRUE(steps->topLevelItem(0)->text(2).startsWith("删除[名T.3]"));
    EXPECT_EQ(steps->topLevelItem(1)->text(1), "T");
    steps->setCurrentItem(steps->topLevelItem(1));
    auto* changes = form->findChild<QTreeWidget*>("historyChanges");
    ASSERT_EQ(changes->topLevelItemCount(), 2);
    EXPECT_EQ(changes->topLevelItem(0)->text(0), "移除 名T.1（T.1）");
    press("historyBefore");
    EXPECT_TRUE(isShown("T.1"));
    EXPECT_TRUE(isShown("T.3"));
    auto* search = form->findChild<QLineEdit*>("historySearch");
    search->setText("名T.3");
    EXPECT_EQ(steps->topLevelItemCount(), 1);
    auto* note = form->findChild<QLabel*>("historyNote");
    EXPECT_FALSE(note->isVisible());
    search->setText("没有的名称");
    EXPECT_EQ(steps->topLevelItemCount(), 0);
    EXPECT_TRUE(note->isVisible());
    EXPECT_EQ(note->text(), "没有符合条件的操作。");
}

TEST_F(WorkbenchHistory, TheWindowTakesASingleFileOut) {
    open("T");
    deleteNode("T");
    item("mnuHistory").trigger();
    auto* changes = form->findChild<QTreeWidget*>("historyChanges");
    QTreeWidgetItem* file = nullptr;
    for (int i = 0; i < changes->topLevelItemCount(); ++i) {
        if (changes->topLevelItem(i)->text(0).endsWith("T.1.1.doc")) {
            file = changes->topLevelItem(i);
        }
    }
    ASSERT_NE(file, nullptr);
    changes->setCurrentItem(file);
    press("historyTakeOut");
    const QStringList taken = world.folder.names().filter(QRegularExpression("^T\\.1\\.1-.*doc$"));
    ASSERT_EQ(taken.size(), 1);
    EXPECT_EQ(world.folder.read(taken.first()), "document");
    EXPECT_FALSE(world.folder.exists("用户模板/T"));
}

TEST_F(WorkbenchHistory, TheWindowLeadsToTheEndOfABranchThatAnotherCommandEnded) {
    open("T.1");
    deleteNode("T.1");
    item("mnuUndo").trigger();
    deleteNode("T.3");
    EXPECT_FALSE(item("mnuRedo").isEnabled());
    item("mnuHistory").trigger();
    EXPECT_EQ(titles(), QStringList({"删除[名T.3]", "删除[名T.1]"}));
    chooseStep(1);
    press("historyBehind");
    EXPECT_FALSE(isShown("T.1"));
    EXPECT_TRUE(isShown("T.3"));
    EXPECT_FALSE(form->findChild<QPushButton*>("historyBehind")->isEnabled()) << "it is there";
    EXPECT_TRUE(steps().topLevelItem(1)->text(2).contains("现在"));
}

TEST_F(WorkbenchHistory, TheListIsOrderedByTimePlanOrCommandAndNarrowedByPlanAndTime) {
    open("T.1");
    deleteNode("T.3");
    deleteNode("T.1");
    world.messages.otherwise = desktop::Answer::yes;
    click(trvUser(), "U");
    deleteNode("U.1");
    item("mnuHistory").trigger();
    EXPECT_EQ(titles(), QStringList({"删除[名U.1]", "删除[名T.1]", "删除[名T.3]"}));
    steps().sortByColumn(2, Qt::AscendingOrder);
    EXPECT_EQ(titles(), QStringList({"删除[名T.1]", "删除[名T.3]", "删除[名U.1]"}));
    steps().sortByColumn(1, Qt::DescendingOrder);
    EXPECT_EQ(titles().first(), "删除[名U.1]");
    pick("historyPlan", "T");
    EXPECT_EQ(titles().size(), 2);
    EXPECT_FALSE(titles().contains("删除[名U.1]"));
    pick("historyPeriod", "今天");
    EXPECT_EQ(titles().size(), 2);
}

// As thinning leaves it: one step of a day on several plans, with all that was told in the day.
TEST(HistoryWindow, AStepOfAWholeDayStandsUnderEachPlanAndItsFirstLinesAreTold) {
    history::Step day;
    day.id = 1;
    day.title = "删除[甲]、添加[乙]等";
    day.plan = "T\nU";
    day.time = QDateTime::currentDateTime();
    day.note = "同时移除了 1 个节点：文" + QString("\n覆盖了 1 个文件：文.doc").repeated(6);
    outline::HistoryWindow window({[&](const QString&) { return QList<history::Step>{day}; },
                                   [](std::int64_t) { return QList<history::Change>(); },
                                   [] { return std::int64_t{1}; },
                                   [](std::int64_t, const history::Change&) { return QString(); }},
                                  nullptr);
    window.refresh();
    auto* plans = window.findChild<QComboBox*>("historyPlan");
    auto* list = window.findChild<QTreeWidget*>("historySteps");
    EXPECT_EQ(list->topLevelItem(0)->text(1), "T、U");
    for (const char* plan : {"T", "U"}) {
        plans->setCurrentIndex(plans->findText(plan));
        emit plans->activated(plans->currentIndex());
        EXPECT_EQ(list->topLevelItemCount(), 1) << plan;
    }
    const auto* note = window.findChild<QLabel*>("historyNote");
    EXPECT_EQ(note->text().count('\n'), 6);
    EXPECT_TRUE(note->text().endsWith("共 7 行")) << note->text().toStdString();
    EXPECT_EQ(note->toolTip(), day.note);
}

TEST_F(WorkbenchHistory, TheWindowPutsASingleNodeBack) {
    open("T.1");
    deleteNode("T.1");
    deleteNode("T.3");
    item("mnuHistory").trigger();
    chooseStep(1);
    chooseChange("（T.1.1）");
    press("historyPutBack");
    EXPECT_TRUE(lastMessage().contains("请先放回上级节点")) << lastMessage().toStdString();
    chooseStep(1);
    chooseChange("（T.1）");
    press("historyPutBack");
    EXPECT_TRUE(isShown("T.1.1"));
    EXPECT_FALSE(isShown("T.3"));
    EXPECT_EQ(selected(), "T.1");
    EXPECT_EQ(titles().first(), "放回[名T.1]");
    EXPECT_EQ(item("mnuUndo").text(), "撤消 放回[名T.1]");
}

TEST_F(WorkbenchHistory, AStepThatIsNoLongerInTheHistoryIsToldSo) {
    open("T.1");
    deleteNode("T.3");
    item("mnuHistory").trigger();
    auto* window = form->findChild<outline::HistoryWindow*>();
    emit window->goBefore(4711);
    EXPECT_EQ(frame.status.last(), "这一步已不在操作历史中。");
    EXPECT_FALSE(isShown("T.3"));
}

TEST_F(WorkbenchHistory, TheDetailsOfTheBarAreThoseOfItsStep) {
    open("T.2");
    OutlineWorld::add(*world.state.gDbUser->OpenRecordset("Select * from T"),
                      {"T.20", "二十", "否"});
    deleteNode("T.2");
    press("noteDetails");
    EXPECT_EQ(changes().findItems("移除 二十（T.20）", Qt::MatchExactly).size(), 1);
    EXPECT_EQ(form->findChild<QLabel*>("historyNote")->text(), barText());
}

TEST_F(WorkbenchHistory, WithoutAPlanAnyMoreTheCommandsOfItsNodesAreClosed) {
    open("T.1");
    deleteNode("T");
    item("mnuUndo").trigger();
    item("mnuRedo").trigger();
    EXPECT_EQ(world.workbench.TrvCurrent.Count(), 0);
    for (const char* name : {"mnuEQFolder", "mnuLTFolder", "mnuEditDelete", "mnuEdit"}) {
        EXPECT_FALSE(item(name).isEnabled()) << name;
    }
    item("mnuUndo").trigger();
    EXPECT_TRUE(item("mnuEdit").isEnabled());
}

TEST_F(WorkbenchHistory, ACommandIsRefusedWithWordsWhereTheHistoryCannotBeWritten) {
    world.folder.write("用户模板/.~history", "in the way");
    open("T.1");
    const QStringList keys = world.keys("T");
    click(trvCurrent(), "T.1");
    world.messages.answers = {desktop::Answer::yes, desktop::Answer::no};
    item("mnuEditDelete").trigger();
    EXPECT_EQ(world.keys("T"), keys);
    EXPECT_TRUE(lastMessage().contains("操作历史不能写入")) << lastMessage().toStdString();
}

TEST_F(WorkbenchHistory, WhatWasNotDeletedAsTheHistoryCannotBeWrittenStaysOnTheScreen) {
    world.folder.write("用户模板/.~history", "in the way");
    open("T");
    click(trvCurrent(), "T");
    world.messages.answers = {desktop::Answer::yes, desktop::Answer::no};
    item("mnuDelete").trigger();
    EXPECT_TRUE(world.folder.exists("用户模板/T/T.1.1.doc"));
    EXPECT_TRUE(isShown("T.2.1"));
    EXPECT_EQ(selected(), "T");
    EXPECT_TRUE(item("mnuDelete").isEnabled());
}

TEST_F(WorkbenchHistory, ACommandGoesOnWithoutTheHistoryWhenTheUserSaysSo) {
    world.folder.write("用户模板/.~history", "in the way");
    open("T.1");
    click(trvCurrent(), "T.1");
    world.messages.answers = {desktop::Answer::yes, desktop::Answer::yes};
    item("mnuEditDelete").trigger();
    EXPECT_FALSE(world.keys("T").contains("T.1"));
    EXPECT_FALSE(item("mnuUndo").isEnabled());
    const auto boxes = world.messages.shown.size();
    deleteNode("T.3");
    EXPECT_FALSE(world.keys("T").contains("T.3"));
    EXPECT_EQ(world.messages.shown.size(), boxes + 1) << "it is asked once in a run";
}

// Nothing of it is to be undone, so no bar offers that.
TEST_F(WorkbenchHistory, AKilledExitIsToldInTheStatusBar) {
    world.state.HistoryFound.exitKilled = true;
    open("T.1");
    EXPECT_TRUE(frame.status.contains("上次运行在退出时中断了；所做的操作都已保存。"));
    EXPECT_TRUE(bar().isHidden());
}

TEST_F(WorkbenchHistory, WhatCameFromOutsideBehindAKilledStartIsToldInTheBar) {
    world.state.HistoryFound.note = "外部改动";
    open("T.1");
    EXPECT_EQ(barText(), "外部改动");
}

TEST_F(WorkbenchHistory, KilledCommandsAreToldTogetherOnceAndTheWayBackToThem) {
    open("T.1");
    deleteNode("T.3");
    const auto last = world.state.History->undoable();
    ASSERT_TRUE(last);
    world.state.HistoryFound.unfinished = last;
    world.state.HistoryFound.unfinishedBefore = QStringList{"一", "二", "三", "四", "五", "六"};
    deleteNode("T.1");
    EXPECT_TRUE(
        barText().startsWith("上次运行没有做完“删除[名T.3]”就中断了。操作历史中可以回到它之前。\n"
                             "在它以前也没有做完：一、二、三、四、五等。"))
        << barText().toStdString();
    world.state.HistoryFound.unfinished = last;
    item("mnuUndo").trigger();
    EXPECT_TRUE(barText().startsWith("上次运行没有做完“删除[名T.3]”就中断了。撤消可以回到它之前。"))
        << barText().toStdString();
}

} // namespace qvnd::test
