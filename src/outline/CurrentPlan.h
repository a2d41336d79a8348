#pragma once

#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/SplashScreen.h"
#include "store/modMain.h"

namespace qvnd::outline {

// What the workbench does at its load: TrvCurrent shows the plan that 当前表 names, if its folder
// is there, with its last node selected; template and plan folders that the databases do not know
// are adopted, which fills the two library trees; the commands that need a plan are opened or
// closed. When this start has taken over a central database of an older installation, the faults of
// its outlines are told as those of adopted ones are. An error ends it with a message and
// takes the splash down.
void loadWorkbench(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                   desktop::SplashScreen& splash);

// The two adoptions by themselves: ImportTemplateFolders with TrvTemplate, and ImportPlanFolders
// with TrvTemplate_Us. The user is told of failures; of rows of an adopted outline whose key is not
// the outline's name with numbers behind it (see OutlinePaths.h); and how many rows do not show
// because a parent is missing.
void adoptTemplateFolders(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                          desktop::SplashScreen& splash);
void adoptPlanFolders(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                      desktop::SplashScreen& splash);

// Brings the outline in the folder of the plan shown in TrvCurrent level with the working one.
void saveCurrentPlan(modMain& state, const Workbench& workbench);

// Has 当前表 name the plan; nothing is written when it does already. Errors of the store.
void setCurrentPlan(jet::Database& db, const QString& name);

// Opens or closes the commands that need an open plan.
void offerPlanCommands(Workbench& workbench, bool enabled);

// For a plan that is gone without a command of this window: what is open to the user is as behind
// its deletion, and what only an open plan's root or node can be used for is closed.
void forgetPlan(modMain& state, Workbench& workbench);

// True when a click on that node of TrvTemplate_Us changes something: it opens another plan, or
// opens the same one anew after saving it to its folder. Errors of the store pass.
bool opensPlan(modMain& state, const OutlineNode& node);

// A click on a node of TrvTemplate_Us. A root becomes the plan shown in TrvCurrent, after the plan
// shown so far has been saved to its folder; every other node leaves TrvCurrent as it is. In both
// cases 当前表 names the node's plan from then on. Errors of the store pass through.
void clickUserPlan(modMain& state, Workbench& workbench, desktop::SplashScreen& splash,
                   OutlineNode& node);

} // namespace qvnd::outline
