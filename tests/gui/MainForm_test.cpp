#include "startup/windows/MainForm.h"

#include "platform/registry/RegistryFile.h"
#include "startup/FirstStart.h"
#include "startup/windows/StatusPanel.h"
#include "startup/windows/frmAbout.h"
#include "startup/windows/frmSplash.h"
#include "support/FakeHelpWindow.h"
#include "support/FakeLongRun.h"
#include "support/FakeShell.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QStatusBar>
#include <QStyleOptionTitleBar>
#include <QTimer>

using namespace qvnd;
using namespace qvnd::startup;
using namespace Qt::StringLiterals;

namespace {

struct Frame : testing::Test, ProgramWindows {
    test::TemporaryFolder folder;
    test::FakeMessageBoxes messages;
    test::CountingSplash splash;
    test::FakeFileDialogs dialogs;
    test::CountingEvents events;
    test::CallLog log;
    test::RecordingApplicationFactory word{log};
    test::FakeLongRun longRun;
    test::FakeHelpWindow helpWindow;
    test::FakeShell shell;
    registry::RegistryFile registry;
    Program program{registry, {messages, splash, dialogs, events, word, longRun}, *this};
    int loaded = 0;
    int made = 0;   // plan edit windows
    int filled = 0; // how often one was
    int ended = 0;
    QPointer<QWidget> planEditor;
    QMenu editorMenu{u"施工方案编辑(&E)"_s};
    std::unique_ptr<MainForm> form;
    QMenu childMenu{u"方案编辑(&E)"_s};

    Frame() {
        layOutProgramFolder(folder.path());
        program.start(folder.path());
    }
    void showMainForm() override {
        form = std::make_unique<MainForm>(
            MainForm::Parts{program, registry, messages, helpWindow, shell,
                            [this] {
                                ++loaded;
                                return ChildWindow{new QWidget, {&childMenu}, {}};
                            },
                            [this] {
                                ++made;
                                planEditor = new QWidget;
                                return ChildWindow{planEditor, {&editorMenu}, [this] { ++filled; }};
                            },
                            [this] { ++ended; }});
        form->Load();
        form->show();
    }
    void showFrmBid() override { form->showWorkbench(); }

