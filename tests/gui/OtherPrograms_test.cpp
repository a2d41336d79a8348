#include "gui/support/DesktopWorld.h"
#include "gui/support/PlanEditWindow.h"
#include "gui/support/Renaming.h"
#include "gui/support/WorkbenchWindow.h"
#include "outline/CurrentPlan.h"
#include "support/FakeTurnWait.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QDragMoveEvent>
#include <QElapsedTimer>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QTreeWidget>

#include <memory>

namespace qvnd::test {
namespace {

// The workbench while another program works on the same databases.
class OtherProgramsWindow : public WorkbenchWindow {
protected:
    // They have the turn until the test gives it back, or a command has waited for it.
    void theyHaveTheTurn() {
        world.state.Turn = std::make_unique<files::WorkSpaceTurn>(world.folder.path());
        world.state.Turn->setWait(&wait);
        wait.goOn = [this] {
            theirs.giveBack();
            return true;
        };
        theirs.take();
    }
    void expectNobodyWaited() {
        EXPECT_TRUE(wait.told.isEmpty()) << wait.told.join(' ').toStdString();
        EXPECT_TRUE(world.messages.shown.empty()) << lastMessage().toStdString();
    }
    void dragOver(const QString& key) {
        QMimeData data;
        data.setData(outline::OutlineModel::nodeMimeType, "TrvCurrent\nT.1");
        QDragEnterEvent enter(rowOf(trvCurrent(), key), Qt::CopyAction, &data, Qt::LeftButton, {});
        QDragMoveEvent move(rowOf(trvCurrent(), key), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(trvCurrent().viewport(), &enter);
        QCoreApplication::sendEvent(trvCurrent().viewport(), &move);
    }
    QString nameOf(const QString& key) {
        return world.state.gDbUser->OpenRecordset("Select * from T where Key='" + key + "'")
            ->Get(u"名称")
            .ToText();
    }
    void theyAdd(const OutlineRowText& row) {
        jet::DBEngine engine;
        const auto db = engine.Workspaces(0).OpenDatabase(world.state.gDbUser->Name());
        OutlineWorld::add(*db->OpenRecordset("Select * from T"), row);
    }
    QStringList shownKeys() const { return OutlineWorld::shown(world.workbench.TrvCurrent); }

    files::WorkSpaceTurn theirs{world.folder.path()};
    FakeTurnWait wait;
};

TEST_F(OtherProgramsWindow, WhatTheyChangedIsShownBeforeTheNextCommandActs) {
    open("T.1");
    world.messages.otherwise = desktop::Answer::yes;
    theyAdd({"T.4", "名T.4"});
    item("mnuEditDelete").trigger();
    EXPECT_EQ(lastMessage(),
              "另一个程序改动了方案或模板，现在显示的是改动后的内容。请再操作一次。");
    EXPECT_EQ(shownKeys(), (QStringList{"T", "T.1", "T.1.1", "T.2", "T.2.1", "T.3", "T.4"}));
    item("mnuEditDelete").trigger();
    EXPECT_EQ(lastMessage(), "真的要删除[名T.1]吗？");
    EXPECT_EQ(shownKeys(), (QStringList{"T", "T.2", "T.2.1", "T.3", "T.4"}));
}

TEST_F(OtherProgramsWindow, WhatTheyChangedIsShownWhenTheUserComesBackFromThem) {
    open("T.1");
    theyAdd({"T.4", "名T.4"});
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(form.get(), &activation);
    EXPECT_TRUE(shownKeys().contains("T.4"));
    EXPECT_TRUE(world.messages.shown.empty());
}

TEST_F(OtherProgramsWindow, ACommandWaitsForItsTurn) {
    open("T.1");
    world.messages.otherwise = desktop::Answer::yes;
    theyHaveTheTurn();
    item("mnuEditDelete").trigger();
    EXPECT_EQ(wait.asked, 1);
    EXPECT_FALSE(shownKeys().contains("T.1"));
    EXPECT_FALSE(world.state.Turn->isTaken());
}

TEST_F(OtherProgramsWindow, AClickWaitsForNobodyAndSelectsItsNode) {
    open();
    theyHaveTheTurn();
    QElapsedTimer clock;
    clock.start();
    click(trvCurrent(), "T.1");
    EXPECT_LT(clock.elapsed(), 1000);
    expectNobodyWaited();
    EXPECT_EQ(selected(), "T.1");
    EXPECT_EQ(world.workbench.clickedKey, "T.1");
    EXPECT_TRUE(world.workbench.mnuLTFolder);
}

TEST_F(OtherProgramsWindow, NothingThatOnlyReadsSelectsOrExpandsWaitsForThem) {
    open("T.1");
    theyHaveTheTurn();
    QTest::keyClick(&trvCurrent(), Qt::Key_Down);
    dragOver("T.3");
    trvCurrent().collapseAll();
    trvCurrent().expandAll();
    click(trvCurrent(), "T.2", Qt::RightButton);
    if (QWidget* menu = QApplication::activePopupWidget()) {
        menu->close();
    }
    trvTemplate().expandAll();
    click(trvTemplate(), "M.1");
    item("mnuCopy").trigger();
    trvUser().expandAll();
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(form.get(), &activation);
    for (const char* shows : {"mnuContent", "mnuIndex", "mnuAbout", "mnuChongDie", "mnuPingPu"}) {
        item(shows).trigger();
    }
    expectNobodyWaited();
    EXPECT_EQ(selected(), "T.2");
    EXPECT_EQ(world.workbench.copySourceKey, "M.1");
}

TEST_F(OtherProgramsWindow, AClickOnTheLibraryWaitsWhereItOpensAPlan) {
    open();
    click(trvUser(), "T");
    trvUser().expandAll();
    theyHaveTheTurn();
    click(trvUser(), "T.1");
    expectNobodyWaited();
    click(trvUser(), "U");
    EXPECT_EQ(wait.told.size(), 2);
    EXPECT_EQ(shownKeys(), (QStringList{"U", "U.1"}));
}

TEST_F(OtherProgramsWindow, AClickSeesWhatTheyChangedBehindIt) {
    open("T.1");
    theyAdd({"T.4", "名T.4"});
    click(trvCurrent(), "T.2");
    EXPECT_TRUE(shownKeys().contains("T.4"));
    EXPECT_EQ(selected(), "T.2");
    EXPECT_EQ(world.workbench.clickedKey, "T.2");
    EXPECT_TRUE(world.messages.shown.empty());
    EXPECT_EQ(frame.status.join(' '), "另一个程序改动了方案或模板，现在显示的是改动后的内容。");
}

TEST_F(OtherProgramsWindow, ACommandWhoseWaitIsCancelledLeavesAllAsItIs) {
    open("T.1");
    world.messages.otherwise = desktop::Answer::yes;
    theyHaveTheTurn();
    wait.goOn = [] { return false; };
    item("mnuEditDelete").trigger();
    EXPECT_EQ(wait.told.size(), 2);
    EXPECT_TRUE(world.messages.shown.empty());
    EXPECT_TRUE(shownKeys().contains("T.1"));
    theirs.giveBack();
    item("mnuEditDelete").trigger();
    EXPECT_FALSE(shownKeys().contains("T.1"));
}

TEST_F(OtherProgramsWindow, ANameThatIsBeingTypedAndTheCommandBehindItWaitOnce) {
    open("T.1");
    QLineEdit* editor = beginRenaming(trvCurrent());
    ASSERT_NE(editor, nullptr);
    editor->setText("基础");
    theyHaveTheTurn();
    world.messages.otherwise = desktop::Answer::no;
    item("mnuEditDelete").trigger();
    EXPECT_EQ(wait.told.count("end"), 1);
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(lastMessage(), "真的要删除[基础]吗？");
    EXPECT_EQ(nameOf("T.1"), "基础");
}

TEST_F(OtherProgramsWindow, ANameWhoseWaitIsCancelledIsToldOnTheStatusBarAndTheCommandDoesNotRun) {
    open("T.1");
    QLineEdit* editor = beginRenaming(trvCurrent());
    ASSERT_NE(editor, nullptr);
    editor->setText("基础");
    theyHaveTheTurn();
    wait.goOn = [] { return false; };
    item("mnuEditDelete").trigger();
    EXPECT_EQ(wait.told.count("end"), 1);
    EXPECT_TRUE(world.messages.shown.empty());
    EXPECT_EQ(frame.status, QStringList("名称“基础”没有改成。"));
    EXPECT_EQ(nameOf("T.1"), "名T.1");
}

// True: the user waits until they give the turn back; false: the user cancels.
class RenamingThatWaits : public OtherProgramsWindow, public testing::WithParamInterface<bool> {};

TEST_P(RenamingThatWaits, LeavesTheKeyboardToTheTree) {
    open("T.1");
    // Where nobody has the keyboard, the first of the tab order gets it: not the tree, in this
    // test.
    QWidget::setTabOrder(form->findChild<QPushButton*>("cmdExit"), &trvCurrent());
    QLineEdit* editor = beginRenaming(trvCurrent());
    ASSERT_NE(editor, nullptr);
    editor->setText("基础");
    theyHaveTheTurn();
    wait.goOn = [this] {
        QDialog progress(form.get());
        progress.setModal(true);
        progress.show();
        progress.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&progress));
        theirs.giveBack();
        return GetParam();
    };
    QTest::keyClick(editor, Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return wait.told.count("end") == 1; }));
    form->activateWindow(); // as a window manager does behind a dialog
    EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
    EXPECT_TRUE(QTest::qWaitFor([this] { return trvCurrent().hasFocus(); }));
    EXPECT_EQ(nameOf("T.1"), GetParam() ? "基础" : "名T.1");
}

