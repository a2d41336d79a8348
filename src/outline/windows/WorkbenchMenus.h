#pragma once

#include <QAction>
#include <QList>
#include <QMenu>

namespace qvnd::outline {

struct Workbench;

// The menus of the workbench. Members bear the names of the controls, and so do the objects. The
// menus belong to the window that is given; the frame puts those of menuBar() into its menu bar.
class WorkbenchMenus {
public:
    explicit WorkbenchMenus(QWidget& window);

    QList<QMenu*> menuBar() const { return {mnuSys, mnuSysEdit, mnuWin, mnuHelp}; }
    // Opens and closes the items as the workbench says.
    void apply(const Workbench& workbench);
    // What 撤消 and 恢复 would take; empty when there is nothing.
    void applyHistory(const QString& undo, const QString& redo);
    // Pops mnuSys up with mnuNew as its only item; the others come back when it closes.
    void popUpOnlyMnuNew(const QPoint& place);

    QMenu* mnuSys;
    QAction* mnuNew;
    QAction* mnuSpace1;
    QAction* mnuDelete;
    QAction* mnuEdit;
    QAction* mnuSpace2;
    QAction* mnuExit;

    QMenu* mnuSysEdit;
    QAction* mnuEQFolder;
    QAction* mnuLTFolder;
    QMenu* mnuAddDoc;
    QAction* mnuEQDoc;
    QAction* mnuLTDoc;
    QAction* mnuPaste;
    QAction* mnuBrowseDoc;
    QAction* mnuRename;
    QAction* mnuEditDelete;
    QAction* mnuSaveTemplate;
    QAction* mnuUndo;
    QAction* mnuRedo;
    QAction* mnuHistory;

    QMenu* mnuWin;
    QAction* mnuChongDie;
    QAction* mnuPingPu;

    QMenu* mnuHelp;
    QAction* mnuContent;
    QAction* mnuIndex;
    QAction* mnuAbout;

    // The pop-up of TrvTemplate.
    QMenu* mnuDelBrowse;
    QAction* mnuCopy;
    QAction* mnuDelTemplate;
    QAction* mnuBroTemplate;

private:
    void showKeys();
};

} // namespace qvnd::outline