    QMdiArea& area() { return *form->findChild<QMdiArea*>(); }
    QStringList menuBar() {
        QStringList titles;
        for (const QAction* action : form->menuBar()->actions()) {
            if (action->isVisible()) {
                titles << action->text();
            }
        }
        return titles;
    }
    void trigger(const QString& name) {
        auto* action = form->findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << name.toStdString();
        action->trigger();
    }
    // The frame's own menus stand only while no child window does.
    void unloadChild() {
        QMdiSubWindow* child = area().activeSubWindow();
        area().removeSubWindow(child);
        delete child;
        QApplication::processEvents();
    }
};

TEST_F(Frame, BearsItsCaption) { EXPECT_EQ(form->windowTitle(), "卷宗编制系统"); }

TEST_F(Frame, PanelsTellUserWorkFolderAndTodaysDate) {
    const auto panel = [&](int i) {
        return form->findChild<QLabel*>("st1Panel" + QString::number(i))->text();
    };
    EXPECT_TRUE(panel(1).startsWith("当前用户： "));
    EXPECT_EQ(panel(2), "当前工作路径： " + program.state().gWorkPath);
    EXPECT_EQ(panel(3), "今天是： " + QDate::currentDate().toString("yyyy年MM月dd日"));
}

TEST_F(Frame, EachPanelHasAThirdOfTheWidth) {
    for (const int width : {900, 1300}) {
        form->resize(width, 600);
        QApplication::processEvents();
        for (int i = 1; i <= 3; ++i) {
            const int panel = form->findChild<QLabel*>("st1Panel" + QString::number(i))->width();
            EXPECT_NEAR(panel, width / 3.0, 20) << i;
        }
    }
}

TEST_F(Frame, APathThatIsTooLongLosesItsMiddle) {
    form->resize(900, 600);
    QApplication::processEvents();
    auto* panel = form->findChild<StatusPanel*>("st1Panel2");
    panel->tell("当前工作路径： /home/user/" + QString(300, 'x') + "/工程文档管理/");
    EXPECT_TRUE(panel->shownText().startsWith("当前工作路径： /home/"))
        << panel->shownText().toStdString();
    EXPECT_TRUE(panel->shownText().contains(QChar(0x2026)));
    EXPECT_TRUE(panel->shownText().endsWith("/工程文档管理/")) << panel->shownText().toStdString();
    EXPECT_LE(panel->fontMetrics().horizontalAdvance(panel->shownText()), panel->width());
    EXPECT_EQ(panel->toolTip(), panel->text());
    panel->tell("短");
    EXPECT_EQ(panel->shownText(), "短");
}

TEST(StatusPanels, TellUserWorkFolderAndDate) {
    const auto panels = statusPanels("张工", "/工程/", QDate(2026, 3, 7));
    EXPECT_EQ(panels[0], "当前用户： 张工");
    EXPECT_EQ(panels[1], "当前工作路径： /工程/");
    EXPECT_EQ(panels[2], "今天是： 2026年03月07日");
}

TEST_F(Frame, TheCascadedWorkbenchShowsNoCloseButton) {
    trigger("listWin");
    QMdiSubWindow* child = area().subWindowList().constFirst();
    child->showNormal();
    QStyleOptionTitleBar bar;
    bar.initFrom(child);
    bar.subControls = QStyle::SC_All;
    bar.titleBarFlags = child->windowFlags();
    bar.rect = QRect(0, 0, child->width(), 24);
    const auto place = [&](QStyle::SubControl part) {
        return child->style()->subControlRect(QStyle::CC_TitleBar, &bar, part, child);
    };
    EXPECT_TRUE(place(QStyle::SC_TitleBarCloseButton).isEmpty());
    EXPECT_FALSE(place(QStyle::SC_TitleBarSysMenu).isEmpty());
    const QRect maximise = place(QStyle::SC_TitleBarMaxButton);
    EXPECT_GT(maximise.right(), child->width() - 2 * maximise.width()) << "no gap in its place";

    QImage drawn(bar.rect.size(), QImage::Format_RGB32);
    QImage behind(bar.rect.size(), QImage::Format_RGB32);
    for (QImage* image : {&drawn, &behind}) {
        image->fill(Qt::white);
        QPainter painter(image);
        QStyleOptionTitleBar shown = bar;
        if (image == &behind) {
            shown.subControls.setFlag(QStyle::SC_TitleBarCloseButton, false);
        }
        child->style()->drawComplexControl(QStyle::CC_TitleBar, &shown, &painter, child);
    }
    EXPECT_EQ(drawn, behind);
}

TEST_F(Frame, TheWorkbenchMaximisedAgainBringsNoDeadButtonIntoTheMenuBar) {
    QMdiSubWindow* child = area().subWindowList().constFirst();
    trigger("listWin");
    child->showNormal();
    QApplication::processEvents();
    child->showMaximized();
    QApplication::processEvents();
    const QWidget* buttons = form->menuBar()->cornerWidget(Qt::TopRightCorner);
    EXPECT_TRUE(buttons == nullptr || !buttons->isVisible());
}

TEST_F(Frame, ComesUpWithoutARoster) {
    EXPECT_EQ(program.state().gDbRoster, nullptr);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Frame, ShowsTheMenusOfTheActiveChild) {
    EXPECT_EQ(menuBar(), QStringList{"方案编辑(&E)"});
    unloadChild();
    EXPECT_EQ(menuBar(), (QStringList{"方案管理(&S)", "窗口(&W)", "帮助(&H)"}));
}

TEST_F(Frame, EntriesBearTheirCaptions) {
    const std::pair<const char*, const char*> captions[] = {
        {"mnuBuild", "方案编辑(&B)"}, {"MenuExit", "退出(&E)"}, {"MenuPopDelprj", "删除方案(&D)"},
        {"listWin", "层叠(&C)"},      {"winA", "横向平铺(&H)"}, {"help1", "内容(&C)"},
        {"help2", "索引(&I)"},        {"sysAbout", "关于"}};
    for (const auto& [name, caption] : captions) {
        ASSERT_NE(form->findChild<QAction*>(name), nullptr) << name;
        EXPECT_EQ(form->findChild<QAction*>(name)->text(), caption);
    }
    EXPECT_TRUE(form->findChild<QAction*>("s1")->isSeparator());
    EXPECT_EQ(form->findChild<QMenu*>("PMenuDelprj")->title(), "PopDelprj");
}

TEST_F(Frame, DeletePlanOfThePopUpDoesNothingByItself) {
    trigger("MenuPopDelprj");
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(ended, 0);
}

TEST_F(Frame, BuildUnloadsTheActiveChildAndMaximisesTheWorkbench) {
    EXPECT_EQ(loaded, 1);
    trigger("mnuBuild");
    EXPECT_EQ(loaded, 2) << "the active child was the workbench itself";
    ASSERT_NE(area().activeSubWindow(), nullptr);
    EXPECT_TRUE(area().activeSubWindow()->isMaximized());
    EXPECT_EQ(area().subWindowList().size(), 1);
}

TEST_F(Frame, BuildUnloadsAnotherActiveChildAndKeepsTheWorkbenchAsItIs) {
    auto* other = area().addSubWindow(new QWidget);
    other->show();
    area().setActiveSubWindow(other);
    trigger("mnuBuild");
    EXPECT_EQ(loaded, 1);
    EXPECT_EQ(area().subWindowList().size(), 1);
}

TEST_F(Frame, BuildWithNoChildOpenMaximisesTheWorkbenchWithoutAMessage) {
    unloadChild();
    trigger("mnuBuild");
    EXPECT_EQ(loaded, 2);
    EXPECT_TRUE(area().activeSubWindow()->isMaximized());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Frame, TheWorkbenchCannotBeClosedAlone) {
    area().activeSubWindow()->close();
    QApplication::processEvents();
    ASSERT_NE(area().activeSubWindow(), nullptr);
    EXPECT_TRUE(area().activeSubWindow()->isVisible());
}

TEST_F(Frame, ArrangesChildrenOverAndBesideEachOther) {
    auto* other = area().addSubWindow(new QWidget);
    other->show();
    trigger("listWin");
    EXPECT_TRUE(area().subWindowList()[0]->geometry().intersects(other->geometry()));
    trigger("winA");
    EXPECT_FALSE(area().subWindowList()[0]->geometry().intersects(other->geometry()));
}

TEST_F(Frame, TilesHorizontallyOneChildBelowTheOtherOverTheWholeWidth) {
    auto* other = area().addSubWindow(new QWidget);
    auto* small = area().addSubWindow(new QWidget);
    other->show();
    small->showMinimized();
    trigger("winA");
    const QRect first = area().subWindowList()[0]->geometry();
    const QRect second = other->geometry();
    EXPECT_FALSE(area().subWindowList()[0]->isMaximized());
    EXPECT_EQ(first.width(), area().viewport()->width());
    EXPECT_EQ(second.width(), area().viewport()->width());
    EXPECT_EQ(first.bottom() + 1, second.top());
    EXPECT_EQ(second.bottom() + 1, area().viewport()->height());
    EXPECT_TRUE(small->isMinimized());
}

TEST_F(Frame, HelpShowsContentsAndIndexOfTheHelpFile) {
    trigger("help1");
    trigger("help2");
    const QString file = program.state().HelpFile;
    EXPECT_EQ(helpWindow.shown, (QStringList{"contents " + file, "index " + file}));
}

TEST_F(Frame, WithoutAHelpFileTheUserIsTold) {
    program.state().HelpFile.clear();
    for (const char* entry : {"help1", "help2"}) {
        messages.shown.clear();
        trigger(entry);
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].text, "无法显示帮助目录，该工程没有相关联的帮助。");
        EXPECT_EQ(messages.shown[0].icon, desktop::Icon::information);
        EXPECT_EQ(messages.shown[0].title, "卷宗编制系统");
    }
    EXPECT_TRUE(helpWindow.shown.isEmpty());
}

