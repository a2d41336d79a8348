#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "store/modMain.h"

#include <QStringList>

#include <vector>

namespace qvnd::outline {

// A file that was not added, and why, in the user's words.
struct RefusedFile {
    QString name;
    QString reason;
};

struct FilesAdded {
    QStringList newKeys; // in the order of the files
    std::vector<RefusedFile> refused;
    int left = 0; // files that were not tried, as the user cancelled
};

// Adds files below the node of that key of the plan open in TrvCurrent, one after another, each as
// mnuLTDoc would. A folder, a file that is gone and whatever mnuLTDoc refuses or fails at is left
// out, and the next file follows. The user sees the progress, may cancel, and is told once, at the
// end, what was not added; nothing is shown when all files were.
FilesAdded addFiles(modMain& state, Workbench& workbench, const Services& services,
                    const QString& key, const QStringList& files);

} // namespace qvnd::outline
