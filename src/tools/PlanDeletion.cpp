#include "tools/PlanDeletion.h"

#include "plans/DeletePlan.h"
#include "store/OutlineFolders.h"
#include "tools/Arguments.h"
#include "tools/ClickedNode.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"

#include <QJsonObject>

namespace qvnd::tools {

namespace {

// The root's text, which the command goes by, may have become another than the plan's name.
ExitStatus deletePlan(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    const QString plan = arguments.position(0);
    const outline::OutlineNode* root = clickNode(session, plan, plan);
    if (!root) {
        return ExitStatus::refused;
    }
    ProgramRun& run = session.program();
    session.isAbout(plan);
    if (!run.workbench().mnuDelete) {
        session.output().note(QStringLiteral("此方案不能删除"));
        return ExitStatus::refused;
    }
    const QString folder = root->Text();
    if (!plans::mnuDelete(run.state(), run.workbench(), session.messages())) {
        return ExitStatus::refused;
    }
    if (store::stateOfPlanFolder(run.state(), folder) == store::FolderState::there) {
        return ExitStatus::refused; // the end of the command says why
    }
    session.output().result(QJsonObject{{"名称", plan}}, plan);
    return ExitStatus::done;
}

} // namespace

std::vector<Command> planDeletion() {
    return {{"plan delete", "名称", "删除方案：它的表、登记和文件夹", deletePlan}};
}

} // namespace qvnd::tools
