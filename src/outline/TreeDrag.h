#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "store/modMain.h"

#include <QString>
#include <QStringList>

namespace qvnd::outline {

// The drag events of TrvCurrent. MouseUp and OLECompleteDrag of TrvCurrent do nothing. A node in a
// call is the one under the pointer, null where there is none.

// The selected node is taken up: its key and Index are kept as dragKey and dragIndex. False, and
// nothing kept, when no node is selected or its Index is wider than 16 bits.
bool OLEStartDrag(Workbench& workbench);

// Selects the node.
void OLEDragOver(Workbench& workbench, OutlineNode* node);

struct Dropped {
    // All that was meant has been done.
    bool done = false;
    // The keys of the rows that were added, or the new key of the node that was moved.
    QStringList newKeys;
    // Why a move failed, where the rules have it fail in silence.
    QString failure;
};

// While dragKey is empty the drop copies copySourceKey of TrvTemplate into the node; otherwise it
// moves the node dragKey. A drop outside any node does nothing then and leaves dragKey as it is,
// so that the next drop, from wherever it comes, is still a move of that node; the Remarks of the
// state tell that one.
//
// TrvTemplate_Us is refreshed at the end.
Dropped OLEDragDrop(modMain& state, Workbench& workbench, const Services& services,
                    OutlineNode* node);

} // namespace qvnd::outline
