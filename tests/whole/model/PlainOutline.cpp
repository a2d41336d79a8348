#include "whole/model/PlainProgram.h"

#include <QFileInfo>

// Adding, deleting and renaming in the open plan.
namespace qvnd::model {

namespace {

constexpr int deepest = 9;

// The parts of a file's title between its points, but for the last `without`; never none.
QString partsOf(const QString& title, int without) {
    const QStringList parts = title.split('.');
    return parts.mid(0, std::max(1, static_cast<int>(parts.size()) - without)).join('.');
}

bool hasDocument(const Node& parent, const QString& name) {
    return std::any_of(parent.children.begin(), parent.children.end(), [&](const Node* node) {
        return node->kind == document && node->text == name;
    });
}

} // namespace

Database& PlainProgram::copyOf(const QString& plan) {
    if (!planFolders.contains(plan) || !planFolders[plan].database) {
        throw Failure{other};
    }
    return *planFolders[plan].database;
}

void PlainProgram::click(const QString& key) {
    Node& node = current.item(key);
    current.selected = &node;
    clickedKey_ = key;
    selectedPlan_ = depthOf(key) == 0 ? node.text : QString();
    // The row is looked up; the name stands bare there.
    if (!isBare(tableOf(key)) || !user.has(tableOf(key)) || key.contains('\'')) {
        tellFailure();
    }
}

QString PlainProgram::newKeyIn(Table& table, int base, const QString& parent) {
    const int count = table.countLike(parent);
    if (count == 0) {
        throw Failure{other};
    }
    return parent + "." + QString::number(base + count);
}

// The rows behind the one of the key, into the scratch table; gives the base of the new number.
int PlainProgram::takeOut(Table& table, const QString& behindKey) {
    const Row* row = table.find(behindKey);
    if (!row) {
        throw Failure{other};
    }
    const int point = row->id;
    const int last = table.last().id;
    temp = table.take([&](const Row& each) { return each.id > point; });
    return last - static_cast<int>(table.rows.size());
}

void PlainProgram::putBack(Table& table) {
    for (const Row& row : *temp) {
        table.add(row.key, row.name, row.isDocument);
    }
}

void PlainProgram::addFolder(bool beside, const QString& name) {
    try {
        addFolderTo(beside, name.trimmed());
    } catch (const Failure&) {
        tellFailure();
    }
}

void PlainProgram::addFolderTo(bool beside, const QString& name) {
    const Node* selected = current.selected;
    const Node* parent = selected && beside ? selected->parent : selected;
    if (!parent) {
        throw Failure{other};
    }
    for (const Node* node : parent->children) {
        if (node->kind == folder && node->text.trimmed() == name) {
            tell("对不起，命名重复！", 3, "警告！");
            return;
        }
    }
    const QString key = selected->key;
    const QString plan = bare(tableOf(key));
    Table& table = user.outline(plan);
    const int base =
        beside ? takeOut(table, key) : table.last().id - static_cast<int>(table.rows.size());
    const QString newKey = newKeyIn(table, base, beside ? parentOf(key) : key);
    if (depthOf(newKey) > deepest) {
        tell("对不起，系统最多支持九级深度！", 3, "警告！");
        return;
    }
    table.add(newKey, name, false);
    if (beside) {
        putBack(table);
    }
    Table& copy = copyOf(plan).outline(plan);
    copy.rows = table.rows;
    copy.lastId = std::max(copy.lastId, table.last().id);
    current.clear();
    current.fill(table);
    current.selected = &current.item(newKey);
}

void PlainProgram::addDocument(bool beside, const QString& file,
                               const std::optional<QByteArray>& content) {
    if (!current.selected) {
        return;
    }
    try {
        addDocumentTo(beside, file, content);
    } catch (const Failure&) {
        tellFailure();
    }
}

void PlainProgram::addDocumentTo(bool beside, const QString& file,
                                 const std::optional<QByteArray>& content) {
    const Node& selected = *current.selected;
    const QString key = selected.key;
    const QString plan = tableOf(key);
    const QString title = QFileInfo(file).fileName();
    planFolders[plan];
    Table& table = user.outline(bare(plan));
    int base = 0;
    if (beside) {
        if (!table.find(key) || !selected.parent) {
            throw Failure{other};
        }
        if (hasDocument(*selected.parent, partsOf(title, 2))) {
            tell("对不起，命名重复！", 1, "警告！");
            return;
        }
        base = takeOut(table, key);
    } else {
        base = table.last().id - static_cast<int>(table.rows.size());
    }
    const QString newKey = newKeyIn(table, base, beside ? parentOf(key) : key);
    const QString question =
        beside ? "此文件不存在。要创建此文件吗？" : "此文件不存在。要创建此文件？";
    if (!content && !ask(file + "\n" + question, 2)) {
        return;
    }
    planFolders[plan].files[newKey + ".doc"] = content.value_or("normal");
    const QString name = partsOf(title.trimmed(), 1);
    if (!beside && depthOf(newKey) > deepest) {
        tell("对不起，系统最多支持九级深度！", 1, "警告！");
        return;
    }
    if (!beside && hasDocument(selected, name)) {
        tell("对不起，命名重复！", 1, "警告！");
        return;
    }
    table.add(newKey, name, true);
    copyOf(plan).outline(plan).add(newKey, name, true);
    if (beside) {
        putBack(table);
        current.clear();
        current.fill(table);
    } else {
        current.add(&current.item(key), newKey, name, document);
    }
    refreshPlans();
    current.selected = &current.item(newKey);
}

void PlainProgram::deleteNode() {
    QString subtree;
    try {
        if (!current.selected) {
            throw Failure{other};
        }
        if (!ask("真的要删除[" + current.selected->text + "]吗？", 2)) {
            return;
        }
        const QString key = current.selected->key;
        if (depthOf(key) == 0) {
            deleteWholePlan(key);
        } else {
            subtree = key;
            deleteSubtree(tableOf(key), key);
        }
    } catch (const Failure& failure) {
        showWhatStands(subtree);
        if (failure.number != itemNotFound) {
            tellFailure();
        }
    }
}

void PlainProgram::deleteWholePlan(const QString& plan) {
    user.drop(plan);
    user.drop(plan + "Org");
    if (plan.contains('\'')) {
        throw Failure{other};
    }
    user.list.removeAll(plan);
    if (currentPlan == plan) {
        currentPlan.reset();
    }
    planFolders.remove(plan);
    current.clear();
    refreshPlans();
}

void PlainProgram::deleteSubtree(const QString& plan, const QString& key) {
    if (key.contains('\'')) {
        throw Failure{other};
    }
    const auto isMeant = [&](const Row& row) {
        return row.key.startsWith(key, Qt::CaseInsensitive);
    };
    user.outline(bare(plan)).take(isMeant);
    copyOf(plan).outline(plan).take(isMeant);
    Node* neighbour = removeNode(key);
    refreshPlans();
    if (neighbour) {
        click(neighbour->key);
    }
}

// The node that was beside it.
Node* PlainProgram::removeNode(const QString& key) {
    Node* neighbour = Tree::neighbourOf(current.item(key));
    current.remove(current.item(key));
    return neighbour;
}

// A deletion that failed behind that of the row.
void PlainProgram::showWhatStands(const QString& key) {
    const QString plan = tableOf(key);
    if (!key.isEmpty() && !key.contains('\'') && isBare(plan) && user.has(plan) &&
        !user.outline(plan).find(key)) {
        current.selected = removeNode(key);
        refreshPlans();
    }
}

void PlainProgram::rename(const QString& text) {
    if (!current.selected) {
        tellFailure();
        return;
    }
    if (text.isEmpty()) {
        tell("对不起，名称不能为空", 1);
        return;
    }
    const QString plan = tableOf(current.selected->key);
    Row* row = isBare(plan) && user.has(plan) && !clickedKey_.contains('\'')
                   ? user.outline(plan).find(clickedKey_)
                   : nullptr;
    if (!row) {
        tellFailure();
        return;
    }
    row->name = text;
    current.selected->text = text;
}

void PlainProgram::doubleClick() {
    const Node* selected = current.selected;
    if (!selected || selected->kind != document) {
        return;
    }
    const QString plan = current.nodes.front().text;
    if (plan.trimmed().isEmpty()) {
        tellFailure(); // no folder can have that name
        return;
    }
    const QString key = selected->key;
    const QString name = key + ".doc";
    if (planFolders.contains(plan) && planFolders[plan].files.contains(name)) {
        return;
    }
    tell("找不到 [ " + plansPath() + plan + "/" + name + " ] \n" +
             "此文件可能是被删除了,或是文件路径名不正确！\n文档：" + selected->text + "（" + key +
             "）",
         3, "提示");
    if (!user.has(plan) || key.contains('\'')) {
        tellFailure();
        return;
    }
    user.outline(plan).take([&](const Row& row) { return row.key == key; });
    current.selected = removeNode(key);
    refreshPlans();
}

} // namespace qvnd::model
