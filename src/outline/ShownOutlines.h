#pragma once

#include "outline/OutlineRows.h"
#include "outline/OutlineTree.h"
#include "store/modMain.h"

#include <vector>

namespace qvnd::outline {

// What a tree should show by its tables, read and not shown yet. All trees of a window are read
// before one of them is changed, so that a reading that fails changes nothing.
class ShownOutlines {
public:
    // `outlines`: one after another, each from its root on. The tree outlives the object.
    ShownOutlines(OutlineTree& tree, std::vector<std::vector<OutlineRow>> outlines);

    // False when the tree shows just that, whatever is selected or expanded in it.
    bool areNews() const { return areNews_; }
    // Fills the tree anew. The node of the same key is selected again; without one none is.
    void show() const;

private:
    OutlineTree& tree_;
    std::vector<std::vector<OutlineRow>> outlines_;
    bool areNews_;
};

// A tree that shows one plan, kept level with what other programs do to the plan's table in
// Db_UsTemplate.mdb.
class ShownPlan {
public:
    // State and tree outlive the object.
    ShownPlan(modMain& state, OutlineTree& tree) : state_(state), tree_(tree) {}

    // The plan in the tree; empty for an empty tree.
    QString name() const;
    // What the tree should show: nothing when the plan or its folder is gone. Errors of the store
    // pass, as readOutline says; nothing is written.
    ShownOutlines read() const;
    // Fills the tree anew; its root is selected when the selected node is gone.
    void show(const ShownOutlines& fresh);
    // Has 当前表 name the plan again, if another program may have changed that. Errors of the
    // store.
    void keepOpen();

private:
    modMain& state_;
    OutlineTree& tree_;
    int seen_ = 0; // the changes of Db_UsTemplate.mdb when 当前表 was last seen to
};

} // namespace qvnd::outline
