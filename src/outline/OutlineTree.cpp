#include "outline/OutlineTree.h"

#include "outline/OutlineTreeObserver.h"
#include "platform/desktop/MessageBoxes.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace qvnd::outline {

namespace {

bool isDigitsOnly(const QString& key) {
    return !key.isEmpty() &&
           std::all_of(key.begin(), key.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

[[noreturn]] void fail(long number, const QString& description) {
    throw RunTimeError(number, description.toStdU16String());
}

} // namespace

OutlineTree::OutlineTree(QString name) : name_(std::move(name)) {}
OutlineTree::~OutlineTree() = default;

void OutlineTree::checkKey(const QString& key) const {
    if (isDigitsOnly(key)) {
        fail(error::keyInvalid, QStringLiteral("“%1”不能用作节点的编号").arg(key));
    }
    if (!key.isEmpty() && byKey_.contains(key)) {
        fail(error::keyNotUnique, QStringLiteral("编号为“%1”的节点已经存在").arg(key));
    }
}

OutlineTree::Siblings& OutlineTree::siblingsOf(const OutlineNode& node) {
    return node.parent_ ? node.parent_->children_ : topLevel_;
}

OutlineNode& OutlineTree::append(OutlineNode* parent, const QString& key, const QString& text,
                                 int image, int selectedImage) {
    checkKey(key);
    auto node = std::make_unique<OutlineNode>();
    node->key_ = key;
    node->text_ = text;
    node->image_ = image;
    node->selectedImage_ = selectedImage;
    node->parent_ = parent;
    node->index_ = Count() + 1;
    Siblings& siblings = siblingsOf(*node);
    node->row_ = static_cast<int>(siblings.size());

    for (auto* observer : observers_) {
        observer->aboutToAdd(parent, node->row_);
    }
    siblings.push_back(node.get());
    if (!key.isEmpty()) {
        byKey_.insert(key, node.get());
    }
    nodes_.push_back(std::move(node));
    OutlineNode& added = *nodes_.back();
    for (auto* observer : observers_) {
        observer->added(added);
    }
    return added;
}

OutlineNode& OutlineTree::Add(const QString& key, const QString& text, int image,
                              int selectedImage) {
    return append(nullptr, key, text, image, selectedImage);
}

OutlineNode& OutlineTree::AddChild(const QString& parentKey, const QString& key,
                                   const QString& text, int image, int selectedImage) {
    return append(&Item(parentKey), key, text, image, selectedImage);
}

void OutlineTree::detach(OutlineNode& node) {
    Siblings& siblings = siblingsOf(node);
    siblings.erase(siblings.begin() + node.row_);
    for (std::size_t row = node.row_; row < siblings.size(); ++row) {
        siblings[row]->row_ = static_cast<int>(row);
    }
}

void OutlineTree::dropSubtree(OutlineNode& node) {
    std::vector<OutlineNode*> pending{&node};
    std::unordered_set<const OutlineNode*> doomed;
    while (!pending.empty()) {
        OutlineNode* next = pending.back();
        pending.pop_back();
        doomed.insert(next);
        byKey_.remove(next->key_);
        expanded_.erase(next);
        pending.insert(pending.end(), next->children_.begin(), next->children_.end());
    }
    std::erase_if(nodes_, [&](const auto& owned) { return doomed.contains(owned.get()); });
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        nodes_[i]->index_ = static_cast<int>(i) + 1;
    }
}

void OutlineTree::Remove(const QString& key) {
    OutlineNode& node = Item(key);
    for (const OutlineNode* at = selected_; at; at = at->parent_) {
        if (at == &node) {
            Select(nullptr);
            break;
        }
    }
    for (auto* observer : observers_) {
        observer->aboutToRemove(node);
    }
    detach(node);
    dropSubtree(node);
    for (auto* observer : observers_) {
        observer->removed();
    }
}

void OutlineTree::Clear() {
    Select(nullptr);
    for (auto* observer : observers_) {
        observer->aboutToClear();
    }
    topLevel_.clear();
    byKey_.clear();
    expanded_.clear();
    nodes_.clear();
    for (auto* observer : observers_) {
        observer->cleared();
    }
}

OutlineNode& OutlineTree::Item(int index) const {
    if (index < 1 || index > Count()) {
        fail(error::elementNotFound, QStringLiteral("没有第 %1 个节点").arg(index));
    }
    return *nodes_[static_cast<std::size_t>(index) - 1];
}

OutlineNode& OutlineTree::Item(const QString& key) const {
    OutlineNode* node = find(key);
    if (!node) {
        fail(error::elementNotFound, QStringLiteral("编号为“%1”的节点已不存在").arg(key));
    }
    return *node;
}

OutlineNode& OutlineTree::Item(const QString& key, const QString& text) const {
    OutlineNode* node = find(key);
    if (!node && !text.isEmpty()) {
        fail(error::elementNotFound, QStringLiteral("节点“%1”（%2）已不存在").arg(text, key));
    }
    return node ? *node : Item(key);
}

OutlineNode* OutlineTree::find(const QString& key) const { return byKey_.value(key, nullptr); }

OutlineNode* OutlineTree::Next(const OutlineNode& node) const {
    const Siblings& siblings = node.parent_ ? node.parent_->children_ : topLevel_;
    const auto next = static_cast<std::size_t>(node.row_) + 1;
    return next < siblings.size() ? siblings[next] : nullptr;
}

OutlineNode& OutlineTree::Selected() const {
    if (!selected_) {
        fail(error::objectNotSet, QStringLiteral("没有选中节点，请先选中一个节点。"));
    }
    return *selected_;
}

void OutlineTree::Select(OutlineNode* node) {
    if (node == selected_) {
        return;
    }
    selected_ = node;
    for (auto* observer : observers_) {
        observer->selectionChanged(node);
    }
}

void OutlineTree::Expand(OutlineNode& node, bool expanded) {
    if (node.expanded_ == expanded) {
        return;
    }
    node.expanded_ = expanded;
    if (expanded) {
        expanded_.insert(&node);
    } else {
        expanded_.erase(&node);
    }
    for (auto* observer : observers_) {
        observer->expandedChanged(node);
    }
}

void OutlineTree::CollapseAll() {
    std::vector<OutlineNode*> nodes(expanded_.begin(), expanded_.end());
    std::sort(nodes.begin(), nodes.end(), [](const OutlineNode* one, const OutlineNode* other) {
        return one->Index() < other->Index();
    });
    for (OutlineNode* node : nodes) {
        Expand(*node, false);
    }
}

void OutlineTree::setText(OutlineNode& node, const QString& text) {
    node.text_ = text;
    for (auto* observer : observers_) {
        observer->textChanged(node);
    }
}

void OutlineTree::addObserver(OutlineTreeObserver* observer) {
    if (std::find(observers_.begin(), observers_.end(), observer) == observers_.end()) {
        observers_.push_back(observer);
    }
}

void OutlineTree::removeObserver(OutlineTreeObserver* observer) {
    std::erase(observers_, observer);
}

QString nameWithKey(const OutlineNode& node) {
    const QString words = node.Image() == image::document ? QStringLiteral("文档：%1（%2）")
                                                          : QStringLiteral("节点：%1（%2）");
    return words.arg(node.Text(), node.Key());
}

QString failureText(const QString& sentence, const RunTimeError& failure, const OutlineNode* node) {
    QStringList lines;
    if (!sentence.isEmpty()) {
        lines << sentence;
    }
    lines << desktop::descriptionOf(failure);
    if (node != nullptr) {
        lines << nameWithKey(*node);
    }
    return lines.join(u'\n');
}

OutlineNode& parentOf(const OutlineNode& node) {
    if (!node.Parent()) {
        fail(error::objectNotSet,
             QStringLiteral("“%1”是根节点，没有同级，请添加到下级。").arg(node.Text()));
    }
    return *node.Parent();
}

OutlineNode* neighbourOf(const OutlineTree& tree, const OutlineNode& node) {
    if (OutlineNode* next = tree.Next(node)) {
        return next;
    }
    const auto& siblings = node.Parent() ? node.Parent()->childList() : tree.topLevel();
    return node.row() > 0 ? siblings[static_cast<std::size_t>(node.row()) - 1] : node.Parent();
}

} // namespace qvnd::outline