INSTANTIATE_TEST_SUITE_P(Wait, RenamingThatWaits, testing::Bool());

TEST_F(OtherProgramsWindow, ANameTypedOverWhatTheyChangedDoesNotReachAnotherNode) {
    open("T.2");
    QLineEdit* editor = beginRenaming(trvCurrent());
    ASSERT_NE(editor, nullptr);
    editor->setText("基础");
    theyAdd({"T.4", "名T.4"});
    click(trvCurrent(), "T.1");
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(lastMessage(),
              "另一个程序改动了方案或模板，现在显示的是改动后的内容。请再操作一次。");
    for (const char* key : {"T", "T.1", "T.1.1", "T.2", "T.2.1", "T.3", "T.4"}) {
        EXPECT_NE(nameOf(key), "基础") << key;
    }
}

TEST_F(OtherProgramsWindow, GivingBackTheSelectedNodeIsNoCommand) {
    open();
    theyAdd({"T.4", "名T.4"});
    theyHaveTheTurn();
    form->restore({{}, 0, "T.1"});
    expectNobodyWaited();
    EXPECT_EQ(selected(), "T.1");
    EXPECT_EQ(world.workbench.clickedKey, "T.1");
    EXPECT_TRUE(item("mnuLTFolder").isEnabled());
}

