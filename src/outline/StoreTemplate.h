#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "store/modMain.h"

#include <QString>

namespace qvnd::outline {

enum class Stored {
    stored,
    alreadyThere, // a template of that name is there; the user has been told
    failed        // the user has not been told
};

struct StoreOutcome {
    Stored result = Stored::stored;
    QString plan;
    // What ended a failed command.
    QString reason;
};

// mnuSaveTemplate: stores the plan that 当前表 names as a system template: its table, a folder with
// a copy of it, its documents, a row in 遍历表 of Db_Template.mdb. A plan can be stored once; a
// template of its name refuses it before anything is done. A document whose file is missing is
// left out, and so is one whose key is no key. A folder of that name that is there without its
// table keeps its database.
//
// Any other failure ends the command without a box, and what was done stays done. Where that is a
// table that 遍历表 does not name, the note of its step tells it. A killed process leaves no
// template, or the whole folder, which the next start adopts.
StoreOutcome mnuSaveTemplate(modMain& state, Workbench& workbench, const Services& services);

} // namespace qvnd::outline
