#include "whole/model/PlainProgram.h"

// Dragging in the open plan, and dropping.
namespace qvnd::model {

namespace {

constexpr int longestKey = 255;

bool isBelow(const Row& row, const QString& key) {
    return row.key.contains(key + ".", Qt::CaseInsensitive);
}

// The row of a node going to another place of its plan, with what is below it.
struct Relocation {
    QString key;
    Row source;
    Row place; // the document that it goes before, or the folder that it goes into
    QString newKey;
    bool isUpward = false;

    bool isPart(const Row& row) const { return !source.isDocument && isBelow(row, key); }
    QString renamed(QString other) const { return other.replace(key, newKey); }

    bool fits(const Table& table) const {
        return newKey.size() <= longestKey &&
               std::none_of(table.rows.begin(), table.rows.end(), [&](const Row& row) {
                   return isPart(row) && renamed(row.key).size() > longestKey;
               });
    }
    // The old keys of the documents with their new ones.
    QMap<QString, QString> documents(const Table& table) const {
        QMap<QString, QString> keys;
        for (const Row& row : table.rows) {
            if (row.isDocument && (row.key == source.key || isPart(row))) {
                keys[row.key] = renamed(row.key);
            }
        }
        return keys;
    }
    // From its new place on all rows get new numbers. What is below a folder that went down is the
    // end of the outline, as it has to stand behind it.
    void arrange(Table& table) const {
        std::erase_if(table.rows, [&](const Row& row) { return row.key == key; });
        const auto at = std::find_if(table.rows.begin(), table.rows.end(), [&](const Row& row) {
            return place.isDocument ? row.id >= place.id : row.id > place.id;
        });
        table.number(table.rows.insert(at, {0, newKey, source.name, source.isDocument}));
        if (!isUpward && !source.isDocument) {
            table.number(std::stable_partition(table.rows.begin(), table.rows.end(),
                                               [&](const Row& row) { return !isPart(row); }));
        }
        for (Row& row : table.rows) {
            row.key = isPart(row) ? renamed(row.key) : row.key;
        }
    }
};

// Each document's text goes along, unless a row still bears its old key.
void bringTexts(QMap<QString, QByteArray>& files, Table& table,
                const QMap<QString, QString>& documents) {
    for (auto moved = documents.begin(); moved != documents.end(); ++moved) {
        const QString name = moved.key() + ".doc";
        if (files.contains(name)) {
            files[moved.value() + ".doc"] =
                table.find(moved.key()) ? files[name] : files.take(name);
        }
    }
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
    const Row place = *table.find(target.key);
    const int base = table.last().id - static_cast<int>(table.rows.size());
    const Relocation relocation{
        dragKey_, *table.find(dragKey_), place,
        newKeyIn(table, base, place.isDocument ? parentOf(place.key) : place.key),
        current.indexOf(&target) <= dragIndex_};
    if (!relocation.fits(table)) {
        return false;
    }
    const QMap<QString, QString> documents = relocation.documents(table);
    relocation.arrange(table);
    bringTexts(planFolders[plan].files, table, documents);
    temp = std::vector<Row>();
    current.clear();
    current.fill(table);
    refreshPlans();
    if (Node* node = current.find(relocation.newKey)) {
        current.selected = node;
    }
    return true;
}

} // namespace qvnd::model