TEST_F(OtherProgramsWindow, TheLoadAdoptsWhateverTheyHaveChangedBefore) {
    open();
    theyAdd({"T.4", "名T.4"});
    world.folder.makeFolder("用户模板/V");
    OutlineWorld::makeTable(*world.create(store::planDatabasePath(world.state, "V")), "V",
                            {{"V", "V"}});
    form->Load();
    EXPECT_TRUE(world.registered(*world.state.gDbUser).contains("V"));
    EXPECT_TRUE(shownKeys().contains("T.4"));
    EXPECT_NE(lastMessage(),
              "另一个程序改动了方案或模板，现在显示的是改动后的内容。请再操作一次。");
}

// The plan edit window beside them.
class OtherProgramsBesidePlanEdit : public PlanEditWindow {
protected:
    void theyAdd(const OutlineRowText& row) {
        jet::DBEngine theirs;
        const auto db = theirs.Workspaces(0).OpenDatabase(world.state.gDbUser->Name());
        OutlineWorld::add(*db->OpenRecordset("Select * from T"), row);
    }
    QStringList shownKeys() { return OutlineWorld::shown(tree().outline().tree()); }
    void expectToldAndShown() {
        EXPECT_EQ(messages(), QStringList("另一个程序改动了方案或模板，现在显示的是改动后的内容。"
                                          "请再操作一次。"));
        EXPECT_EQ(shownKeys(), (QStringList{"T", "T.1", "T.1.1", "T.2", "T.3"}));
        world.messages.shown.clear();
    }
};

