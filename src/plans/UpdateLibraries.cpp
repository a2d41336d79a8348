#include "plans/UpdateLibraries.h"

#include "outline/CurrentPlan.h"

namespace qvnd::plans {

UpdateLibraries::UpdateLibraries(modMain& state, outline::Workbench& workbench,
                                 desktop::MessageBoxes& messages, desktop::SplashScreen& splash,
                                 desktop::MousePointer& pointer)
    : state_(state), workbench_(workbench), messages_(messages), splash_(splash),
      pointer_(pointer) {}

void UpdateLibraries::templates() {
    pointer_.showHourglass();
    outline::adoptTemplateFolders(state_, workbench_, messages_, splash_);
    pointer_.showUsual();
}

void UpdateLibraries::plans() {
    pointer_.showHourglass();
    outline::adoptPlanFolders(state_, workbench_, messages_, splash_);
    pointer_.showUsual();
}

} // namespace qvnd::plans
