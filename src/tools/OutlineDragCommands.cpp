#include "tools/OutlineDragCommands.h"

#include "outline/CommandCaptions.h"
#include "outline/TreeDrag.h"
#include "tools/Arguments.h"
#include "tools/Plans.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"

#include <QJsonArray>

namespace qvnd::tools {

namespace {

// Null, with a word on standard error, when the tree has no such node.
outline::OutlineNode* nodeOf(Session& session, const outline::OutlineTree& tree, const QString& key,
                             const QString& where) {
    outline::OutlineNode* node = tree.find(key);
    if (!node) {
        session.output().note(QStringLiteral("%1中没有键为“%2”的节点").arg(where, key));
    }
    return node;
}

outline::Dropped drop(ProgramRun& run, outline::OutlineNode* target) {
    outline::OLEDragOver(run.workbench(), target);
    return outline::OLEDragDrop(run.state(), run.workbench(), run.services(), target);
}

ExitStatus move(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(3, 3);
    ProgramRun& run = session.program();
    openPlan(run, arguments.position(0));
    outline::OutlineTree& tree = run.workbench().TrvCurrent;
    const QString plan = "方案“" + arguments.position(0) + "”";
    outline::OutlineNode* node = nodeOf(session, tree, arguments.position(1), plan);
    outline::OutlineNode* target = nodeOf(session, tree, arguments.position(2), plan);
    if (!node || !target) {
        return ExitStatus::refused;
    }
    tree.Select(node);
    if (!outline::OLEStartDrag(run.workbench())) {
        session.output().note(QStringLiteral("提纲的节点超过 32767 个，不能移动"));
        return ExitStatus::refused;
    }
    const outline::Dropped dropped = drop(run, target);
    if (dropped.done) {
        session.output().result(dropped.newKeys.value(0), dropped.newKeys.value(0));
    }
    if (!dropped.failure.isEmpty()) {
        session.output().note(dropped.failure);
    } else if (!dropped.done) {
        session.output().note(QStringLiteral("根节点不能移动，节点也不能移到自己上"));
    }
    return dropped.done && dropped.failure.isEmpty() ? ExitStatus::done : ExitStatus::refused;
}

ExitStatus copy(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(3, 3);
    ProgramRun& run = session.program();
    openPlan(run, arguments.position(0));
    outline::Workbench& workbench = run.workbench();
    outline::OutlineNode* target = nodeOf(session, workbench.TrvCurrent, arguments.position(1),
                                          "方案“" + arguments.position(0) + "”");
    outline::OutlineNode* source =
        nodeOf(session, workbench.TrvTemplate, arguments.position(2), QStringLiteral("标书模板"));
    if (!target || !source) {
        return ExitStatus::refused;
    }
    workbench.TrvTemplate.Select(source);
    workbench.copySourceKey = source->Key();
    const outline::Dropped dropped = drop(run, target);
    if (dropped.done || !dropped.newKeys.isEmpty()) {
        session.output().result(QJsonArray::fromStringList(dropped.newKeys),
                                dropped.newKeys.join(u'\n'));
    }
    return dropped.done ? ExitStatus::done : ExitStatus::refused;
}

} // namespace

std::vector<Command> outlineDragCommands() {
    return {
        {"outline move", "方案 键 目标键",
         "把节点移到目标文档之前，或成为目标文件夹的第一个下级，显示新键", move,
         outline::captions::drop},
        {"outline copy", "方案 目标键 模板键",
         "把标书模板中的节点连同下级复制到目标节点之下，显示新键", copy, outline::captions::drop},
    };
}

} // namespace qvnd::tools
