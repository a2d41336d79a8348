#pragma once

#include "outline/OutlineTree.h"

#include <functional>

namespace qvnd::generate {

// Visits a node and all that come behind it, depth-first in display order. Behind a node comes
// its first child, else its next sibling, else its parent's next sibling, else the next sibling
// of the nearest ancestor that has one; the climb ends at the node whose key is the name of
// node 1. Depth costs no stack.
void WalkOutline(const outline::OutlineTree& tree, const outline::OutlineNode* node,
                 const std::function<void(const outline::OutlineNode&)>& VisitNode);

} // namespace qvnd::generate
