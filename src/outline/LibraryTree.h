#pragma once

#include "outline/TreeLoading.h"
#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/SplashScreen.h"
#include "store/modMain.h"

#include <vector>

namespace qvnd::outline {

// Lists every outline that 遍历表 of `db` registers, one tree after another, and drops what is no
// longer there: a row whose table is missing, and a row with its tables whose folder is missing
// (in the user's tree only when `keepMissing` is false). The tree's name tells which folders are
// meant: "TrvTemplate" lists the system templates, any other the user's plans.
//
// A failing statement does not end it; when an error is still pending at the end, the user is told
// once. An error that the clean-up answers is not pending.
void updateTreeTemplate(modMain& state, jet::Database& db, OutlineTree& tree, bool keepMissing,
                        desktop::MessageBoxes& messages, desktop::SplashScreen& splash);

// The rows of the outlines that it would list, read without changing anything: nothing is dropped.
// Errors of the store pass, as readOutline says.
std::vector<std::vector<OutlineRow>> readLibrary(modMain& state, jet::Database& db,
                                                 const OutlineTree& tree);

// updateTreeTemplate for the two library trees of the workbench, with nothing kept missing.
void refreshTemplates(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                      desktop::SplashScreen& splash);
void refreshUserPlans(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                      desktop::SplashScreen& splash);

} // namespace qvnd::outline
