#pragma once

#include <QString>

namespace qvnd::startup {

struct WorkFolder {
    // May lack a separator at its end.
    QString path;
    // There is a configuration folder, but it names no work folder: the plans then lie below the
    // program's folder.
    bool noConfiguredWork = false;
};

// The work folder by the configuration folder's file `cfgpath`, and the default "工程文档管理"
// beside the program without one. An empty `configurationFolder` means that none is configured.
WorkFolder configuredWorkFolder(const QString& configurationFolder, const QString& gAppPath);

// The work folder that serves when `work` may be missing. A missing one of three characters or
// more falls back to the default beside the program, which is made; a shorter one is kept as it is.
QString existingWorkFolder(const QString& work, const QString& gAppPath);

} // namespace qvnd::startup
