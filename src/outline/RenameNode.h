#pragma once

#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "store/modMain.h"

#include <QString>

// The in-place renaming of a node of TrvCurrent. Only 名称 of the node's row in the working table
// changes: key, file and the plan's own database stay as they are. A root may be renamed too; its
// table and folder keep the old name.
namespace qvnd::outline {

// The node whose label mnuRename edits: the selected one; null, with a word to the user, without.
OutlineNode* mnuRename(Workbench& workbench, desktop::MessageBoxes& messages);

// Keeps the text of the node that is about to be edited.
void BeforeLabelEdit(Workbench& workbench, const OutlineNode& node);

// Takes the text over as it is, untrimmed and whether or not a sibling bears it: into the row of
// the key clicked last, in the table of the selected node, and as the selected node's text. False
// when the edit is cancelled, which an empty text or a failure does; the user has been told why,
// and the old text stands.
bool AfterLabelEdit(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                    const QString& newString);

} // namespace qvnd::outline
