#pragma once

#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "store/modMain.h"

namespace qvnd::outline {

// Which commands of the workbench a node of the open plan offers. A folder below a document and
// anything beside a root are not among them.
struct NodeCommands {
    bool mnuBrowseDoc = false;
    bool mnuEQFolder = false;
    bool mnuLTFolder = false;
    bool mnuAddDoc = true;
    bool mnuEQDoc = false;
    bool mnuLTDoc = true;
    bool mnuRename = false;
    bool mnuEditDelete = true;
    bool mnuSaveTemplate = true;
};

// By the node's depth and the kind of its row: a key without a point is a root whatever its row
// says; `isDocument` is what the row says.
NodeCommands commandsOf(const OutlineNode& node, bool isDocument);

// Whether a click opens and closes positions 1 to 8 and 10 of the toolbar, too. A deletion closes
// them until the next click by the user.
enum class Toolbar { follows, waits };

// Closes all of them, for when the open plan is gone: the items of the menu, and the buttons 1 to
// 8, 10 and 12 of the toolbar. The next click on a node opens them again.
void closeNodeCommands(Workbench& workbench);
// The buttons 1 to 8 alone.
void closeEditButtons(Workbench& workbench);

// A click on a node of TrvCurrent: its key becomes clickedKey, gSelectedPlan is the text of a root
// and empty for any other node, and the commands open and close by the kind of the node's row. A
// node without a row, which an older tree may show, leaves them as they were; a failure of the
// store is told and does too.
void countAsClicked(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                    const OutlineNode& node, Toolbar toolbar = Toolbar::follows);

// Called behind every command, as one may have selected another node: the selected node of
// TrvCurrent counts as clicked, unless it was the last one clicked. Without a selection no node
// counts as clicked any more.
void followSelection(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages);

} // namespace qvnd::outline
