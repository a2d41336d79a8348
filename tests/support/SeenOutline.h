#pragma once

#include "outline/OutlineTree.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <functional>
#include <ostream>
#include <vector>

namespace qvnd::test {

// A node as a planner sees it: where it stands, and the text that lies behind a document. Nothing
// of keys and rows.
struct SeenNode {
    QString name;
    int depth = 0;
    bool isDocument = false;
    QByteArray text;
    bool operator==(const SeenNode&) const = default;
};

inline void PrintTo(const SeenNode& seen, std::ostream* out) {
    *out << '\n'
         << std::string(static_cast<std::size_t>(2 * seen.depth), ' ') << seen.name.toStdString()
         << (seen.isDocument ? " \"" + seen.text.toStdString() + '"' : std::string());
}

// From top to bottom with every node unfolded.
using SeenOutline = std::vector<SeenNode>;

// `textOf` gives what is in the file of a document with that key.
inline SeenOutline seenIn(const outline::OutlineTree& tree,
                          const std::function<QByteArray(const QString&)>& textOf) {
    SeenOutline found;
    const std::function<void(const outline::OutlineNode&, int)> add =
        [&](const outline::OutlineNode& node, int depth) {
            const bool isDocument = node.Image() == outline::image::document;
            found.push_back(
                {node.Text(), depth, isDocument, isDocument ? textOf(node.Key()) : QByteArray()});
            for (const outline::OutlineNode* child : node.childList()) {
                add(*child, depth + 1);
            }
        };
    for (const outline::OutlineNode* node : tree.topLevel()) {
        add(*node, 0);
    }
    return found;
}

// Behind the last of what is below that node.
inline std::size_t endOf(const SeenOutline& outline, std::size_t node) {
    std::size_t end = node + 1;
    while (end < outline.size() && outline[end].depth > outline[node].depth) {
        ++end;
    }
    return end;
}

inline bool isWithin(const SeenOutline& outline, std::size_t place, std::size_t node) {
    return place >= node && place < endOf(outline, node);
}

// The node with all that is below it goes before a document, or becomes a folder's first child.
// The target does not lie within the node.
inline SeenOutline moved(SeenOutline outline, std::size_t node, std::size_t target) {
    const SeenNode place = outline[target];
    const auto begin = outline.begin() + static_cast<std::ptrdiff_t>(node);
    const auto end = outline.begin() + static_cast<std::ptrdiff_t>(endOf(outline, node));
    SeenOutline part(begin, end);
    outline.erase(begin, end);
    const int deeper = place.depth + (place.isDocument ? 0 : 1) - part.front().depth;
    for (SeenNode& seen : part) {
        seen.depth += deeper;
    }
    const std::size_t at = target - (target > node ? part.size() : 0) + (place.isDocument ? 0 : 1);
    outline.insert(outline.begin() + static_cast<std::ptrdiff_t>(at), part.begin(), part.end());
    return outline;
}

} // namespace qvnd::test
