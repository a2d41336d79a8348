#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "store/modMain.h"

namespace qvnd::outline {

// Keeps the trees of the workbench level with what other programs, such as the companion, do to the
// databases while it is open.
class OtherPrograms {
public:
    OtherPrograms(modMain& state, Workbench& workbench, const Services& services)
        : state_(state), workbench_(workbench), services_(services) {}

    // Fills those trees anew that no longer show what the databases hold, if another program has
    // changed these since the last look. True when a tree was filled: its nodes are new ones then.
    //
    // TrvCurrent keeps its plan, which 当前表 names again, and its selected node; its root is
    // selected when that node is gone. A plan that is gone leaves the tree empty and the commands
    // that need a plan closed. Errors of the store pass through.
    bool look();

private:
    bool lookAtCurrent();
    bool lookAtLibrary(jet::Database& database, OutlineTree& tree);

    modMain& state_;
    Workbench& workbench_;
    Services services_;
    int seen_ = 0; // the changes of both databases at the last look
};

} // namespace qvnd::outline
