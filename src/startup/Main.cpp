#include "startup/Main.h"

#include "platform/desktop/OpenDocuments.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "platform/jet/legacy/JetFileReader.h"
#include "platform/registry/RegOperation.h"
#include "startup/Databases.h"
#include "startup/WorkFolder.h"

namespace qvnd::startup {

namespace {

using files::folderExists;
using files::separator;
using files::withSeparator;

void resolveUserPlans(modMain& state, bool noConfiguredWork) {
    if (noConfiguredWork) {
        state.gUserTplPath = state.gAppPath + "sys" + separator() + "用户模板" + separator();
        if (!folderExists(state.gAppPath + "sys")) {
            state.gFso->CreateFolder(state.gAppPath + "sys");
        }
    } else {
        state.gUserTplPath = state.gWorkPath + "用户模板" + separator();
    }
    if (!folderExists(state.gUserTplPath)) {
        state.gFso->CreateFolder(state.gUserTplPath);
    }
    // As they are spelt on disk, for the rooms that take a path as it is.
    state.gSysPath = files::resolved(state.gSysPath);
    state.gUserTplPath = files::resolved(state.gUserTplPath);
}

void resolveFolders(modMain& state, const QString& appPath, registry::Registry& registry) {
    state.gFso =
        std::make_unique<files::DiskFileSystem>(std::make_unique<desktop::OpenDocuments>());
    state.gLegacyReader = std::make_unique<jet::legacy::JetFileReader>();
    state.AppPath = appPath;
    state.gAppPath = withSeparator(appPath);
    state.HelpFile = state.gAppPath + "Qvnd.hlp";

    registry::RegOperation reg(registry);
    const QString configuration = reg.GetStringValueA(
        QStringLiteral("HKEY_LOCAL_MACHINE\\Software\\TREL\\MAIN\\PATH"), QStringLiteral("cfg"));
    state.gWordRoot = withSeparator(reg.GetStringValueA(
        QStringLiteral(
            "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Office\\8.0\\Word\\InstallRootSR2"),
        QStringLiteral("Path")));

    const WorkFolder configured = configuredWorkFolder(configuration, state.gAppPath);
    const QString work = existingWorkFolder(configured.path, state.gAppPath);
    state.gAppTitle = QStringLiteral("TREL标书管理");
    state.gSysPath = state.gAppPath + "Sys" + separator();
    state.gWorkPath = withSeparator(work);
    resolveUserPlans(state, configured.noConfiguredWork);
}

} // namespace

bool Main(modMain& state, const QString& appPath, const MainServices& services) {
    try {
        services.splash.show();
        resolveFolders(state, appPath, services.registry);
        openDatabases(state);
        services.windows.showMainForm();
        services.windows.showFrmBid();
        services.splash.unload();
        return true;
    } catch (const RunTimeError& failure) {
        services.messages.tell(QString::number(failure.number()) +
                                   QString::fromStdU16String(failure.description()),
                               desktop::Icon::exclamation, QStringLiteral("提示"));
        return false;
    }
}

} // namespace qvnd::startup
