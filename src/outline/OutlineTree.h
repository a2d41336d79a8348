#pragma once

#include "outline/OutlineNode.h"
#include "platform/error/RunTimeError.h"

#include <QHash>
#include <QString>

#include <memory>
#include <unordered_set>
#include <vector>

namespace qvnd::outline {

class OutlineTreeObserver;

// The tree on the screen as state of its own, without a toolkit: nodes with key, text, images,
// order, selection and expansion. It is filled from an outline table and may be older than that
// table. A tree may hold several outlines one after another as top-level nodes.
//
// Errors are RunTimeErrors with the numbers of a tree control: 35601 element not found, 35602
// key not unique, 35603 key invalid. Their descriptions tell the key.
class OutlineTree {
public:
    // `name` is the control's name ("TrvCurrent"); some routines go by it.
    explicit OutlineTree(QString name);
    ~OutlineTree();
    OutlineTree(const OutlineTree&) = delete;
    OutlineTree& operator=(const OutlineTree&) = delete;

    const QString& Name() const { return name_; }

    // Appends a top-level node. A key is unique in the tree (else 35602) and not of digits alone
    // (else 35603); an empty key is allowed any number of times and cannot be looked up.
    OutlineNode& Add(const QString& key, const QString& text, int image, int selectedImage);
    // Appends a child behind the children that `parentKey` has; 35601 when there is no such node.
    OutlineNode& AddChild(const QString& parentKey, const QString& key, const QString& text,
                          int image, int selectedImage);

    // Takes the node out with all that is below it; 35601 when there is no such node. A selection
    // within it is dropped.
    void Remove(const QString& key);
    void Clear();

    int Count() const { return static_cast<int>(nodes_.size()); }
    // By place, counted from 1, or by key; 35601 when there is none.
    OutlineNode& Item(int index) const;
    OutlineNode& Item(const QString& key) const;
    // By key; the error tells the text that the node bore beside its key.
    OutlineNode& Item(const QString& key, const QString& text) const;
    // The same without an error: null when there is none.
    OutlineNode* find(const QString& key) const;

    const std::vector<OutlineNode*>& topLevel() const { return topLevel_; }
    // The next sibling; null behind the last.
    OutlineNode* Next(const OutlineNode& node) const;

    // Null when nothing is selected.
    OutlineNode* SelectedItem() const { return selected_; }
    // The same for a command that cannot go on without: error 91, with words for the user.
    OutlineNode& Selected() const;
    void Select(OutlineNode* node);
    void Expand(OutlineNode& node, bool expanded = true);
    // Costs what is expanded, not what is there.
    void CollapseAll();
    void setText(OutlineNode& node, const QString& text);

    // The observer must outlive its stay or take itself off; both are harmless when repeated.
    void addObserver(OutlineTreeObserver* observer);
    void removeObserver(OutlineTreeObserver* observer);

private:
    using Siblings = std::vector<OutlineNode*>;

    OutlineNode& append(OutlineNode* parent, const QString& key, const QString& text, int image,
                        int selectedImage);
    void checkKey(const QString& key) const;
    Siblings& siblingsOf(const OutlineNode& node);
    void detach(OutlineNode& node);
    void dropSubtree(OutlineNode& node);

    QString name_;
    std::vector<std::unique_ptr<OutlineNode>> nodes_;
    Siblings topLevel_;
    QHash<QString, OutlineNode*> byKey_;
    std::unordered_set<OutlineNode*> expanded_;
    OutlineNode* selected_ = nullptr;
    std::vector<OutlineTreeObserver*> observers_;
};

// A node as messages tell it: "文档：<text>（<key>）", "节点：..." for one that is no document.
QString nameWithKey(const OutlineNode& node);

// What a box tells of a failure: the sentence, the failure's cause, and the node that it is about,
// a line each. An empty sentence and a missing node have no line.
QString failureText(const QString& sentence, const RunTimeError& failure, const OutlineNode* node);

// The parent of a node; error 91, with words for the user, for a root.
OutlineNode& parentOf(const OutlineNode& node);

// The node that takes the selection when `node` is removed: the next sibling, else the previous
// one, else the parent. Null when it is alone.
OutlineNode* neighbourOf(const OutlineTree& tree, const OutlineNode& node);

} // namespace qvnd::outline
