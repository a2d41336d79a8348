#include "whole/model/PlainProgram.h"

// The template library, and copying out of it.
namespace qvnd::model {

void PlainProgram::pressTemplate(const QString& key) {
    templates.selected = &templates.item(key);
    copySourceKey_ = key;
}

void PlainProgram::copy() {
    if (templates.selected) {
        copySourceKey_ = templates.selected->key;
    }
}

void PlainProgram::paste() {
    if (!current.selected) {
        return;
    }
    const QString targetKey = current.selected->key;
    dropTargetImage_ = current.selected->kind;
    dragDrop(targetKey, copySourceKey_, nullptr);
    dropTargetImage_ = 0;
}

PlainProgram::Copied PlainProgram::dragDrop(const QString& targetKey, const QString& sourceKey,
                                            Node* source) {
    try {
        return copyNode(targetKey, sourceKey, source);
    } catch (const Failure&) {
        tellFailure();
        return Copied::incomplete;
    }
}

PlainProgram::Copied PlainProgram::copyNode(const QString& targetKey, const QString& sourceKey,
                                            Node* given) {
    if (dropTargetImage_ == document) {
        if (!templates.selected) {
            throw Failure{other};
        }
        if (templates.selected->kind != document) {
            tell("文档下面不能包含文件夹，此时文档不能作为拖放对象.", 1, "提示");
            return Copied::stopped;
        }
    }
    const Node& source = given ? *given : templates.item(sourceKey);
    switch (source.kind) {
    case document:
        return copyDocument(targetKey, sourceKey, source);
    case root:
        return copyChildren(targetKey, source);
    default:
        return copyFolder(targetKey, source);
    }
}

namespace {

int numberOf(const Node& node) { return node.key.section('.', -1).toInt(); }

} // namespace

PlainProgram::Copied PlainProgram::copyFolder(const QString& targetKey, const Node& source) {
    const QString plan = bare(tableOf(targetKey));
    const Node& target = current.item(targetKey);
    int largest = 0;
    for (const Node* child : target.children) {
        if (child->text == source.text) {
            tell("[ " + source.text + " ]已存在,无法复制!", 1, "提示");
            return Copied::stopped;
        }
        largest = std::max(largest, numberOf(*child));
    }
    const QString newKey = targetKey + "." + QString::number(largest + 1);
    Table& table = user.outline(plan);
    table.add(newKey, source.text, false);
    current.clear();
    current.fill(table);
    return copyChildren(newKey, source);
}

PlainProgram::Copied PlainProgram::copyDocument(const QString& targetKey, const QString& sourceKey,
                                                const Node& source) {
    const QString plan = bare(tableOf(targetKey));
    const Node& target = current.item(targetKey);
    QString largest;
    QString clash;
    for (const Node* child : target.children) {
        if (child->text == source.text) {
            clash = child->key;
            break;
        }
        largest = QString::number(std::max(largest.toInt(), numberOf(*child)));
    }
    Table& table = user.outline(plan);
    if (clash.isEmpty()) {
        const QString newKey = targetKey + "." + QString::number(largest.toInt() + 1);
        table.add(newKey, source.text, true);
        copyFile(sourceKey, plan, newKey);
    } else {
        if (!ask("[ " + source.text + " ]已存在，是否覆盖？", 1, "提示")) {
            return Copied::incomplete;
        }
        copyFile(sourceKey, plan, clash);
        copyFile(sourceKey, plan, largest);
    }
    current.clear();
    current.fill(table, targetKey);
    return Copied::copied;
}

PlainProgram::Copied PlainProgram::copyChildren(const QString& targetKey, const Node& source) {
    Copied outcome = Copied::copied;
    for (Node* child : source.children) {
        outcome = std::max(outcome, dragDrop(targetKey, child->key, child));
        if (outcome == Copied::stopped) {
            break;
        }
    }
    return outcome;
}

void PlainProgram::copyFile(const QString& sourceKey, const QString& plan, const QString& name) {
    const auto& files = templateFolders[tableOf(sourceKey)].files;
    if (files.contains(sourceKey + ".doc")) {
        if (!planFolders.contains(plan)) {
            throw Failure{other};
        }
        planFolders[plan].files[name + ".doc"] = files[sourceKey + ".doc"];
    }
}

void PlainProgram::storeTemplate() {
    if (!currentPlan) {
        return;
    }
    try {
        storePlan(*currentPlan);
        refreshTemplates();
    } catch (const Failure& failure) {
        if (failure.number == tableExists) {
            tell("标书模板中已存在 [ " + *currentPlan + " ] ！", 1, "提示");
        }
    }
}

void PlainProgram::storePlan(const QString& plan) {
    if (library.has(plan)) {
        throw Failure{user.has(bare(plan)) ? tableExists : tableNotFound};
    }
    if (user.others.contains(plan)) {
        // Copied before it turns out to be no outline.
        library.others << plan;
        throw Failure{other};
    }
    const Table& table = user.outline(bare(plan));
    library.outlines[plan] = table.copied();
    if (!templateFolders.contains(plan)) {
        templateFolders[plan].database.emplace().outlines[plan] = table.copied();
    }
    for (const Row& row : table.rows) {
        const QString name = row.key + ".doc";
        if (row.isDocument && planFolders[plan].files.contains(name)) {
            templateFolders[plan].files[name] = planFolders[plan].files[name];
        }
    }
    library.list << plan;
}

void PlainProgram::deleteTemplate() {
    if (!templates.selected || !ask("您真的要删除‘" + templates.selected->text + "’吗？", 0)) {
        return;
    }
    const QString key = templates.selected->key;
    const QString name = tableOf(key);
    if (depthOf(key) == 0) {
        library.drop(name);
        templates.remove(templates.item(key));
        library.list.removeOne(name);
        templateFolders.remove(name);
        return;
    }
    if (!templateFolders.contains(name) || !templateFolders[name].database ||
        !templateFolders[name].database->has(name)) {
        return;
    }
    const auto isMeant = [&](const Row& row) {
        return row.key.startsWith(key, Qt::CaseInsensitive);
    };
    templateFolders[name].database->outline(name).take(isMeant);
    library.outline(name).take(isMeant);
    auto& files = templateFolders[name].files;
    for (const QString& file : files.keys()) {
        if (file.startsWith(key, Qt::CaseInsensitive)) {
            files.remove(file);
        }
    }
    templates.remove(templates.item(key));
    refreshTemplates();
}

void PlainProgram::browseTemplate() {
    if (!templates.selected) {
        return;
    }
    const QString key = templates.selected->key;
    const QString name = tableOf(key);
    const Row* row = library.has(name) ? library.outline(name).find(key) : nullptr;
    if (!row || !row->isDocument) {
        return;
    }
    const QString file = key + ".doc";
    if (templateFolders[name].files.contains(file)) {
        return;
    }
    tell("找不到 [ " + templatesPath() + name + "/" + file + " ]\n" +
             "此文件可能是被删除了,或是文件、路径名不正确！\n文档：" + templates.selected->text +
             "（" + key + "）",
         3, "提示");
    const QString first = templates.nodes.front().text;
    if (!library.has(first)) {
        tellFailure();
        return;
    }
    library.outline(first).take([&](const Row& each) { return each.key == key; });
    if (Node* node = current.find(key)) {
        current.remove(*node);
    }
}

} // namespace qvnd::model
