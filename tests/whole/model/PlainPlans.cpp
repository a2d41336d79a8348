#include "whole/model/PlainProgram.h"

#include <QRegularExpression>

// Plans coming, going and being opened; what start and exit do; the lists of outlines.
namespace qvnd::model {

namespace {

bool isNameOfTable(const QString& name) {
    return !name.isEmpty() && name.size() <= 64 &&
           std::none_of(name.begin(), name.end(),
                        [](QChar c) { return c < ' ' || QString(".!`[]").contains(c); });
}

// What stands in the name and may not; a blank may.
QStringList illegalIn(const QString& name) {
    static const QRegularExpression ascii("[!-/:-@\\[-`{-~]");
    QStringList found;
    for (auto all = ascii.globalMatch(name); all.hasNext();) {
        found << all.next().captured();
    }
    found.removeDuplicates();
    return found;
}

} // namespace

void PlainProgram::refreshPlans(bool keepMissing) {
    refresh(user, plans, planFolders, false, keepMissing);
}

void PlainProgram::refreshTemplates() { refresh(library, templates, templateFolders, true, false); }

void PlainProgram::refresh(Database& database, Tree& tree, QMap<QString, Folder>& folders,
                           bool isTemplates, bool keepMissing) {
    tree.clear();
    bool isPending = false;
    QStringList kept;
    for (const QString& name : database.list) {
        bool stays = true;
        if (folders.contains(name)) {
            // A blank in a bare name makes what is behind it another name for the table before it.
            const QString table = name.section(' ', 0, 0);
            if (!isBare(table)) {
                isPending = true;
            } else if (database.has(table)) {
                tree.fill(database.outlines.value(table));
            } else {
                stays = false;
                if (isTemplates) {
                    folders[name].database.reset();
                }
            }
        } else if (isTemplates || !keepMissing) {
            stays = false;
            for (const QString& table : {name, name + "Org"}) {
                if (database.has(table)) {
                    database.drop(table);
                }
            }
        }
        if (stays) {
            kept << name;
        }
    }
    database.list = kept;
    if (isPending) {
        tell("更新标书模板库时发生错误!", 3);
    }
}

void PlainProgram::saveCurrentPlan() {
    if (current.nodes.empty()) {
        return;
    }
    const QString name = current.nodes.front().text;
    if (!planFolders.contains(name) || !planFolders[name].database || !user.has(name)) {
        return;
    }
    Database& copy = *planFolders[name].database;
    if (copy.has(name)) {
        if (!isBare(name)) {
            return;
        }
        copy.drop(name);
    }
    copy.outlines[name] = user.outlines.value(name).copied();
}

void PlainProgram::exit() {
    saveCurrentPlan();
    for (Tree* tree : {&current, &templates, &plans}) {
        tree->clear();
    }
    for (QString* text : {&selectedPlan_, &clickedKey_, &dragKey_, &copySourceKey_}) {
        text->clear();
    }
    dragIndex_ = 0;
    dropTargetImage_ = 0;
}

void PlainProgram::start() {
    try {
        load();
    } catch (const Failure&) {
        tellFailure();
    }
}

void PlainProgram::load() {
    if (currentPlan && !currentPlan->isEmpty() && planFolders.contains(*currentPlan)) {
        const Table table = user.outline(*currentPlan);
        current.clear();
        current.fill(table);
    }
    adoptTemplates();
    adoptPlans();
    if (!current.nodes.empty()) {
        current.selected = &current.nodes.back();
    }
}

void PlainProgram::adoptPlans() {
    bool failed = false;
    for (auto at = planFolders.begin(); at != planFolders.end(); ++at) {
        const QString& name = at.key();
        if (!at->database || user.list.contains(name)) {
            continue;
        }
        user.list << name;
        for (const QString& table : {name, name + "Org"}) {
            Database& own = *at->database;
            if (!isBare(name) || !own.has(table) || user.has(table)) {
                failed = true;
            } else if (own.outlines.contains(table)) {
                user.outlines[table] = own.outlines[table].copied();
            } else {
                user.others << table;
            }
        }
    }
    refreshPlans();
    if (failed) {
        tellFailure();
    }
}

void PlainProgram::adoptTemplates() {
    for (auto at = templateFolders.begin(); at != templateFolders.end(); ++at) {
        const QString& name = at.key();
        if (!at->database || library.list.contains(name)) {
            continue;
        }
        library.list << name;
        if (!isBare(name) || !at->database->has(name) || library.has(name)) {
            tellFailure();
            return;
        }
        library.outlines[name] = at->database->outlines[name].copied();
    }
    refreshTemplates();
}

void PlainProgram::newPlan(const QString& typed) {
    const QString name = typed.trimmed();
    if (name.isEmpty()) {
        tell("对不起，名称不能为空!", 3, "警告！");
        return;
    }
    if (const QStringList illegal = illegalIn(name); !illegal.isEmpty()) {
        tell("对不起，输入字符非法！\n方案名称只能由汉字、字母和数字组成，不能有：“" +
                 illegal.join("”、“") + "”",
             3, "");
        return;
    }
    try {
        if (createPlan(name)) {
            refreshPlans(true);
        }
    } catch (const Failure& failure) {
        if (failure.number != 35603) {
            tellFailure();
            return;
        }
        user.drop(name);
        user.drop(name + "Org");
        user.list.removeAll(name);
        currentPlan.reset();
        tell("对不起，工程名称不合法！", 3, "提示");
    }
}

bool PlainProgram::createPlan(const QString& name) {
    currentPlan = name;
    if (planFolders.contains(name)) {
        if (!ask(plansPath() + "下已存在 " + name + "，是否覆盖？", 2, "提示")) {
            return false;
        }
        planFolders.remove(name);
    }
    planFolders[name];
    createTables(name);
    Table& table = user.outlines[name];
    table.add(name, name, false);
    Database& own = planFolders[name].database.emplace();
    own.outlines[name] = table.copied();
    own.others << name + "Org";
    user.list << name;
    current.clear();
    current.add(nullptr, name, name, root);
    return true;
}

void PlainProgram::createTables(const QString& name) {
    if (!isNameOfTable(name + "Org") || user.has(name + "Org")) {
        throw Failure{tableExists};
    }
    user.others << name + "Org";
    if (user.has(name)) {
        throw Failure{tableExists};
    }
    user.outlines[name];
}

void PlainProgram::deletePlan() {
    const QString name = current.nodes.empty() ? QString() : current.nodes.front().text;
    if (name.isEmpty() || !ask("确实要删除工程 [ " + name + " ]", 2, "提示")) {
        return;
    }
    planFolders.remove(name);
    for (const QString& table : {selectedPlan_, selectedPlan_ + "Org"}) {
        if (!selectedPlan_.isEmpty() && user.has(table)) {
            user.drop(table);
        }
    }
    currentPlan.reset();
    if (!selectedPlan_.contains('\'')) {
        user.list.removeAll(selectedPlan_);
    }
    selectedPlan_.clear();
    current.clear();
    if (Node* node = plans.find(name)) {
        plans.remove(*node);
    }
}

void PlainProgram::clickPlan(const QString& key) {
    Node& node = plans.item(key);
    copySourceKey_ = key;
    plans.selected = &node;
    if (node.kind == root) {
        saveCurrentPlan();
        current.clear();
        current.fill(user.outline(bare(tableOf(key))));
    }
    currentPlan = tableOf(key);
}

} // namespace qvnd::model
