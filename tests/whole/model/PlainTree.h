#pragma once

#include "whole/model/PlainStore.h"

#include <list>

namespace qvnd::model {

enum Kind { root = 1, folder = 4, document = 5 };

struct Node {
    QString key;
    QString text;
    Kind kind = folder;
    Node* parent = nullptr;
    std::vector<Node*> children;
};

// A tree on the screen: nodes in the order of their adding.
class Tree {
public:
    Tree() = default;
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    std::list<Node> nodes;
    Node* selected = nullptr;

    Node* find(const QString& key) {
        const auto found = std::find_if(nodes.begin(), nodes.end(),
                                        [&](const Node& node) { return node.key == key; });
        return found == nodes.end() ? nullptr : &*found;
    }
    Node& item(const QString& key) {
        Node* node = find(key);
        if (!node) {
            throw Failure{other};
        }
        return *node;
    }
    // Counted from 1.
    int indexOf(const Node* node) const {
        int index = 0;
        for (const Node& each : nodes) {
            ++index;
            if (&each == node) {
                return index;
            }
        }
        return 0;
    }
    Node& add(Node* parent, const QString& key, const QString& text, Kind kind) {
        const bool onlyDigits =
            std::all_of(key.begin(), key.end(), [](QChar c) { return c >= '0' && c <= '9'; });
        if (find(key) || onlyDigits) {
            throw Failure{35603};
        }
        nodes.push_back({key, text, kind, parent, {}});
        if (parent) {
            parent->children.push_back(&nodes.back());
        }
        return nodes.back();
    }
    void remove(Node& node) {
        if (node.parent) {
            auto& siblings = node.parent->children;
            siblings.erase(std::find(siblings.begin(), siblings.end(), &node));
        }
        drop(node);
    }
    // What is selected when the node goes: the next sibling, the one before, or the parent.
    static Node* neighbourOf(const Node& node) {
        if (!node.parent) {
            return nullptr;
        }
        const auto& siblings = node.parent->children;
        const auto at = std::find(siblings.begin(), siblings.end(), &node);
        if (std::next(at) != siblings.end()) {
            return *std::next(at);
        }
        return at != siblings.begin() ? *std::prev(at) : node.parent;
    }
    void clear() {
        nodes.clear();
        selected = nullptr;
    }

    // A node for each row until one cannot be shown. A node other than the root of the key
    // `select` is selected.
    void fill(const Table& table, const QString& select = {}) {
        try {
            bool isFirst = true;
            for (const Row& row : table.rows) {
                if (isFirst) {
                    add(nullptr, row.key, row.name, root);
                    isFirst = false;
                    continue;
                }
                Node& node = add(&item(parentOf(row.key)), row.key, row.name,
                                 row.isDocument ? document : folder);
                if (row.key == select) {
                    selected = &node;
                }
            }
        } catch (const Failure&) {
            return;
        }
    }

private:
    void drop(Node& node) {
        for (Node* child : node.children) {
            drop(*child);
        }
        if (selected == &node) {
            selected = nullptr;
        }
        nodes.remove_if([&](const Node& each) { return &each == &node; });
    }
};

} // namespace qvnd::model
