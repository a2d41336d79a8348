#pragma once

#include "outline/OutlineNode.h"

namespace qvnd::generate {

// A node of the walk with its level limited to 9.
struct VisitedNode {
    const outline::OutlineNode& node;
    int level;

    bool isDocument() const { return node.isDocument(); }
    // A document that hangs under a document.
    bool isChild() const {
        return isDocument() && node.Parent() != nullptr &&
               node.Parent()->Image() == outline::image::document;
    }
};

} // namespace qvnd::generate
