#include "outline/OtherPrograms.h"

#include "outline/CurrentPlan.h"
#include "outline/LibraryTree.h"

namespace qvnd::outline {

bool OtherPrograms::look() {
    const int changes = state_.gDbUser->ForeignChanges() + state_.gDbTemplate->ForeignChanges();
    if (changes == seen_) {
        return false;
    }
    OutlineTree& templates = workbench_.TrvTemplate;
    OutlineTree& plans = workbench_.TrvTemplate_Us;
    const ShownOutlines freshCurrent = current_.read();
    const ShownOutlines freshTemplates(templates,
                                       readLibrary(state_, *state_.gDbTemplate, templates));
    const ShownOutlines freshPlans(plans, readLibrary(state_, *state_.gDbUser, plans));
    showCurrent(freshCurrent);
    for (const ShownOutlines* fresh : {&freshTemplates, &freshPlans}) {
        if (fresh->areNews()) {
            fresh->show();
        }
    }
    seen_ = changes;
    return freshCurrent.areNews() || freshTemplates.areNews() || freshPlans.areNews();
}

void OtherPrograms::showCurrent(const ShownOutlines& fresh) {
    if (!fresh.areNews()) {
        return;
    }
    current_.show(fresh);
    if (workbench_.TrvCurrent.Count() == 0) {
        forgetPlan(state_, workbench_);
    }
}

} // namespace qvnd::outline
