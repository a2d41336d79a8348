#pragma once

#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "store/modMain.h"

namespace qvnd::plans {

// mnuDelete: takes the open plan away, after asking. The folder and the library's node are those of
// the name that the first node of TrvCurrent shows; tables and registration are those of
// gSelectedPlan, and stay when it is empty, as it is while another node than the root is selected.
//
// Errors are ignored statement by statement and told nowhere: of a folder in use, say, nothing
// goes, and all the rest does. No transaction. False when there is no open plan or the user does
// not want it, and nothing has been done.
bool mnuDelete(modMain& state, outline::Workbench& workbench, desktop::MessageBoxes& messages);

} // namespace qvnd::plans
