#include "outline/ShownOutlines.h"

#include "outline/CurrentPlan.h"
#include "outline/OutlineKeys.h"
#include "outline/QueryText.h"
#include "outline/TreeLoading.h"
#include "store/OutlineFolders.h"

#include <algorithm>
#include <utility>

namespace qvnd::outline {

namespace {

bool areAlike(const std::vector<OutlineNode*>& one, const std::vector<OutlineNode*>& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const OutlineNode* left, const OutlineNode* right) {
                          return left->Key() == right->Key() && left->Text() == right->Text() &&
                                 left->Image() == right->Image() &&
                                 areAlike(left->childList(), right->childList());
                      });
}

void fill(OutlineTree& tree, const std::vector<std::vector<OutlineRow>>& outlines) {
    for (const std::vector<OutlineRow>& rows : outlines) {
        addOutline(rows, tree);
    }
}

// A plan whose folder is gone will be forgotten at the next refresh of the plans.
bool isThere(modMain& state, const QString& plan) {
    return store::stateOfPlanFolder(state, plan) == store::FolderState::there &&
           state.gDbUser->TableDefs().Contains(plan);
}

} // namespace

ShownOutlines::ShownOutlines(OutlineTree& tree, std::vector<std::vector<OutlineRow>> outlines)
    : tree_(tree), outlines_(std::move(outlines)) {
    OutlineTree fresh(tree.Name());
    fill(fresh, outlines_);
    areNews_ = !areAlike(tree.topLevel(), fresh.topLevel());
}

void ShownOutlines::show() const {
    const OutlineNode* selected = tree_.SelectedItem();
    const QString key = selected ? selected->Key() : QString();
    tree_.Clear();
    fill(tree_, outlines_);
    tree_.Select(tree_.find(key));
}

// The root's text is the plan's name unless it has been renamed; an adopted root may have a key of
// its own.
QString ShownPlan::name() const {
    if (tree_.Count() == 0) {
        return {};
    }
    const OutlineNode& root = tree_.Item(1);
    const QString table = tableOfKey(root.Key());
    return state_.gDbUser->TableDefs().Contains(table) ? table : root.Text();
}

ShownOutlines ShownPlan::read() const {
    std::vector<std::vector<OutlineRow>> outlines;
    if (const QString plan = name(); !plan.isEmpty() && isThere(state_, plan)) {
        outlines.push_back(readOutline(*state_.gDbUser, bracketedName(plan)));
    }
    return {tree_, std::move(outlines)};
}

void ShownPlan::show(const ShownOutlines& fresh) {
    const bool hadSelection = tree_.SelectedItem() != nullptr;
    fresh.show();
    if (hadSelection && !tree_.SelectedItem() && tree_.Count() > 0) {
        tree_.Select(&tree_.Item(1));
        tree_.Expand(tree_.Item(1));
    }
}

void ShownPlan::keepOpen() {
    const int changes = state_.gDbUser->ForeignChanges();
    if (changes == seen_) {
        return;
    }
    if (const QString plan = name(); !plan.isEmpty()) {
        setCurrentPlan(*state_.gDbUser, plan);
    }
    seen_ = changes;
}

} // namespace qvnd::outline
