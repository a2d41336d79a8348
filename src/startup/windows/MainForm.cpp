#include "startup/windows/MainForm.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/UserName.h"
#include "platform/error/IgnoringErrors.h"
#include "startup/windows/ChildTitleStyle.h"
#include "startup/windows/StatusPanel.h"
#include "startup/windows/frmAbout.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QStatusBar>

namespace qvnd::startup {

using namespace Qt::StringLiterals;

namespace {

constexpr int statusTime = 10'000; // milliseconds

const QString panelText = u"卷宗编制管理软件"_s;

} // namespace

MainForm::MainForm(const Parts& parts)
    : parts_(parts), inTurn_(parts.program.state(), parts.messages, [] { return false; }),
      area_(new QMdiArea(this)), titleStyle_(new ChildTitleStyle) {
    titleStyle_->setParent(this);
    setObjectName(u"MainForm"_s);
    setWindowTitle(u"卷宗编制系统"_s);
    area_->setObjectName(u"MdiArea"_s);
    area_->setAccessibleName(u"子窗口"_s);
    // A child that comes to front stays as large as it was.
    area_->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    setCentralWidget(area_);
    buildMenus();
    buildStatusBar();
    connect(area_, &QMdiArea::subWindowActivated, this, &MainForm::showMenus);
    showMenus();
}

// The children end behind the frame, which then no longer listens.
MainForm::~MainForm() { area_->disconnect(this); }

void MainForm::Load() {
    openRoster();
    const auto texts =
        statusPanels(desktop::userName(), parts_.program.state().gWorkPath, QDate::currentDate());
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        panels_[i]->tell(texts[i]);
    }
}

// Nothing runs on the roster: it is only held open, and its absence is no failure.
void MainForm::openRoster() {
    modMain& state = parts_.program.state();
    ignoringErrors(
        [&] { state.gDbRoster = state.gWs->OpenDatabase(state.gSysPath + "Database/roster.mdb"); });
}

void MainForm::buildMenus() {
    QMenu* file = menu(u"MenuFile"_s, u"方案管理(&S)"_s);
    QMenu* popup = menu(u"PMenuDelprj"_s, u"PopDelprj"_s);
    QMenu* window = menu(u"sysWin"_s, u"窗口(&W)"_s);
    QMenu* help = menu(u"sysHelp"_s, u"帮助(&H)"_s);
    const auto add = [](QMenu* menu, const QString& name, const QString& caption) {
        QAction* action = menu->addAction(caption);
        action->setObjectName(name);
        return action;
    };
    const auto bind = [this](const QAction* action, void (MainForm::*item)()) {
        connect(action, &QAction::triggered, this, [this, item] {
            if (!isBusy()) {
                (this->*item)();
            }
        });
    };
    bind(add(file, u"mnuBuild"_s, u"方案编辑(&B)"_s), &MainForm::mnuBuild);
    bind(add(file, u"MenuExit"_s, u"退出(&E)"_s), &MainForm::endAtOnce);
    add(popup, u"MenuPopDelprj"_s, u"删除方案(&D)"_s);
    popup->menuAction()->setVisible(false);
    bind(add(window, u"listWin"_s, u"层叠(&C)"_s), &MainForm::arrangeCascade);
    bind(add(window, u"winA"_s, u"横向平铺(&H)"_s), &MainForm::arrangeTile);
    bind(add(help, u"help1"_s, u"内容(&C)"_s), &MainForm::showHelpContents);
    bind(add(help, u"help2"_s, u"索引(&I)"_s), &MainForm::showHelpIndex);
    help->addSeparator()->setObjectName(u"s1"_s);
    bind(add(help, u"sysAbout"_s, u"关于"_s), &MainForm::showAbout);
    menus_ = {file, popup, window, help};
}

QMenu* MainForm::menu(const QString& name, const QString& title) {
    auto* menu = new QMenu(title, this);
    menu->setObjectName(name);
    menu->setAccessibleName(QString(title).remove(u'&').section(u'(', 0, 0));
    return menu;
}

// Each panel has a third of the width, whatever it says.
void MainForm::buildStatusBar() {
    QStatusBar* bar = statusBar();
    bar->setObjectName(u"st1"_s);
    bar->setAccessibleName(panelText);
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        auto* panel = new StatusPanel(panelText, bar);
        panel->setObjectName(u"st1Panel%1"_s.arg(i + 1));
        bar->addWidget(panel, 1);
        panels_[i] = panel;
    }
}

// By the current child, which stays so while another program is in front.
void MainForm::showMenus() {
    const QMdiSubWindow* child = area_->currentSubWindow();
    const QList<QMenu*>& menus = child && child == frmBid_       ? workbench_.menus
                                 : child && child == frmBidEdit_ ? planEditor_.menus
                                                                 : menus_;
    menuBar()->clear();
    for (QMenu* menu : menus) {
        menuBar()->addMenu(menu);
    }
    hideDeadButtons();
}

// The buttons of the maximised workbench would offer to close it.
void MainForm::hideDeadButtons() {
    QWidget* buttons = menuBar()->cornerWidget(Qt::TopRightCorner);
    if (buttons && frmBid_ && area_->currentSubWindow() == frmBid_) {
        buttons->hide();
    }
}

void MainForm::showWorkbench() {
    if (!frmBid_) {
        workbench_ = parts_.loadWorkbench();
        frmBid_ = area_->addSubWindow(
            workbench_.widget, Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                   Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint);
        frmBid_->setStyle(titleStyle_);
        frmBid_->installEventFilter(this);
        // Its buttons come into the menu bar with the next event.
        connect(frmBid_, &QMdiSubWindow::windowStateChanged, this, &MainForm::hideDeadButtons,
                Qt::QueuedConnection);
        // The frame is as large at least as its maximised child has to be.
        setMinimumSize(workbench_.widget->minimumSizeHint().expandedTo(QSize(0, 0)) +
                       QSize(0, menuBar()->sizeHint().height() + statusBar()->sizeHint().height()));
    }
    maximizeFrmBid();
}