TEST_F(Frame, AHelpThatFailsShowsItsReasonInAPlainBox) {
    helpWindow.failure = RunTimeError(error::pathAccess, u"帮助文件不能读取");
    trigger("help1");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "帮助文件不能读取");
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::none);
    EXPECT_EQ(messages.shown[0].title, "");
}

TEST_F(Frame, UnloadSavesThePlanAndClosesTheDatabases) {
    form->close();
    EXPECT_EQ(program.state().gDbUser, nullptr);
    EXPECT_EQ(program.state().gDbTemplate, nullptr);
    EXPECT_EQ(program.state().gDbBidSet, nullptr);
    EXPECT_EQ(area().subWindowList().size(), 0);
    EXPECT_EQ(ended, 1);
}

TEST_F(Frame, AnUnloadedChildGoesWithTheFrameAtTheLatest) {
    const QPointer<QWidget> child = area().subWindowList().constFirst()->widget();
    form->close();
    form.reset();
    EXPECT_EQ(child, nullptr) << "it would outlive what it works on";
}

// The copy of an open plan in its own folder, behind the given end of the run.
struct Ends : Frame {
    void makePlan() {
        program.exit();
        program.start(folder.path());
        test::OutlineWorld::makeTable(*program.state().gDbUser, "甲", {{"甲", "甲", "否"}});
        QDir().mkpath(program.state().gUserTplPath + "甲");
        test::OutlineWorld::makeTable(*program.state().gWs->CreateDatabase(
                                          copyPath(), QString::fromUtf16(jet::dbLangGeneral)),
                                      "甲", {{"甲", "甲", "否"}});
        path = copyPath();
        program.workbench().TrvCurrent.Add("甲", "甲", 1, 2);
        test::OutlineWorld::add(*program.state().gDbUser->OpenRecordset("Select * from 甲"),
                                {"甲.1", "新", "否"});
    }
    QString copyPath() const {
        return program_state().gUserTplPath + "甲" + files::separator() + "甲.mdb";
    }
    const modMain& program_state() const { return const_cast<Ends*>(this)->program.state(); }
    QStringList copiedKeys() {
        jet::DBEngine engine;
        return test::OutlineWorld::column(*engine.Workspaces(0).OpenDatabase(path), "甲", u"Key");
    }
    QString path;
};

