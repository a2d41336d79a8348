#pragma once

#include "generate/windows/BidEditFrame.h"
#include "outline/CommandsInTurn.h"
#include "outline/windows/WorkbenchFrame.h"
#include "platform/desktop/HelpWindow.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/Shell.h"
#include "platform/registry/Registry.h"
#include "startup/Program.h"

#include <QMainWindow>
#include <QMdiSubWindow>
#include <QPointer>

#include <array>
#include <functional>

class QMdiArea;

namespace qvnd::startup {

class ChildTitleStyle;
class StatusPanel;

// What a child window of the frame is to it: a widget, and the menus that stand in the frame's menu
// bar while the child is the active one.
struct ChildWindow {
    QWidget* widget = nullptr;
    QList<QMenu*> menus;
    // Loads the window's contents anew.
    std::function<void()> load;
};

// The frame ("卷宗编制系统") in which the workbench and the plan edit window live as child windows.
// It owns the status bar, a small menu of its own that stands while no child is active, the
// arrangement of the windows, and the end of the run.
class MainForm : public QMainWindow, public outline::WorkbenchFrame, public generate::BidEditFrame {
    Q_OBJECT

public:
    // What the frame works on; all of it outlives the frame.
    struct Parts {
        Program& program;
        registry::Registry& registry;
        desktop::MessageBoxes& messages;
        desktop::HelpWindow& help;
        desktop::Shell& shell;
        // Makes and loads the workbench window (frmBid).
        std::function<ChildWindow()> loadWorkbench;
        // Makes the plan edit window (frmBidEdit), still without its contents.
        std::function<ChildWindow()> makePlanEditor;
        // Ends the process.
        std::function<void()> end;
        // Called once before a run ends, while all windows stand.
        std::function<void()> leave = [] {};
    };

    explicit MainForm(const Parts& parts);
    ~MainForm() override;

    // The load of the frame: the texts of the status bar.
    void Load();
    // Shows the workbench, loading it when it is not loaded.
    void showWorkbench();

    // Place and size of the workbench in the frame; null while it is maximised or not there.
    QRect workbenchPlace() const;
    void placeWorkbench(const QRect& place);

    void showPlanEditor() override;
    void openDocument(const QString& file) override;
    void unloadPlanEditor() override;
    void showFrmBid() override;
    void maximizeFrmBid() override;
    void arrangeCascade() override;
    void arrangeTile() override;
    void showHelpContents() override;
    void showHelpIndex() override;
    void showAbout() override;
    void showStatus(const QString& text) override;
    void endAtOnce() override;
    void exit() override;

protected:
    // The unload: the orderly exit.
    void closeEvent(QCloseEvent* event) override;
    // The workbench cannot be closed alone, by no button and no key; the plan edit window not while
    // a command runs.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenus();
    void buildStatusBar();
    QMenu* menu(const QString& name, const QString& title);
    void mnuBuild();
    void unload(QMdiSubWindow* child);
    void showMenus();
    void hideDeadButtons();
    void help(void (desktop::HelpWindow::*page)(const QString&));
    void openRoster();
    void finishTyping();
    // False when the user would rather stay than wait for the turn.
    bool endRun();
    bool isBusy() const;

    Parts parts_;
    outline::CommandsInTurn inTurn_;
    QMdiArea* area_;
    std::array<StatusPanel*, 3> panels_{};
    ChildTitleStyle* titleStyle_;
    QList<QMenu*> menus_;
    ChildWindow workbench_;
    QPointer<QMdiSubWindow> frmBid_;
    ChildWindow planEditor_;
    QPointer<QMdiSubWindow> frmBidEdit_;
    bool isExit_ = false;
};

} // namespace qvnd::startup
