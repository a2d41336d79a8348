#pragma once

#include "outline/OutlineTreeObserver.h"

#include <QAbstractItemModel>

#include <functional>

namespace qvnd::outline {

class OutlineNode;
class OutlineTree;

// Shows an OutlineTree to a view: one column, the node's text with the icon of its kind. It holds
// nothing of its own; every change of the tree is passed on as it happens. An index and a parent
// are found in constant time, however large the tree is.
class OutlineModel : public QAbstractItemModel, private OutlineTreeObserver {
    Q_OBJECT

public:
    // Tells the file of a document node for its tool tip; a run-time error when it has none.
    using FileOfNode = std::function<QString(const OutlineNode&)>;

    // The tree outlives the model. Without `fileOf` a tool tip names the key alone.
    explicit OutlineModel(OutlineTree& tree, FileOfNode fileOf = {}, QObject* parent = nullptr);
    ~OutlineModel() override;

    OutlineTree& tree() const { return tree_; }
    // Null for an invalid index, and the other way round.
    OutlineNode* nodeOf(const QModelIndex& index) const;
    QModelIndex indexOf(const OutlineNode* node) const;

    // Whether a text can be edited in place; off at first.
    void setEditable(bool editable) { editable_ = editable; }

    // True while the tree tells of a change, when it must not be changed again.
    bool isFollowing() const { return following_; }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // Emits textEdited with the new text; the receiver changes the tree.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // A node on its way is named by tree and key.
    static inline const QString nodeMimeType = QStringLiteral("application/x-qvnd-outline-node");
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDropActions() const override;
    // Accepts every drop; the window decides what a drop does.
    bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                         const QModelIndex& parent) const override;

signals:
    void textEdited(const QString& newText);
    // Follow the tree's own selection and expansion. An invalid index: nothing is selected.
    void nodeSelected(const QModelIndex& index);
    void nodeExpanded(const QModelIndex& index, bool expanded);

private:
    void aboutToAdd(const OutlineNode* parent, int row) override;
    void added(const OutlineNode& node) override;
    void aboutToRemove(const OutlineNode& node) override;
    void removed() override;
    void aboutToClear() override;
    void cleared() override;
    void textChanged(const OutlineNode& node) override;
    void expandedChanged(const OutlineNode& node) override;
    void selectionChanged(const OutlineNode* node) override;

    void changed(const OutlineNode* node, int role);
    QString toolTip(const OutlineNode& node) const;

    OutlineTree& tree_;
    FileOfNode fileOf_;
    const OutlineNode* shownSelected_ = nullptr;
    bool editable_ = false;
    bool following_ = false;
};

} // namespace qvnd::outline
