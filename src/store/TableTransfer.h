#pragma once

#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/SplashScreen.h"
#include "store/modMain.h"

#include <QString>

#include <functional>
#include <optional>

// Every plan and every template exists twice: as tables of the central database, which all commands
// use, and as a copy in the database of its own folder. These routines keep the two together by
// copying whole tables.
namespace qvnd::store {

// What the import routines reach above this room.
struct ImportSurroundings {
    // Lists the library anew in the tree that shows it (updateTreeTemplate with keepMissing false).
    // May raise a run-time error.
    std::function<void()> refreshTree;
    desktop::SplashScreen& splash;
    desktop::MessageBoxes& messages;
};

// Adopts every folder of gUserTplPath that holds a database of its own name and is not listed in
// 遍历表 of gDbUser: lists it, and copies its outline and its information table. Then refreshes the
// tree, takes the splash down, and shows the last error that a statement met, if any. No error
// stops it, so a folder whose database is no use is listed all the same, until the refresh finds
// its table missing. gDbPlan is closed at the end.
//
// A database of an older installation is taken over first, listed or not (see LegacyPlans.h). One
// that cannot be read gets a message of its own, and its folder is passed over.
void ImportPlanFolders(modMain& state, const ImportSurroundings& surroundings);

// The same for the folders of gSysPath + "标书模板" and gDbTemplate, with the outline alone. Here
// the first error ends the work: it is shown, and neither tree nor splash are touched.
void ImportTemplateFolders(modMain& state, const ImportSurroundings& surroundings);

// Replaces the outline in the database of the open plan's folder by the one in gDbUser. `openPlan`
// is the text of the first node of TrvCurrent, nothing without a node. The information table is
// not written. A missing database, or any other failure, ends it without a word.
void SaveCurrentPlanTables(modMain& state, const std::optional<QString>& openPlan);

} // namespace qvnd::store