TEST_F(OtherProgramsBesidePlanEdit, NoCommandActsOnAnOutlineThatTheyHaveChanged) {
    showSettings = [] { ADD_FAILURE() << "the settings came up"; };
    for (const char* command : {"mnuBuildbid", "mnuBrowseDoc", "mnuDocOpen", "mnuOpenDoc",
                                "mnuBidLike", "mnuBul", "mnuBidSet"}) {
        open();
        theyAdd({"T.3", "新加的"});
        choose(command);
        expectToldAndShown();
        EXPECT_TRUE(preview.shown.isEmpty()) << command;
        EXPECT_FALSE(QFile::exists(finished())) << command;
        world.state.gDbUser->Execute("Delete * from T where Key='T.3'");
        form.reset();
    }
}

TEST_F(OtherProgramsBesidePlanEdit, GeneratesWhatTheyHaveAddedOnceItIsShown) {
    open();
    theyAdd({"T.3", "新加的"});
    choose("mnuBuildbid");
    expectToldAndShown();
    choose("mnuBuildbid");
    EXPECT_TRUE(QFile::exists(finished())) << messages().join('\n').toStdString();
}

TEST_F(OtherProgramsBesidePlanEdit, ClicksAndWhatOnlyShowsWaitForNobody) {
    open();
    world.state.Turn = std::make_unique<files::WorkSpaceTurn>(world.folder.path());
    FakeTurnWait wait;
    world.state.Turn->setWait(&wait);
    files::WorkSpaceTurn theirs(world.folder.path());
    theirs.take();
    QElapsedTimer clock;
    clock.start();
    click("T.1");
    click("T.1.1");
    choose("mnuBrowsebid");
    choose("mnuBidData");
    choose("mnuBack");
    EXPECT_LT(clock.elapsed(), 2000);
    EXPECT_TRUE(wait.told.isEmpty());
    EXPECT_TRUE(item("mnuOpenDoc").isEnabled());
    EXPECT_EQ(frame.asked, (QStringList{"unload", "show"}));
}

TEST_F(OtherProgramsBesidePlanEdit, TheCheckLooksAtWhatTheyHaveAddedAndWaitsForNobody) {
    switches.gBlankLineAroundTitle = true;
    open();
    world.state.Turn = std::make_unique<files::WorkSpaceTurn>(world.folder.path());
    FakeTurnWait wait;
    world.state.Turn->setWait(&wait);
    files::WorkSpaceTurn theirs(world.folder.path());
    theirs.take();
    theyAdd({"T.3", "新加的"});
    choose("mnuCheck");
    EXPECT_TRUE(wait.told.isEmpty());
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_EQ(shownKeys(), (QStringList{"T", "T.1", "T.1.1", "T.2", "T.3"}));
    const auto* found = form->findChild<QTreeWidget*>("lstFindings");
    ASSERT_NE(found, nullptr);
    ASSERT_EQ(found->topLevelItemCount(), 1);
    EXPECT_EQ(found->topLevelItem(0)->text(0), "新加的") << "as an empty folder";
    form.reset();
}