TEST_F(Ends, ClosingTheFrameLevelsThePlansCopy) {
    makePlan();
    form->close();
    EXPECT_EQ(copiedKeys(), (QStringList{"甲", "甲.1"}));
}

TEST_F(Ends, ExitOfTheMenuLeavesThePlansCopyBehind) {
    makePlan();
    trigger("MenuExit");
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(copiedKeys(), QStringList{"甲"});
}

// The plan edit window beside the workbench

struct PlanEditor : Frame {
    PlanEditor() { form->showPlanEditor(); }
    // Runs what an ended window has left to do.
    static void settle() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
};

TEST_F(PlanEditor, StandsMaximizedInFrontWithItsOwnMenus) {
    EXPECT_EQ(area().currentSubWindow()->widget(), planEditor);
    EXPECT_TRUE(area().currentSubWindow()->isMaximized());
    EXPECT_EQ(menuBar(), QStringList{"施工方案编辑(&E)"});
    EXPECT_EQ(area().subWindowList().size(), 2);
    EXPECT_EQ(filled, 1);
}

TEST_F(PlanEditor, ShownAgainItIsFilledAnew) {
    form->showPlanEditor();
    EXPECT_EQ(made, 1);
    EXPECT_EQ(filled, 2);
}

TEST_F(PlanEditor, UnloadedItIsGoneAndTheWorkbenchIsThereAgain) {
    form->unloadPlanEditor();
    form->maximizeFrmBid();
    settle();
    EXPECT_TRUE(planEditor.isNull());
    EXPECT_EQ(area().subWindowList().size(), 1);
    EXPECT_TRUE(area().currentSubWindow()->isMaximized());
    EXPECT_EQ(menuBar(), QStringList{childMenu.title()});
    form->showPlanEditor();
    EXPECT_EQ(made, 2);
}

