#include "generate/walk/WalkOutline.h"

namespace qvnd::generate {

namespace {

using outline::OutlineNode;
using outline::OutlineTree;

const OutlineNode* climb(const OutlineTree& tree, const OutlineNode* ancestor) {
    const QString& rootName = tree.Item(1).Text();
    while (ancestor != nullptr && ancestor->Key() != rootName) {
        if (const OutlineNode* next = tree.Next(*ancestor))
            return next;
        ancestor = ancestor->Parent();
    }
    return nullptr;
}

const OutlineNode* following(const OutlineTree& tree, const OutlineNode& node) {
    if (node.Child() != nullptr)
        return node.Child();
    if (const OutlineNode* next = tree.Next(node))
        return next;
    if (node.Parent() == nullptr)
        return nullptr;
    if (const OutlineNode* next = tree.Next(*node.Parent()))
        return next;
    return climb(tree, node.Parent()->Parent());
}

} // namespace

void WalkOutline(const OutlineTree& tree, const OutlineNode* node,
                 const std::function<void(const OutlineNode&)>& VisitNode) {
    for (; node != nullptr; node = following(tree, *node))
        VisitNode(*node);
}

} // namespace qvnd::generate
