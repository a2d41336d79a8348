#include "outline/windows/OutlineModel.h"

#include "outline/OutlineTree.h"
#include "outline/windows/OutlineIcons.h"
#include "platform/error/IgnoringErrors.h"

#include <QMimeData>
#include <QScopedValueRollback>

#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

QString kindOf(const OutlineNode& node) {
    switch (node.Image()) {
    case image::root:
        return u"方案"_s;
    case image::document:
        return u"文档"_s;
    default:
        return u"文件夹"_s;
    }
}

} // namespace

OutlineModel::OutlineModel(OutlineTree& tree, FileOfNode fileOf, QObject* parent)
    : QAbstractItemModel(parent), tree_(tree), fileOf_(std::move(fileOf)),
      shownSelected_(tree.SelectedItem()) {
    tree_.addObserver(this);
}

OutlineModel::~OutlineModel() { tree_.removeObserver(this); }

OutlineNode* OutlineModel::nodeOf(const QModelIndex& index) const {
    return index.isValid() ? static_cast<OutlineNode*>(index.internalPointer()) : nullptr;
}

QModelIndex OutlineModel::indexOf(const OutlineNode* node) const {
    return node ? createIndex(node->row(), 0, node) : QModelIndex();
}

QModelIndex OutlineModel::index(int row, int column, const QModelIndex& parent) const {
    const OutlineNode* above = nodeOf(parent);
    const auto& siblings = above ? above->childList() : tree_.topLevel();
    if (column != 0 || row < 0 || static_cast<std::size_t>(row) >= siblings.size()) {
        return {};
    }
    return createIndex(row, column, siblings[static_cast<std::size_t>(row)]);
}

QModelIndex OutlineModel::parent(const QModelIndex& child) const {
    const OutlineNode* node = nodeOf(child);
    return node ? indexOf(node->Parent()) : QModelIndex();
}

int OutlineModel::rowCount(const QModelIndex& parent) const {
    const OutlineNode* above = nodeOf(parent);
    return above ? above->Children() : static_cast<int>(tree_.topLevel().size());
}

int OutlineModel::columnCount(const QModelIndex&) const { return 1; }

bool OutlineModel::hasChildren(const QModelIndex& parent) const { return rowCount(parent) > 0; }

QVariant OutlineModel::data(const QModelIndex& index, int role) const {
    const OutlineNode* node = nodeOf(index);
    if (!node) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return node->Text();
    case Qt::DecorationRole:
        return outlineIcon(node == tree_.SelectedItem() ? node->SelectedImage() : node->Image());
    case Qt::ToolTipRole:
        return toolTip(*node);
    case Qt::AccessibleDescriptionRole:
        return kindOf(*node);
    default:
        return {};
    }
}

QString OutlineModel::toolTip(const OutlineNode& node) const {
    QString tip = u"编号："_s + node.Key();
    if (node.Image() == image::document && fileOf_) {
        ignoringErrors([&] { tip += u"\n文件："_s + fileOf_(node); });
    }
    return tip;
}

bool OutlineModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole) {
        return false;
    }
    emit textEdited(value.toString());
    return true;
}

Qt::ItemFlags OutlineModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::ItemIsDropEnabled;
    }
    const Qt::ItemFlags all =
        Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    return editable_ ? all | Qt::ItemIsEditable : all;
}

QStringList OutlineModel::mimeTypes() const { return {nodeMimeType, u"text/uri-list"_s}; }

QMimeData* OutlineModel::mimeData(const QModelIndexList& indexes) const {
    auto* data = new QMimeData;
    const OutlineNode* node = indexes.isEmpty() ? nullptr : nodeOf(indexes.constFirst());
    if (node) {
        data->setData(nodeMimeType, (tree_.Name() + u'\n' + node->Key()).toUtf8());
    }
    return data;
}

Qt::DropActions OutlineModel::supportedDropActions() const {
    return Qt::CopyAction | Qt::MoveAction;
}

bool OutlineModel::canDropMimeData(const QMimeData* data, Qt::DropAction, int, int,
                                   const QModelIndex&) const {
    return data && (data->hasFormat(nodeMimeType) || data->hasUrls());
}

void OutlineModel::aboutToAdd(const OutlineNode* parent, int row) {
    following_ = true;
    beginInsertRows(indexOf(parent), row, row);
}

void OutlineModel::added(const OutlineNode&) {
    endInsertRows();
    following_ = false;
}

void OutlineModel::aboutToRemove(const OutlineNode& node) {
    following_ = true;
    beginRemoveRows(indexOf(node.Parent()), node.row(), node.row());
}

void OutlineModel::removed() {
    endRemoveRows();
    following_ = false;
}

void OutlineModel::aboutToClear() {
    following_ = true;
    beginResetModel();
}

void OutlineModel::cleared() {
    endResetModel();
    following_ = false;
}

void OutlineModel::changed(const OutlineNode* node, int role) {
    if (const QModelIndex index = indexOf(node); index.isValid()) {
        emit dataChanged(index, index, {role});
    }
}

void OutlineModel::textChanged(const OutlineNode& node) {
    const QScopedValueRollback following(following_, true);
    changed(&node, Qt::DisplayRole);
}

void OutlineModel::expandedChanged(const OutlineNode& node) {
    const QScopedValueRollback following(following_, true);
    emit nodeExpanded(indexOf(&node), node.Expanded());
}

void OutlineModel::selectionChanged(const OutlineNode* node) {
    const QScopedValueRollback following(following_, true);
    const OutlineNode* before = std::exchange(shownSelected_, node);
    changed(before, Qt::DecorationRole);
    changed(node, Qt::DecorationRole);
    emit nodeSelected(indexOf(node));
}

} // namespace qvnd::outline
