#include "tools/TemplateCommands.h"

#include "outline/CommandCaptions.h"
#include "outline/DeleteTemplate.h"
#include "outline/StoreTemplate.h"
#include "outline/TreeLoading.h"
#include "platform/error/RunTimeError.h"
#include "tools/Arguments.h"
#include "tools/OutlineText.h"
#include "tools/Plans.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"

#include <QJsonArray>
#include <QJsonObject>

namespace qvnd::tools {

namespace {

QString onlyPosition(const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    return arguments.position(0);
}

QStringList templateNames(ProgramRun& run) {
    QStringList names;
    for (const outline::OutlineNode* root : run.workbench().TrvTemplate.topLevel()) {
        names << root->Key();
    }
    return names;
}

ExitStatus store(Session& session, const QStringList& words) {
    const QString plan = onlyPosition(words);
    ProgramRun& run = session.program();
    openPlan(run, plan);
    const auto outcome = outline::mnuSaveTemplate(run.state(), run.workbench(), run.services());
    if (outcome.result != outline::Stored::stored) {
        if (outcome.result == outline::Stored::failed) {
            session.output().note("没有存为模板：" + outcome.reason);
        }
        return ExitStatus::refused;
    }
    session.output().result(QJsonObject{{"名称", plan}}, plan);
    return ExitStatus::done;
}

ExitStatus list(Session& session, const QStringList& words) {
    Arguments(words, {}).expectPositions(0, 0);
    const QStringList names = templateNames(session.program());
    session.output().result(QJsonArray::fromStringList(names), names.join('\n'));
    return ExitStatus::done;
}

ExitStatus show(Session& session, const QStringList& words) {
    const QString name = onlyPosition(words);
    ProgramRun& run = session.program();
    if (!templateNames(run).contains(name)) {
        session.output().note("没有名为“" + name + "”的模板");
        return ExitStatus::refused;
    }
    const QString inOrder = "Select * from [" + name + "] order by ID asc";
    jet::Database& db = *run.state().gDbTemplate;
    const QJsonArray rows = rowsAsJson(*db.OpenRecordset(inOrder));
    outline::OutlineTree tree(name);
    outline::FillOutlineTree(*db.OpenRecordset(inOrder), tree);
    session.output().result(rows, treeAsText(tree));
    return ExitStatus::done;
}

ExitStatus remove(Session& session, const QStringList& words) {
    const QString key = onlyPosition(words);
    ProgramRun& run = session.program();
    outline::OutlineTree& tree = run.workbench().TrvTemplate;
    outline::OutlineNode* node = tree.find(key);
    if (!node) {
        session.output().note("模板库中没有键为“" + key + "”的节点");
        return ExitStatus::refused;
    }
    tree.Select(node);
    const auto outcome = outline::mnuDelTemplate(run.state(), run.workbench(), run.services());
    if (outcome.result == outline::TemplateDeleted::failed) {
        session.output().note("没有删除完：" + outcome.reason);
    }
    if (outcome.result != outline::TemplateDeleted::deleted) {
        return ExitStatus::refused;
    }
    session.output().result(key, key);
    return ExitStatus::done;
}

} // namespace

std::vector<Command> templateCommands() {
    return {
        {"template store", "方案", "把方案存入方案模板", store, outline::captions::templateStoring},
        {"template list", "", "列出所有模板", list},
        {"template show", "名称", "列出模板的提纲，--json 时按 ID 顺序", show},
        {"template delete", "键", "删除模板或模板中的节点，连同文件；须加 --yes", remove,
         outline::captions::templateDeletion},
    };
}

} // namespace qvnd::tools
