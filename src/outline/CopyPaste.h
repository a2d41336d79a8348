#pragma once

#include "outline/TemplateCopy.h"

namespace qvnd::outline {

// The clipboard commands of the workbench: a node of TrvTemplate is remembered by its key, and
// copied from there as often as the user pastes.

// Remembers the node selected in TrvTemplate and arms mnuPaste for good; without one does nothing.
void mnuCopy(Workbench& workbench);

struct Pasted {
    Copied outcome = Copied::stopped;
    QStringList newKeys;
};

// Copies the remembered node into the node selected in TrvCurrent, and disables position 10 of
// TbarBid. Without a selected node nothing is copied.
Pasted mnuPaste(modMain& state, Workbench& workbench, const Services& services);

// The key "粘贴" of TbarBid: mnuPaste, and position 10 disabled once more.
Pasted toolbarPaste(modMain& state, Workbench& workbench, const Services& services);

} // namespace qvnd::outline
