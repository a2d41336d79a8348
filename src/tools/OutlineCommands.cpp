#include "tools/OutlineCommands.h"

#include "outline/AddDocument.h"
#include "outline/CommandCaptions.h"
#include "outline/NodeCommands.h"
#include "outline/OutlineKeys.h"
#include "outline/TreeLoading.h"
#include "outline/dlgAddDoc.h"
#include "store/OutlineFolders.h"
#include "tools/Arguments.h"
#include "tools/OutlineText.h"
#include "tools/Plans.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"
#include "tools/UsageError.h"

#include <QJsonArray>
#include <QJsonObject>

namespace qvnd::tools {

namespace {

using outline::AddMode;

// What "outline add-folder" and "outline add-document" have in common.
struct Addition {
    Addition(const QStringList& words) : arguments(words, {{"--below", "--beside"}, {}}) {
        arguments.expectPositions(3, 3);
        if (arguments.has("--below") == arguments.has("--beside")) {
            throw UsageError(QStringLiteral("请在 --below（下级）和 --beside（同级）中选一个"));
        }
    }
    QString plan() const { return arguments.position(0); }
    QString key() const { return arguments.position(1); }
    QString what() const { return arguments.position(2); }
    const QString& caption(const QString& below, const QString& beside) const {
        return mode() == AddMode::below ? below : beside;
    }
    AddMode mode() const { return arguments.has("--below") ? AddMode::below : AddMode::beside; }

    Arguments arguments;
};

// Opens the plan and selects the node; false when there is no such node.
bool select(Session& session, const Addition& addition) {
    ProgramRun& run = session.program();
    openPlan(run, addition.plan());
    outline::OutlineTree& tree = run.workbench().TrvCurrent;
    outline::OutlineNode* node = tree.find(addition.key());
    if (!node) {
        session.output().note(
            QStringLiteral("方案“%1”中没有键为“%2”的节点").arg(addition.plan(), addition.key()));
        return false;
    }
    tree.Select(node);
    return true;
}

outline::NodeCommands offered(ProgramRun& run) {
    const outline::OutlineNode& node = *run.workbench().TrvCurrent.SelectedItem();
    return outline::commandsOf(node, node.Image() == outline::image::document);
}

ExitStatus ended(Session& session, outline::Added outcome, const QString& newKey) {
    if (outcome != outline::Added::added) {
        return ExitStatus::refused;
    }
    session.output().result(newKey, newKey);
    return ExitStatus::done;
}

ExitStatus addFolder(Session& session, const QStringList& words) {
    const Addition addition(words);
    session.isCalled(
        addition.caption(outline::captions::folderBelow, outline::captions::folderBeside));
    if (!select(session, addition)) {
        return ExitStatus::refused;
    }
    ProgramRun& run = session.program();
    const bool isBelow = addition.mode() == AddMode::below;
    if (!(isBelow ? offered(run).mnuLTFolder : offered(run).mnuEQFolder)) {
        session.output().note(isBelow ? QStringLiteral("文档下面不能添加文件夹")
                                      : QStringLiteral("此节点不能添加同级文件夹"));
        return ExitStatus::refused;
    }
    outline::dlgAddDoc dialog(run.state(), run.workbench(), run.services(), addition.mode());
    const outline::Added outcome = dialog.OK(addition.what());
    return ended(session, outcome, dialog.newKey());
}

ExitStatus addDocument(Session& session, const QStringList& words) {
    const Addition addition(words);
    session.isCalled(
        addition.caption(outline::captions::documentBelow, outline::captions::documentBeside));
    if (!select(session, addition)) {
        return ExitStatus::refused;
    }
    ProgramRun& run = session.program();
    const bool isBelow = addition.mode() == AddMode::below;
    if (!isBelow && !offered(run).mnuEQDoc) {
        session.output().note(QStringLiteral("此节点不能添加同级文档"));
        return ExitStatus::refused;
    }
    run.fileDialogs().give(addition.what());
    outline::AddDocument command(run.state(), run.workbench(), run.services());
    const outline::Added outcome = isBelow ? command.mnuLTDoc() : command.mnuEQDoc();
    return ended(session, outcome, command.newKey());
}

ExitStatus showOutline(Session& session, const QStringList& words) {
    const Arguments arguments(words, {{"--copy"}, {}});
    arguments.expectPositions(1, 1);
    const QString plan = arguments.position(0);
    ProgramRun& run = session.program();
    requirePlan(run, plan);
    std::unique_ptr<jet::Database> copy;
    if (arguments.has("--copy")) {
        copy = run.state().gWs->OpenDatabase(store::planDatabasePath(run.state(), plan));
    }
    jet::Database& db = copy ? *copy : *run.state().gDbUser;
    const QString inOrder = "Select * from [" + plan + "] order by ID asc";
    const QJsonArray rows = rowsAsJson(*db.OpenRecordset(inOrder));
    outline::OutlineTree tree(plan);
    outline::FillOutlineTree(*db.OpenRecordset(inOrder), tree);
    session.output().result(rows, treeAsText(tree));
    if (tree.Count() < rows.size()) {
        session.output().note(QStringLiteral("有 %1 行挂不到树上：上级行缺失或键重复")
                                  .arg(rows.size() - tree.Count()));
    }
    return ExitStatus::done;
}

} // namespace

std::vector<Command> outlineCommands() {
    return {
        {"outline show", "方案 [--copy]",
         "列出提纲，--json 时按 ID 顺序；--copy 读方案文件夹中的副本", showOutline},
        {"outline add-folder", "方案 键 名称 --below|--beside",
         "在节点的下级或同级添加文件夹，显示新键", addFolder},
        {"outline add-document", "方案 键 文件 --below|--beside",
         "在节点的下级或同级添加文档，显示新键", addDocument},
    };
}

} // namespace qvnd::tools
