#include "plans/DeletePlan.h"

#include "outline/InformationTable.h"
#include "outline/QueryText.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/files/WriteProtection.h"
#include "store/Names.h"
#include "store/OutlineFolders.h"
#include "store/PlanLists.h"

#include <QFileInfo>

namespace qvnd::plans {

namespace {

// Without a name nothing is deleted: a table "Org" would be the plan's of that very name.
void deleteTables(jet::Database& db, const QString& plan) {
    if (plan.isEmpty()) {
        return;
    }
    ignoringErrors([&] { db.TableDefs().Delete(plan); });
    ignoringErrors([&] { outline::deleteInformationTable(db, plan); });
}

// The changes do not tell that a folder stays.
void deleteFolder(modMain& state, const QString& plan) {
    ignoringErrors([&] { state.gFso->DeleteFolder(store::planFolder(state, plan), false); });
    if (store::stateOfPlanFolder(state, plan) != store::FolderState::there) {
        return;
    }
    const QString folder = store::planFolder(state, plan);
    const QString isProtected = files::writeProtectedIn(folder);
    const QString reason =
        isProtected.isEmpty()
            ? QStringLiteral("可能有文件正在使用")
            : QStringLiteral("的“%1”设为只读").arg(QFileInfo(isProtected).fileName());
    const QString unlisted =
        state.gSelectedPlan.isEmpty() ? QString() : QStringLiteral("；下次启动时会重新列入");
    state.Remarks << QStringLiteral("文件夹没有删除，其中%1%2：%3").arg(reason, unlisted, folder);
}

} // namespace

bool mnuDelete(modMain& state, outline::Workbench& workbench, desktop::MessageBoxes& messages) {
    QString name;
    ignoringErrors([&] { name = workbench.TrvCurrent.Item(1).Text(); });
    if (name.isEmpty() || !messages.ask("确实要删除工程 [ " + name + " ]", desktop::Icon::question,
                                        QStringLiteral("提示"))) {
        return false;
    }
    jet::Database& db = *state.gDbUser;
    deleteFolder(state, name);
    deleteTables(db, state.gSelectedPlan);
    ignoringErrors([&] { store::forgetCurrentPlan(db); });
    ignoringErrors(
        [&] { db.Execute(outline::deletionFrom(store::table::planList, state.gSelectedPlan)); });
    state.gSelectedPlan.clear();
    ignoringErrors([&] { db.TableDefs().Refresh(); });
    workbench.TrvCurrent.Clear();
    ignoringErrors([&] { workbench.TrvTemplate_Us.Remove(name); });
    return true;
}

} // namespace qvnd::plans
