#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "store/modMain.h"

namespace qvnd::outline {

// How mnuEditDelete ended; `failed` has told the user why, but for error 3265.
enum class Deleted { deleted, answeredNo, failed };

// Deletes the node selected in TrvCurrent, after asking. A root takes the whole plan with it:
// tables, registration and folder. Any other node takes every row whose key begins with its key's
// text, from the working table and from the plan's own database, so T.1 takes T.10 along, whose
// node stays on the screen; document files stay in the folder. The neighbour of the node is then
// selected and counts as clicked, but for the toolbar. A node whose key is no key (OutlinePaths.h)
// takes its own row alone.
//
// It runs in a transaction that covers the databases alone. A failure leaves it open, with what was
// done up to there in it; nothing is taken back. The node goes from the screen all the same when
// its row has gone by then; that a plan's folder stays without its tables the Remarks of the state
// tell.
Deleted mnuEditDelete(modMain& state, Workbench& workbench, const Services& services);

} // namespace qvnd::outline
