#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "outline/dlgAddDoc.h"
#include "platform/desktop/InputBoxes.h"
#include "platform/preview/DocumentPreview.h"
#include "store/modMain.h"

#include <QStringList>

class QWidget;

namespace qvnd::outline {

class WorkbenchFrame;
struct Pasted;

// What the commands of the workbench work on. All of it outlives them.
struct WorkbenchParts {
    modMain& state;
    Workbench& workbench;
    Services services;
    WorkbenchFrame& frame;
    preview::DocumentPreview& preview;
    desktop::InputBoxes& inputBoxes;
};

// The commands behind the menus, the toolbar and the buttons, each one call into the logic or into
// the frame. OutlineView does the in-place editing.
class WorkbenchCommands {
public:
    // `window` is the one that dialogs belong to.
    WorkbenchCommands(const WorkbenchParts& parts, QWidget& window);

    void mnuNew();
    void mnuDelete();
    void mnuExit();
    void mnuEQFolder();
    void mnuLTFolder();
    void mnuEQDoc();
    void mnuLTDoc();
    void mnuPaste();
    void mnuBrowseDoc();
    void mnuEditDelete();
    void mnuSaveTemplate();
    void mnuChongDie();
    void mnuPingPu();
    void mnuContent();
    void mnuIndex();
    void mnuAbout();
    void mnuCopy();
    void mnuDelTemplate();
    void mnuBroTemplate();
    // cmdEdit and mnuEdit.
    void cmdEdit();
    void cmdExit();
    // The key "粘贴" of the toolbar.
    void toolbarPaste();

    // The information of the open plan; nothing happens without one.
    void OpenPlanInfo();
    // A drop on a node of TrvCurrent, null beside all nodes: of a node, and of files from outside.
    void drop(OutlineNode* node);
    void addFiles(const OutlineNode* node, const QStringList& files);
    // Folders that have come beside the program since its start: adopted, and listed.
    void updateTemplates();
    void updatePlans();
    // 转换标书; the status bar tells how many folders were converted.
    void convertOldData();
    // Selects the root of the open plan when no node is selected.
    void selectRoot();

private:
    void addFolder(AddMode mode);
    void tellPasted(const Pasted& pasted);
    void tellOverwritten();
    bool hasHelp();

    WorkbenchParts parts_;
    QWidget& window_;
};

} // namespace qvnd::outline