void MainForm::maximizeFrmBid() {
    if (frmBid_) {
        frmBid_->showMaximized();
        area_->setActiveSubWindow(frmBid_);
        showMenus();
    }
}

void MainForm::showFrmBid() {
    if (frmBid_) {
        frmBid_->show();
        area_->setActiveSubWindow(frmBid_);
        showMenus();
    }
}

QRect MainForm::workbenchPlace() const {
    return frmBid_ && !frmBid_->isMaximized() && !frmBid_->isMinimized() ? frmBid_->geometry()
                                                                         : QRect();
}

void MainForm::placeWorkbench(const QRect& place) {
    if (frmBid_ && area_->rect().intersects(place)) {
        frmBid_->showNormal();
        frmBid_->setGeometry(place);
    }
}

// A child may be in the middle of an event of its own, so it ends when that is over, and with the
// frame at the latest: it works on what ends behind the frame.
void MainForm::unload(QMdiSubWindow* child) {
    area_->removeSubWindow(child);
    child->setParent(this);
    child->deleteLater();
    if (child == frmBid_) {
        frmBid_ = nullptr;
    } else if (child == frmBidEdit_) {
        frmBidEdit_ = nullptr;
    }
    showMenus();
}

// The active child goes, the workbench among them, which then comes back freshly loaded.
void MainForm::mnuBuild() {
    const outline::CommandsInTurn::Gesture gesture(inTurn_);
    bool hasTurn = false;
    inTurn_.runWithoutLook([&] { hasTurn = true; });
    if (!hasTurn) {
        return;
    }
    if (QMdiSubWindow* active = area_->activeSubWindow()) {
        unload(active);
    }
    showWorkbench();
}

void MainForm::showPlanEditor() {
    if (!frmBidEdit_) {
        planEditor_ = parts_.makePlanEditor();
        frmBidEdit_ = area_->addSubWindow(planEditor_.widget);
        frmBidEdit_->installEventFilter(this);
    }
    frmBidEdit_->showMaximized();
    area_->setActiveSubWindow(frmBidEdit_);
    showMenus();
    planEditor_.load();
}

void MainForm::unloadPlanEditor() {
    if (frmBidEdit_) {
        unload(frmBidEdit_);
    }
}

void MainForm::openDocument(const QString& file) { parts_.shell.open(file); }

void MainForm::arrangeCascade() { area_->cascadeSubWindows(); }

// One below the other, each as wide as the frame; the area itself would put two side by side.
void MainForm::arrangeTile() {
    QList<QMdiSubWindow*> rows = area_->subWindowList();
    rows.removeIf([](const QMdiSubWindow* child) { return child->isMinimized(); });
    const QSize all = area_->viewport()->size();
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const auto top = static_cast<int>(all.height() * i / rows.size());
        const auto below = static_cast<int>(all.height() * (i + 1) / rows.size());
        rows[i]->showNormal();
        rows[i]->setGeometry(0, top, all.width(), below - top);
    }
}

void MainForm::help(void (desktop::HelpWindow::*page)(const QString&)) {
    const QString& file = parts_.program.state().HelpFile;
    if (file.isEmpty()) {
        parts_.messages.tell(u"无法显示帮助目录，该工程没有相关联的帮助。"_s,
                             desktop::Icon::information, windowTitle());
        return;
    }
    try {
        (parts_.help.*page)(file);
    } catch (const RunTimeError& failure) {
        parts_.messages.tell(desktop::descriptionOf(failure));
    }
}

void MainForm::showHelpContents() { help(&desktop::HelpWindow::showContents); }

void MainForm::showHelpIndex() { help(&desktop::HelpWindow::showIndex); }

void MainForm::showAbout() {
    frmAbout(parts_.registry, parts_.messages, parts_.shell, this).exec();
}

// It stands before the panels.
void MainForm::showStatus(const QString& text) { statusBar()->showMessage(text, statusTime); }

// A name that is being typed is taken over as long as there is a store to take it.
void MainForm::finishTyping() {
    if (QWidget* typing = focusWidget()) {
        typing->clearFocus();
    }
}

void MainForm::endAtOnce() {
    finishTyping();
    parts_.leave();
    parts_.program.endAtOnce();
    parts_.end();
}

void MainForm::exit() {
    const QScopedValueRollback isExit(isExit_, true);
    close();
}

// The exit is a command itself.
bool MainForm::isBusy() const { return parts_.program.state().Command.isRunning() && !isExit_; }

bool MainForm::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close && watched == frmBid_) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::Close && watched == frmBidEdit_) {
        event->ignore();
        if (!isBusy()) {
            unloadPlanEditor();
        }
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

// A command while it waits for its turn, unless it is the end of one already.
bool MainForm::endRun() {
    bool hasEnded = false;
    const auto exitProgram = [&] { hasEnded = parts_.program.exit(); };
    if (!parts_.program.state().Command.run(exitProgram)) {
        exitProgram();
    }
    return hasEnded;
}

void MainForm::closeEvent(QCloseEvent* event) {
    if (isBusy()) {
        event->ignore();
        return;
    }
    finishTyping();
    if (!endRun()) {
        event->ignore();
        return;
    }
    parts_.leave();
    for (QMdiSubWindow* child : area_->subWindowList()) {
        unload(child);
    }
    event->accept();
    parts_.end();
}

} // namespace qvnd::startup
