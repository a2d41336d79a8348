#include "startup/WorkFolder.h"

#include "platform/files/Paths.h"
#include "platform/files/PublicFonction.h"

namespace qvnd::startup {

namespace {

const QString defaultName = QStringLiteral("工程文档管理");
constexpr qsizetype rootLength = 3;

} // namespace

WorkFolder configuredWorkFolder(const QString& configurationFolder, const QString& gAppPath) {
    if (configurationFolder.isEmpty()) {
        return {gAppPath + defaultName, false};
    }
    const QString work =
        files::ReadKeyedLine(configurationFolder + files::separator() + QLatin1String("cfgpath"),
                             QStringLiteral("work"));
    return work.isEmpty() ? WorkFolder{gAppPath + defaultName, true} : WorkFolder{work, false};
}

QString existingWorkFolder(const QString& work, const QString& gAppPath) {
    if (files::folderExists(work)) {
        return work;
    }
    if (work.size() < rootLength) {
        files::MakePath(work.mid(rootLength), work.left(rootLength));
        return work;
    }
    files::MakePath(defaultName, gAppPath);
    return gAppPath + defaultName;
}

} // namespace qvnd::startup
