#include "startup/FirstStart.h"

#include "platform/files/FileLock.h"
#include "platform/files/Paths.h"
#include "platform/files/SafeReplace.h"
#include "platform/registry/RegistryRoots.h"
#include "platform/registry/RegistryValues.h"
#include "store/ProgramFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace qvnd::startup {

namespace {

const QString helpFile = QStringLiteral("Qvnd.hlp");
const QString configurationKey = QStringLiteral("Software\\TREL\\MAIN\\PATH");
const QString configurationValue = QStringLiteral("cfg");

bool isConfigured(registry::Registry& registry) {
    registry::KeyHandle key = 0;
    const auto root = registry::RootFromName(QStringLiteral("HKEY_LOCAL_MACHINE"));
    if (registry.openKey(root, configurationKey, registry::access::read, key) !=
        registry::status::success) {
        return false;
    }
    registry::Value value;
    const auto found = registry.queryValue(key, configurationValue, value);
    registry.closeKey(key);
    return found == registry::status::success;
}

void configure(registry::Registry& registry, const QString& folder) {
    registry::KeyHandle key = 0;
    const auto root = registry::RootFromName(QStringLiteral("HKEY_LOCAL_MACHINE"));
    if (registry.createKey(root, configurationKey, key) == registry::status::success) {
        // With its terminator, as readers expect a text.
        registry.setValue(key, configurationValue,
                          {registry::ValueType::text, registry::utf16Bytes(folder + QChar(0))});
        registry.closeKey(key);
    }
}

// Plans that the companion made before the program's first start lie beside the program.
bool holdsPlans(const QString& programFolder) {
    const QString plans = files::resolved(files::withSeparator(programFolder) + "Sys" +
                                          files::separator() + "用户模板");
    return !QDir(plans).entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty();
}

} // namespace

bool isPortable(const QString& executableFolder) {
    return QFileInfo::exists(files::withSeparator(executableFolder) + "qvnd.portable");
}

QString programFolder(const QString& executableFolder) {
    if (isPortable(executableFolder)) {
        return QDir::toNativeSeparators(executableFolder);
    }
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir::toNativeSeparators(data + "/qvnd");
}

void layOutProgramFolder(const QString& programFolder) {
    const QString sys = files::resolved(files::withSeparator(programFolder) + "Sys");
    QStringList held = QDir(programFolder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    held.removeAll(files::FileLock::fileName);
    const bool isNew = held.isEmpty();
    if (!isNew && !isPortable(programFolder) && !files::folderExists(sys)) {
        return;
    }
    for (const QStringView name :
         {store::folder::templates, store::folder::pictures, store::folder::customPages}) {
        QDir().mkpath(files::withSeparator(sys) + name.toString());
    }
}

void bringShippedFiles(const QString& shared, const QString& programFolder) {
    QDirIterator shipped(shared, QDir::Files, QDirIterator::Subdirectories);
    while (shipped.hasNext()) {
        const QString source = shipped.next();
        const QString name = QDir(shared).relativeFilePath(source);
        const QString target =
            files::resolved(files::withSeparator(programFolder) + QDir::toNativeSeparators(name));
        const bool isStale = name == helpFile && !files::haveSameBytes(source, target);
        if (!QFileInfo::exists(target) || isStale) {
            QDir().mkpath(QFileInfo(target).path());
            files::copyWhole(source, target);
        }
    }
}

void chooseWorkFolder(registry::Registry& registry, const QString& programFolder,
                      const QString& documents) {
    const QString work = QDir::toNativeSeparators(documents + QStringLiteral("/工程文档管理"));
    if (isConfigured(registry) || holdsPlans(programFolder) || documents.isEmpty() ||
        !QDir().mkpath(work)) {
        return;
    }
    files::writeWhole(files::withSeparator(programFolder) + "cfgpath",
                      ("work\n" + work + "\n").toUtf8());
    configure(registry, files::withoutSeparator(programFolder));
}

} // namespace qvnd::startup