TEST_F(PlanEditor, TheWayBackByTheMenuLeavesTheWorkbenchAsItWas) {
    QMdiSubWindow* workbench = area().subWindowList().constFirst();
    workbench->showNormal();
    const QRect place(10, 10, 300, 200);
    workbench->setGeometry(place);
    form->unloadPlanEditor();
    form->showFrmBid();
    settle();
    EXPECT_EQ(area().currentSubWindow(), workbench);
    EXPECT_FALSE(workbench->isMaximized());
    EXPECT_EQ(workbench->geometry(), place);
}

TEST_F(PlanEditor, ItsCloseBoxUnloadsIt) {
    area().currentSubWindow()->close();
    settle();
    EXPECT_TRUE(planEditor.isNull());
    EXPECT_EQ(menuBar(), QStringList{childMenu.title()});
}

TEST_F(PlanEditor, WhileACommandRunsItCannotBeClosed) {
    program.state().Command.run([&] { area().currentSubWindow()->close(); });
    settle();
    EXPECT_FALSE(planEditor.isNull());
    EXPECT_EQ(menuBar(), QStringList{"施工方案编辑(&E)"});
}

TEST_F(PlanEditor, ClosingTheFrameEndsItToo) {
    form->close();
    settle();
    EXPECT_TRUE(planEditor.isNull());
    EXPECT_EQ(ended, 1);
}

struct About : testing::Test {
    test::FakeMessageBoxes messages;
    test::FakeShell shell;
    registry::RegistryFile registry;
    About() {
        QApplication::setApplicationName("卷宗编制系统");
        QApplication::setApplicationVersion("1.2.3");
    }
    static QString text(frmAbout& box, const char* name) {
        return box.findChild<QLabel*>(name)->text();
    }
};

TEST_F(About, TellsTitleAndVersion) {
    frmAbout box(registry, messages, shell);
    EXPECT_EQ(box.windowTitle(), "关于 卷宗编制系统");
    EXPECT_EQ(text(box, "lblTitle"), "卷宗编制系统——QVND");
    EXPECT_EQ(text(box, "lblVersion"), "版本 1.2.3");
    EXPECT_FALSE(box.findChild<QLabel*>("Image1")->pixmap().isNull());
}

TEST_F(About, OkUnloadsIt) {
    frmAbout box(registry, messages, shell);
    box.show();
    auto* ok = box.findChild<QPushButton*>("cmdOK");
    EXPECT_EQ(ok->text(), "确定");
    ok->click();
    EXPECT_FALSE(box.isVisible());
}

TEST_F(About, StartsTheProgramThatShowsTheSystem) {
    registry = registry::RegistryFile::parse(
        "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools\\MSINFO]\n"
        "\"PATH\"=\"/usr/bin/info\"\n");
    frmAbout box(registry, messages, shell);
    box.findChild<QPushButton*>("cmdSysInfo")->click();
    EXPECT_EQ(shell.started, QStringList{"/usr/bin/info"});
}

TEST_F(About, SaysThatTheSystemsInformationIsNotToBeHad) {
    frmAbout box(registry, messages, shell);
    box.findChild<QPushButton*>("cmdSysInfo")->click();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "此时系统信息不可用");
}

TEST(Splash, IsAsLargeAsItsImageAndStaysOnTop) {
    frmSplash splash;
    const auto* image = splash.findChild<QLabel*>("Image1");
    EXPECT_EQ(image->pos(), QPoint(0, 0));
    EXPECT_EQ(splash.size(), image->size());
    EXPECT_FALSE(image->pixmap().isNull());
    EXPECT_TRUE(splash.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(splash.findChild<QLabel*>("Label1")->text(), "TREL卷宗编制系统");
}

TEST(Splash, UnloadedTwiceIsLeftAlone) {
    WidgetSplash splash;
    splash.show();
    EXPECT_TRUE(splash.isLoaded());
    splash.unload();
    splash.unload();
    EXPECT_FALSE(splash.isLoaded());
}

} // namespace
