#include "outline/OtherPrograms.h"

#include "outline/CurrentPlan.h"
#include "outline/LibraryTree.h"
#include "outline/OutlinePaths.h"
#include "outline/TreeLoading.h"

#include <algorithm>
#include <vector>

namespace qvnd::outline {

namespace {

// Node by node in their order on the screen, whatever is selected or expanded.
bool areAlike(const std::vector<OutlineNode*>& one, const std::vector<OutlineNode*>& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const OutlineNode* left, const OutlineNode* right) {
                          return left->Key() == right->Key() && left->Text() == right->Text() &&
                                 left->Image() == right->Image() &&
                                 areAlike(left->childList(), right->childList());
                      });
}

QString selectedKey(const OutlineTree& tree) {
    const OutlineNode* selected = tree.SelectedItem();
    return selected == nullptr ? QString() : selected->Key();
}

void forgetPlan(modMain& state, Workbench& workbench) {
    workbench.TrvCurrent.Clear();
    workbench.clickedKey.clear();
    state.gSelectedPlan.clear();
    offerPlanCommands(workbench, false);
}

} // namespace

bool OtherPrograms::look() {
    const int changes = state_.gDbUser->ForeignChanges() + state_.gDbTemplate->ForeignChanges();
    if (changes == seen_) {
        return false;
    }
    seen_ = changes;
    const bool current = lookAtCurrent();
    const bool templates = lookAtLibrary(*state_.gDbTemplate, workbench_.TrvTemplate);
    const bool plans = lookAtLibrary(*state_.gDbUser, workbench_.TrvTemplate_Us);
    return current || templates || plans;
}

bool OtherPrograms::lookAtCurrent() {
    OutlineTree& tree = workbench_.TrvCurrent;
    if (tree.Count() == 0) {
        return false;
    }
    const QString plan = tree.Item(1).Text();
    if (!state_.gDbUser->TableDefs().Contains(plan) ||
        !state_.gFso->FolderExists(planFolder(state_, plan))) {
        forgetPlan(state_, workbench_);
        return true;
    }
    setCurrentPlan(*state_.gDbUser, plan);
    OutlineTree fresh(tree.Name());
    const auto rows = state_.gDbUser->OpenRecordset("Select * from [" + plan + "] order by ID asc");
    FillOutlineTree(*rows, fresh);
    if (areAlike(tree.topLevel(), fresh.topLevel())) {
        return false;
    }
    const QString selected = selectedKey(tree);
    rows->MoveFirst();
    tree.Clear();
    updateTree(*rows, tree, selected, services_.splash);
    if (tree.SelectedItem() == nullptr && !selected.isEmpty()) {
        tree.Select(&tree.Item(1));
        tree.Expand(tree.Item(1));
    }
    return true;
}

bool OtherPrograms::lookAtLibrary(jet::Database& database, OutlineTree& tree) {
    OutlineTree fresh(tree.Name());
    updateTreeTemplate(state_, database, fresh, false, services_.messages, services_.splash);
    if (areAlike(tree.topLevel(), fresh.topLevel())) {
        return false;
    }
    const QString selected = selectedKey(tree);
    updateTreeTemplate(state_, database, tree, false, services_.messages, services_.splash);
    tree.Select(tree.find(selected));
    return true;
}

} // namespace qvnd::outline