TEST_F(OtherProgramsBesidePlanEdit, APlanThatIsGoneLeavesTheTreeEmpty) {
    open();
    {
        jet::DBEngine theirs;
        theirs.Workspaces(0).OpenDatabase(world.state.gDbUser->Name())->TableDefs().Delete("T");
    }
    choose("mnuBrowseDoc");
    EXPECT_EQ(messages().size(), 1);
    EXPECT_EQ(shownKeys(), QStringList());
    EXPECT_FALSE(item("mnuOpenDoc").isEnabled());
}

TEST_F(OtherProgramsBesidePlanEdit, ACommandHasTheShownPlanStayTheOpenOne) {
    open();
    {
        jet::DBEngine theirs;
        outline::setCurrentPlan(*theirs.Workspaces(0).OpenDatabase(world.state.gDbUser->Name()),
                                "U");
    }
    choose("mnuBrowseDoc");
    EXPECT_EQ(world.registered(*world.state.gDbUser, "当前表"), QStringList("T"));
}

// The whole program beside them.
class OtherProgramsBesideTheProgram : public testing::Test {
protected:
    static QString splashLine() {
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            const auto* line = window->findChild<QLabel*>("waiting");
            if (window->objectName() == "frmSplash" && window->isVisible() && line) {
                return line->text();
            }
        }
        return "no splash";
    }

    FakeMessageBoxes messages;
    FakeFileDialogs dialogs;
    CallLog log;
    RecordingApplicationFactory word{log};
    DesktopWorld world{messages, dialogs, word};
    files::WorkSpaceTurn theirs{world.folder.path()};
};

TEST_F(OtherProgramsBesideTheProgram, TheStartShowsTheSplashWithALineWhileItWaits) {
    theirs.take();
    QString line;
    world.events.whileServed = [&] {
        line = splashLine();
        theirs.giveBack();
    };
    EXPECT_TRUE(world.start());
    EXPECT_TRUE(line.startsWith("正在等待：『") && line.endsWith("使用。")) << line.toStdString();
    EXPECT_EQ(splashLine(), "no splash");
    EXPECT_FALSE(world.run().program().state().Turn->isTaken());
}

TEST_F(OtherProgramsBesideTheProgram, TheStartTakesTheTurnBeforeItLaysAnythingOut) {
    bool isHeld = false;
    world.prepare = [&] { isHeld = !theirs.tryTake(); };
    EXPECT_TRUE(world.start());
    EXPECT_TRUE(isHeld);
    EXPECT_TRUE(theirs.tryTake());
}

TEST_F(OtherProgramsBesideTheProgram, TheTurnCoversThePlansThatAnotherProgramFolderMayUse) {
    ASSERT_TRUE(world.start());
    const TemporaryFolder another;
    files::WorkSpaceTurn elsewhere(another.path());
    elsewhere.cover(world.run().program().state().gUserTplPath);
    elsewhere.take();
    EXPECT_FALSE(world.run().program().state().Turn->tryTake());
}

TEST_F(OtherProgramsBesideTheProgram, TheExitWaitsAndStaysWhenTheWaitIsCancelled) {
    ASSERT_TRUE(world.start());
    FakeTurnWait wait;
    wait.goOn = [] { return false; };
    world.run().program().state().Turn->setWait(&wait);
    theirs.take();
    EXPECT_FALSE(world.mainForm().close());
    EXPECT_FALSE(world.hasEnded());
    wait.goOn = [this] {
        theirs.giveBack();
        return true;
    };
    EXPECT_TRUE(world.mainForm().close());
    EXPECT_TRUE(world.hasEnded());
    EXPECT_EQ(wait.told.count("end"), 2);
}

TEST_F(OtherProgramsBesideTheProgram, TheWorkbenchIsNotUnloadedBeforeTheTurnHasCome) {
    ASSERT_TRUE(world.start());
    FakeTurnWait wait;
    wait.goOn = [] { return false; };
    world.run().program().state().Turn->setWait(&wait);
    theirs.take();
    const QPointer<QWidget> before(world.mainForm().findChild<QWidget*>("frmBid"));
    world.mainForm().findChild<QAction*>("mnuBuild")->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(before);
}

} // namespace
} // namespace qvnd::test
