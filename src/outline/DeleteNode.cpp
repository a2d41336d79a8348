#include "outline/DeleteNode.h"

#include "outline/InformationTable.h"
#include "outline/LibraryTree.h"
#include "outline/NodeCommands.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlineRows.h"
#include "outline/QueryText.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "store/Names.h"
#include "store/OutlineFolders.h"

namespace qvnd::outline {

using desktop::Icon;

namespace {

// The number of a bare "Resume"; this room raises it nowhere, a service might.
constexpr long resumeWithoutError = 20;

class Deletion {
public:
    Deletion(modMain& state, Workbench& workbench, const Services& services)
        : state_(state), workbench_(workbench), services_(services) {}

    // False when the user does not want it.
    bool run() {
        const OutlineNode& selected = workbench_.TrvCurrent.Selected();
        // The node may be another object by the time of the answer.
        const QString key = selected.Key();
        if (!services_.messages.ask("真的要删除[" + selected.Text() + "]吗？", Icon::question)) {
            return false;
        }
        state_.gWs->BeginTrans();
        if (depthOfKey(key) == 0) {
            plan_ = tableOfKey(key);
            deletePlan(plan_);
        } else {
            subtree_ = key;
            deleteSubtree(tableOfKey(key), key);
        }
        closeEditButtons(workbench_);
        workbench_.TbarBid[12] = workbench_.TrvCurrent.Count() > 0;
        return true;
    }

    // Behind a failure: rows that went before it have no node any more.
    void showWhatStands() {
        OutlineTree& tree = workbench_.TrvCurrent;
        if (subtree_.isEmpty() || !tree.find(subtree_) || documentMark(*state_.gDbUser, subtree_)) {
            return;
        }
        tree.Select(removeNode(subtree_));
        refreshUserPlans();
    }

    // Behind a failure: the next start lists the plan by its folder's own copy, which may be older.
    void tellWhatStays() {
        if (!plan_.isEmpty() && !state_.gDbUser->TableDefs().Contains(plan_) &&
            state_.gFso->FolderExists(store::planFolder(state_, plan_))) {
            state_.Remarks << QStringLiteral("“%1”的大纲已删去，文件夹没有删去：请先撤消，关闭文档"
                                             "以后再删除。")
                                  .arg(plan_);
        }
    }

private:
    void deletePlan(const QString& plan) {
        // A name that is refused here must not have cost the plan its tables.
        const QString folder = store::planFolder(state_, plan);
        const QString delisting = deletionFrom(store::table::planList, plan);
        jet::Database& db = *state_.gDbUser;
        db.TableDefs().Delete(plan);
        deleteInformationTable(db, plan);
        db.Execute(delisting);
        db.Execute(deletionFrom(store::table::currentPlan, plan));
        workbench_.cmdEdit = false;
        workbench_.mnuEdit = false;
        workbench_.TbarBid[9] = false;
        if (state_.gFso->FolderExists(folder)) {
            state_.gFso->DeleteFolder(folder, false);
        }
        workbench_.TrvCurrent.Clear();
        state_.gWs->CommitTrans();
        refreshUserPlans();
        closeNodeCommands(workbench_);
    }

    void deleteSubtree(const QString& table, const QString& key) {
        const QString statement = "Delete * from " + bareName(table) + subtreeCondition(table, key);
        state_.gDbUser->Execute(statement);
        deleteFromPlanCopy(table, statement);
        OutlineNode* neighbour = removeNode(key);
        state_.gWs->CommitTrans();
        refreshUserPlans();
        workbench_.TrvCurrent.Select(neighbour);
        if (neighbour) {
            countAsClicked(state_, workbench_, services_.messages, *neighbour, Toolbar::waits);
        }
    }

    // The node to select next.
    OutlineNode* removeNode(const QString& key) {
        OutlineTree& tree = workbench_.TrvCurrent;
        OutlineNode* neighbour = neighbourOf(tree, tree.Item(key));
        tree.Remove(key);
        return neighbour;
    }

    void deleteFromPlanCopy(const QString& plan, const QString& statement) {
        if (state_.gDbPlan) {
            state_.gDbPlan->Close();
        }
        state_.gDbPlan = state_.gWs->OpenDatabase(store::planDatabasePath(state_, plan));
        state_.gDbPlan->Execute(statement);
        state_.gDbPlan->Close();
        state_.gDbPlan.reset();
    }

    void refreshUserPlans() {
        outline::refreshUserPlans(state_, workbench_, services_.messages, services_.splash);
    }

    modMain& state_;
    Workbench& workbench_;
    const Services& services_;
    QString plan_;    // the plan that goes as a whole; empty for a subtree
    QString subtree_; // the key of the node that goes with what is below it; empty for a plan
};

// An open handle would keep the folder from being copied or deleted.
void closePlanCopy(modMain& state) {
    if (state.gDbPlan) {
        ignoringErrors([&] { state.gDbPlan->Close(); });
        state.gDbPlan.reset();
    }
}

void tellFailure(const RunTimeError& failure, desktop::MessageBoxes& messages) {
    const long number = failure.number();
    if (number == error::permissionDenied) {
        messages.tell(QStringLiteral("请先关闭正在使用与此工程相关的内容！"), Icon::exclamation,
                      desktop::hintTitle);
    } else if (number > 0 && number != error::itemNotFound && number != resumeWithoutError) {
        messages.tell(desktop::descriptionOf(failure), Icon::exclamation, desktop::hintTitle);
    }
}

} // namespace

Deleted mnuEditDelete(modMain& state, Workbench& workbench, const Services& services) {
    Deletion deletion(state, workbench, services);
    try {
        return deletion.run() ? Deleted::deleted : Deleted::answeredNo;
    } catch (const RunTimeError& failure) {
        closePlanCopy(state);
        ignoringErrors([&] { deletion.showWhatStands(); });
        ignoringErrors([&] { deletion.tellWhatStays(); });
        tellFailure(failure, services.messages);
        return Deleted::failed;
    }
}

} // namespace qvnd::outline
