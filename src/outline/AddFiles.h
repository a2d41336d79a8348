#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "outline/dlgAddDoc.h"
#include "store/modMain.h"

#include <QStringList>

#include <vector>

namespace qvnd::outline {

// A file, and what is to be told of it, in the user's words.
struct FileRemark {
    QString name;
    QString reason;
};

struct FilesAdded {
    QStringList newKeys; // in the order of the files
    std::vector<FileRemark> refused;
    std::vector<FileRemark> warned; // that were added, but something behind it failed
    int left = 0;                   // files that were not tried, as the user cancelled
};

// Adds files below the node of that key of the plan open in TrvCurrent, one after another, each as
// mnuLTDoc would; or beside it, as mnuEQDoc would, each behind the one before it. A folder, a file
// that is gone and whatever that command refuses or fails at is left out, and the next file
// follows. The user sees the progress, may cancel, and is told once, at the end, what was not added
// and what else failed; nothing is shown when all went well. Files that the command remarks on are
// named in the Remarks of the state, the first five of them.
FilesAdded addFiles(modMain& state, Workbench& workbench, const Services& services,
                    const QString& key, const QStringList& files, AddMode mode = AddMode::below);

} // namespace qvnd::outline
