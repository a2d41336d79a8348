#include "whole/model/PlainProgram.h"

// Dragging in the open plan, and dropping.
namespace qvnd::model {

namespace {

constexpr int longestKey = 255;

bool isBelow(const Row& row, const QString& key) {
    return row.key.contains(key + ".", Qt::CaseInsensitive);
}

} // namespace

void PlainProgram::startDrag() {
    if (current.selected) {
        dragKey_ = current.selected->key;
        dragIndex_ = current.indexOf(current.selected);
    }
}

void PlainProgram::drop(const std::optional<QString>& target) {
    Node* node = target ? current.find(*target) : nullptr;
    if (node) {
        current.selected = node;
    }
    if (!dragKey_.isEmpty()) {
        node ? move(*node) : refreshPlans();
        return;
    }
    if (!node) {
        return;
    }
    const bool isFirst = current.indexOf(node) == 1;
    dropTargetImage_ = node->kind;
    dragDrop(*target, copySourceKey_, nullptr);
    dropTargetImage_ = 0;
    refreshPlans();
    if (isFirst && !current.nodes.empty()) {
        current.selected = &current.nodes.front();
    }
}

void PlainProgram::move(Node& target) {
    if (target.key != dragKey_ && dragIndex_ != 1 && currentPlan &&
        movePlan(*currentPlan, target)) {
        refreshPlans();
    }
    dragKey_.clear();
}

// False when there is no row of the node or of the target, or no key for it: nothing is changed.
bool PlainProgram::movePlan(const QString& plan, Node& target) {
    if (!isBare(plan) || !user.outlines.contains(plan)) {
        return false;
    }
    Table& table = user.outline(plan);
    if (!table.find(dragKey_) || !table.find(target.key)) {
        return false;
    }
    const Row source = *table.find(dragKey_);
    const Row place = *table.find(target.key);
    const bool isUpward = current.indexOf(&target) <= dragIndex_;
    const int base = table.last().id - static_cast<int>(table.rows.size());
    const QString newKey =
        newKeyIn(table, base, place.isDocument ? parentOf(place.key) : place.key);
    const auto renamed = [&](QString key) { return key.replace(dragKey_, newKey); };

    std::vector<Moved> documents;
    int longest = static_cast<int>(newKey.size());
    if (source.isDocument) {
        documents.push_back({dragKey_, newKey});
    } else {
        for (const Row& row : table.rows) {
            if (isBelow(row, dragKey_)) {
                longest = std::max(longest, static_cast<int>(renamed(row.key).size()));
                if (row.isDocument) {
                    documents.push_back({row.key, renamed(row.key)});
                }
            }
        }
    }
    if (longest > longestKey) {
        return false;
    }
    // No file may be lost: each is first brought to its new name, and leaves the old one only when
    // a row bears the new key and none the old one.
    auto& files = planFolders[plan].files;
    std::vector<Moved> brought;
    for (const Moved& moved : documents) {
        if (files.contains(moved.from + ".doc")) {
            files[moved.to + ".doc"] = files[moved.from + ".doc"];
            brought.push_back(moved);
        }
    }

    table.take([&](const Row& row) { return row.key == dragKey_; });
    temp = table.take(
        [&](const Row& row) { return place.isDocument ? row.id >= place.id : row.id > place.id; });
    const auto add = [&](const QString& key, const Row& row) {
        try {
            table.add(key, row.name, row.isDocument);
        } catch (const Failure&) {
            return;
        }
    };
    const auto putBackEach = [&] {
        for (const Row& row : *temp) {
            add(row.key, row);
        }
    };
    add(newKey, source);
    putBackEach();
    if (!isUpward && !source.isDocument) {
        temp = table.take([&](const Row& row) { return isBelow(row, dragKey_); });
        putBackEach();
    }
    if (!source.isDocument) {
        for (Row& row : table.rows) {
            const QString key = renamed(row.key);
            if (isBelow(row, dragKey_) && !(table.keysAreUnique && table.find(key))) {
                row.key = key;
            }
        }
    }
    for (const Moved& moved : brought) {
        if (table.find(moved.to) && !table.find(moved.from)) {
            files.remove(moved.from + ".doc");
        }
    }
    temp = std::vector<Row>();
    current.clear();
    current.fill(table);
    refreshPlans();
    if (Node* node = current.find(newKey)) {
        current.selected = node;
    }
    return true;
}

} // namespace qvnd::model
