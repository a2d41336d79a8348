#pragma once

#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "store/modMain.h"

namespace qvnd::plans {

// mnuDelete: takes the open plan away, after asking. The folder and the library's node are those of
// the name that the first node of TrvCurrent shows; tables and registration are those of
// gSelectedPlan, and stay when it is empty, as it is while another node than the root is selected.
//
// Errors are ignored statement by statement and raise no box: a folder in use stays, which the
// Remarks of the state tell, and the tables and the registration go all the same. No transaction.
// False, and nothing done, when there is no open plan or the user does not want it.
bool mnuDelete(modMain& state, outline::Workbench& workbench, desktop::MessageBoxes& messages);

} // namespace qvnd::plans
