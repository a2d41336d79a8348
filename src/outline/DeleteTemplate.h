#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "store/modMain.h"

#include <QString>

namespace qvnd::outline {

enum class TemplateDeleted {
    deleted,
    cancelled, // at the question
    failed     // in silence; what was done up to it stays done
};

struct DeleteOutcome {
    TemplateDeleted result = TemplateDeleted::deleted;
    // What ended a failed command.
    QString reason;
};

// mnuDelTemplate: deletes the node selected in TrvTemplate, after a question with OK and Cancel.
//
// A root takes its template along: table, row in 遍历表 and folder. While a file of the folder is
// in use the user is told and it is tried again.
//
// Any other node takes along, by the characters its key begins with, the rows in both databases and
// the files of the folder: T.1 is also the beginning of T.10. A file in use stays, and is named in
// the Remarks of the state. The tree is then listed anew.
//
// There is no rollback: a failure between the first change and the commit leaves the transaction
// open.
DeleteOutcome mnuDelTemplate(modMain& state, Workbench& workbench, const Services& services);

} // namespace qvnd::outline
