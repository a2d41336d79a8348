#pragma once

#include "outline/ShownOutlines.h"
#include "outline/Workbench.h"
#include "store/modMain.h"

namespace qvnd::outline {

// Keeps the trees of the workbench level with what other programs, such as the companion, do to the
// databases while it is open.
class OtherPrograms {
public:
    // State and workbench outlive the object.
    OtherPrograms(modMain& state, Workbench& workbench)
        : state_(state), workbench_(workbench), current_(state, workbench.TrvCurrent) {}

    // Fills those trees anew that no longer show what the databases hold, if another program has
    // changed these since the last look that ended well. True when a tree was filled: its nodes are
    // new ones then. Nothing is written, not even what a refresh of the libraries would drop.
    //
    // TrvCurrent keeps its plan and its selected node; its root is selected when that node is gone.
    // A plan that is gone leaves the tree empty and the commands that need a plan or a node closed.
    // Errors of the store pass; the trees are then as before, and the next look looks again.
    bool look();

    // Has 当前表 name the plan of TrvCurrent again, if another program may have changed that; to be
    // called before a command. Errors of the store pass.
    void keepPlanOpen() { current_.keepOpen(); }

private:
    void showCurrent(const ShownOutlines& fresh);

    modMain& state_;
    Workbench& workbench_;
    ShownPlan current_;
    int seen_ = 0; // the changes of both databases at the last look
};

} // namespace qvnd::outline
