#pragma once

namespace qvnd::outline {

class OutlineNode;

// Receives every change of an OutlineTree, before and after where the shape changes, so that an
// item model can follow. A null parent means the top level. The tree must not be changed from
// within a call.
class OutlineTreeObserver {
public:
    virtual ~OutlineTreeObserver() = default;

    virtual void aboutToAdd(const OutlineNode* parent, int row) = 0;
    virtual void added(const OutlineNode& node) = 0;
    // The node goes with all that is below it.
    virtual void aboutToRemove(const OutlineNode& node) = 0;
    virtual void removed() = 0;
    virtual void aboutToClear() = 0;
    virtual void cleared() = 0;

    virtual void textChanged(const OutlineNode& node) = 0;
    virtual void expandedChanged(const OutlineNode& node) = 0;
    // Null: nothing is selected any more.
    virtual void selectionChanged(const OutlineNode* node) = 0;
};

} // namespace qvnd::outline
