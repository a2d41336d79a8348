#include "tools/Plans.h"

#include "outline/CurrentPlan.h"
#include "platform/error/RunTimeError.h"
#include "tools/ProgramRun.h"

namespace qvnd::tools {

namespace {

outline::OutlineNode* rootOf(ProgramRun& run, const QString& name) {
    for (outline::OutlineNode* node : run.workbench().TrvTemplate_Us.topLevel()) {
        if (node->Key() == name) {
            return node;
        }
    }
    return nullptr;
}

} // namespace

QStringList planNames(ProgramRun& run) {
    QStringList names;
    for (const outline::OutlineNode* node : run.workbench().TrvTemplate_Us.topLevel()) {
        names << node->Key();
    }
    return names;
}

void requirePlan(ProgramRun& run, const QString& name) {
    if (!rootOf(run, name)) {
        throw RunTimeError(error::tableNotFound, ("没有名为“" + name + "”的方案").toStdU16String());
    }
}

void openPlan(ProgramRun& run, const QString& name) {
    requirePlan(run, name);
    const outline::OutlineTree& current = run.workbench().TrvCurrent;
    if (current.Count() == 0 || current.Item(1).Key() != name) {
        outline::clickUserPlan(run.state(), run.workbench(), run.splash(), *rootOf(run, name));
    }
}

} // namespace qvnd::tools
