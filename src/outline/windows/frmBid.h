#pragma once

#include "outline/CommandsInTurn.h"
#include "outline/OtherPrograms.h"
#include "outline/windows/OutlineView.h"
#include "outline/windows/WorkbenchCommands.h"
#include "outline/windows/WorkbenchLayout.h"
#include "outline/windows/WorkbenchMenus.h"
#include "platform/history/Step.h"

#include <QPointer>
#include <QWidget>

#include <functional>

class QPushButton;
class QTabWidget;

namespace qvnd::outline {

class EmptyPlanHint;
class HistoryWindow;
class NoteBar;
enum class NoteOffer;
class PreviewFrame;
class SplitterBar;
class WorkbenchToolbar;

// The workbench window: the open plan's outline, the two libraries, a preview, and every command
// on them. Events go to the logic as they come; behind each of them the window shows what the
// logic has opened and closed.
class frmBid : public QWidget {
    Q_OBJECT

public:
    // What the window works on; all of it outlives the window. `fraSee` becomes its child.
    struct Parts {
        modMain& state;
        Workbench& workbench;
        Services services;
        WorkbenchFrame& frame;
        PreviewFrame& fraSee;
        desktop::InputBoxes& inputBoxes;
    };

    explicit frmBid(const Parts& parts, QWidget* parent = nullptr);

    // The load of the window: the open plan and the libraries are read, and the commands of the
    // selected node opened.
    void Load();
    // Enables and shows the commands as the Workbench says. Every event of this window ends with
    // it; only changes from outside need the call.
    void applyCommands();

    // The menus that stand in the frame's menu bar while this window is the active one.
    QList<QMenu*> menus() const { return menus_.menuBar(); }
    // Shows and edits the information of the open plan.
    void OpenPlanInfo();
    // 撤消 of the step that was named to the user, and the list of the history with the latest step
    // chosen; also for other windows.
    void takeBack(std::int64_t named);
    void showDetails();

    // What of the window outlasts a run of the program.
    struct Shape {
        WorkbenchLayout::Bars bars;
        int library = 0;  // the tab of TabTemplate, counted from 0
        QString selected; // the key of the selected node of TrvCurrent; empty without one
    };
    Shape shape() const;
    // Gives it back. A tab or a node that is not there is left out; the node counts as clicked. No
    // command: it neither waits for a turn nor looks what other programs have done.
    void restore(const Shape& shape);

    QSize sizeHint() const override;
    // So large that nothing is cut wherever the bars stand.
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    using CommandOfMenu = void (WorkbenchCommands::*)();

    void buildTrees();
    void buildButtons();
    void buildBars();
    void setOrder();
    QPushButton* button(const QString& name, const QString& caption);
    void connectMenus();
    void connectTabs();
    void connectToolbar();
    void connectHistory();
    void connectTrvCurrent();
    void connectRenaming();
    void connectDragging();
    void connectOpening();
    void connectTrvTemplate();
    void connectTrvTemplate_Us();
    void bind(QAction* action, CommandOfMenu command);
    // With a caption that says more than the item does without its menu.
    void bind(QAction* action, CommandOfMenu command, const QString& caption);
    void bindAtOnce(QAction* action, CommandOfMenu command);
    // The two kinds of events; see CommandsInTurn. A name that is being typed is taken over before.
    void read(const std::function<void()>& event);
    // `caption` names the command in the history.
    void run(const std::function<void()>& event, const QString& caption);
    // For a command that is not to look at what other programs have done.
    void load(const std::function<void()>& event, const QString& caption);
    CommandsInTurn::Event thenFollow(const std::function<void()>& event);
    void seeOtherPrograms();
    bool lookAtOthers();
    bool isOpen(const QString& key) const;
    void leaveFormerPlan();

    // What stands behind the history's items, buttons and window.
    void doAgain(std::int64_t named);
    void showHistory();
    // Null, and told, when it is no longer there.
    std::optional<history::Step> listedStep(std::int64_t step);
    void goBefore(std::int64_t step);
    void goBehind(std::int64_t step);
    void goTo(std::int64_t step, const QString& done);
    // A restoration that is over: `taken` is the step that the bar's button takes, if it has one.
    void tellRestored(const QString& done, NoteOffer offer, std::int64_t taken);
    void putBackOne(std::int64_t step, const history::Change& change);
    void takeOut(std::int64_t step, const QString& file, const QString& name);
    void showAnew(const QString& selected);
    void refreshHistoryWindow();
    void applyHistory();
    void tellWhatWasMended();
    // Whether 撤消 or 恢复 would take the step that the bar tells of.
    bool isOfferOpen() const;
    void takeOffer();
    void forgetOutdatedNote();
    void tellStep(const history::Step& step);
    void tellLatestStep();
    // The one that 撤消 would take; the beginning without one.
    history::Step latestStep() const;

    void trvCurrentMouseDown(Qt::MouseButton button, OutlineNode* node, const QPoint& place);
    void trvCurrentKeyDown(int code);
    void trvTemplate_UsNodeClick(OutlineNode* node);
    void rename();
    void takeName(const QString& name);
    void takeKeyboardBack();
    void openSelectedDocument(const OutlineTree& tree);
    void place();
    void removeCloseItem();

    modMain& state_;
    Workbench& workbench_;
    Services services_;
    preview::DocumentPreview& preview_;
    QString plan_; // the root's key of the plan that the window shows
    WorkbenchFrame& frame_;
    WorkbenchCommands commands_;
    OtherPrograms others_;
    CommandsInTurn inTurn_;
    WorkbenchMenus menus_;
    WorkbenchLayout layout_;

    WorkbenchToolbar* TbarBid_;
    PreviewFrame* fraSee_;
    OutlineModel* currentModel_;
    OutlineView* TrvCurrent_;
    EmptyPlanHint* hint_;
    NoteBar* note_;
    std::int64_t noted_ = history::beginning;   // the step that the bar tells of
    std::int64_t offered_ = history::beginning; // the one that its 撤消 or 恢复 takes
    // Those that menu and toolbar name.
    std::int64_t namedUndo_ = history::beginning;
    std::int64_t namedRedo_ = history::beginning;
    QPointer<HistoryWindow> historyWindow_;
    OutlineView* TrvTemplate_;
    OutlineView* TrvTemplate_Us_;
    QTabWidget* TabCurrent_;
    QTabWidget* TabTemplate_;
    SplitterBar* lblResize_;
    SplitterBar* imgSpliter_;
    QPushButton* cmdEdit_;
    QPushButton* cmdExit_;
};

} // namespace qvnd::outline
