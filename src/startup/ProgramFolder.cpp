#include "startup/ProgramFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace qvnd::startup {

bool isPortable(const QString& executableFolder) {
    return QFileInfo::exists(executableFolder + QStringLiteral("/qvnd.portable"));
}

QString userProgramFolder() {
    return QDir::toNativeSeparators(
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
        QStringLiteral("/qvnd"));
}

QString programFolder(const QString& executableFolder) {
    return isPortable(executableFolder) ? QDir::toNativeSeparators(executableFolder)
                                        : userProgramFolder();
}

} // namespace qvnd::startup
