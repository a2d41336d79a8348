#include "startup/Main.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/OpenDocuments.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "platform/files/PublicFonction.h"
#include "platform/jet/legacy/JetFileReader.h"
#include "platform/registry/RegOperation.h"
#include "store/DatabaseCreation.h"
#include "store/LegacyCentral.h"

#include <QCoreApplication>

namespace qvnd::startup {

namespace {

using files::folderExists;
using files::separator;
using files::withSeparator;

const QString defaultWorkFolder = QStringLiteral("工程文档管理");
constexpr qsizetype rootLength = 3; // of a path such as "C:\\"

struct WorkFolder {
    QString path; // may lack a separator at its end
    // There is a configuration folder, but it names no work folder: the plans then lie below the
    // program's folder.
    bool noConfiguredWork = false;
};

// The work folder by the configuration folder's file `cfgpath`, without one the default beside the
// program. An empty `configurationFolder` means that none is configured.
WorkFolder configuredWorkFolder(const QString& configurationFolder, const QString& gAppPath) {
    if (configurationFolder.isEmpty()) {
        return {gAppPath + defaultWorkFolder, false};
    }
    const QString work = files::ReadKeyedLine(
        configurationFolder + separator() + QLatin1String("cfgpath"), QStringLiteral("work"));
    return work.isEmpty() ? WorkFolder{gAppPath + defaultWorkFolder, true}
                          : WorkFolder{work, false};
}

QString configurationFolder(registry::Registry& registry) {
    return registry::RegOperation(registry).GetStringValueA(
        QStringLiteral("HKEY_LOCAL_MACHINE\\Software\\TREL\\MAIN\\PATH"), QStringLiteral("cfg"));
}

// In place of a missing work folder of three characters or more the default beside the program is
// made and used; a shorter one is kept as it is.
QString existingWorkFolder(const QString& work, const QString& gAppPath) {
    if (folderExists(work)) {
        return work;
    }
    if (work.size() < rootLength) {
        files::MakePath(work.mid(rootLength), work.left(rootLength));
        return work;
    }
    files::MakePath(defaultWorkFolder, gAppPath);
    return gAppPath + defaultWorkFolder;
}

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

    state.gWordRoot = withSeparator(registry::RegOperation(registry).GetStringValueA(
        QStringLiteral(
            "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Office\\8.0\\Word\\InstallRootSR2"),
        QStringLiteral("Path")));

    const WorkFolder configured =
        configuredWorkFolder(configurationFolder(registry), state.gAppPath);
    const QString work = existingWorkFolder(configured.path, state.gAppPath);
    state.gAppTitle = QStringLiteral("TREL标书管理");
    state.gSysPath = state.gAppPath + "Sys" + separator();
    state.gWorkPath = withSeparator(work);
    resolveUserPlans(state, configured.noConfiguredWork);
}

using Create = void (*)(modMain& state, const QString& path);

// A creation leaves its handle open; it is closed, and the file opened again for the run.
void open(modMain& state, std::unique_ptr<jet::Database>& handle, const QString& path,
          Create create) {
    const auto createClosed = [&](const QString& wanted) {
        create(state, wanted);
        handle->Close();
    };
    if (state.gFso->FileExists(path)) {
        store::takeOverCentralFile(state, files::resolved(path), createClosed);
    } else {
        createClosed(path);
    }
    handle = state.gWs->OpenDatabase(files::resolved(path));
}

void tellUnusable(desktop::MessageBoxes& messages, const QString& reason) {
    messages.tell(QStringLiteral("操作历史不能使用：") + reason, desktop::Icon::exclamation,
                  QStringLiteral("提示"));
}

// A damaged one cannot be mended, and would refuse commands for ever.
void offerToLayAside(history::History& history, desktop::MessageBoxes& messages) {
    const QString question = QStringLiteral(
        "操作历史不能使用：它的文件已损坏。\n\n要把它放到一边，从现在起重新记录吗？选“是”时以前的"
        "操作不能再撤消，旧的历史原样留在“.~history”里；选“否”时什么也不动。");
    if (!messages.ask(question, desktop::Icon::exclamation, QStringLiteral("提示"))) {
        return;
    }
    try {
        history.layAside(QDateTime::currentDateTime());
    } catch (const RunTimeError& failure) {
        tellUnusable(messages, desktop::descriptionOf(failure));
    }
}

// The history lies beside the plans' folders, under a name that no plan can bear. What a killed run
// has left is mended before anything is read.
void openHistory(modMain& state, desktop::MessageBoxes& messages) {
    state.gWs = &state.DBEngine.Workspaces(0);
    state.History = std::make_unique<history::History>(
        state.gUserTplPath + ".~history",
        history::Places(state.gUserTplPath, {state.gWorkPath, state.gAppPath}), *state.gWs,
        *state.gFso, QCoreApplication::applicationName());
    QString failure;
    try {
        state.HistoryFound = state.History->mend([&](const QString& question) {
            return messages.ask(question, desktop::Icon::exclamation, QStringLiteral("提示"));
        });
    } catch (const RunTimeError& met) {
        failure = desktop::descriptionOf(met);
    }
    if (state.History->isDamaged()) {
        offerToLayAside(*state.History, messages);
    } else if (!failure.isEmpty()) { // each command asks whether to go on without it
        tellUnusable(messages, failure);
    }
}

// Opens the three databases that stay open for the run; one that is missing is made with its
// tables first. A file of an older installation is taken over; any other one is taken as it is.
void openDatabases(modMain& state) {
    open(state, state.gDbUser, state.gUserTplPath + "Db_UsTemplate.mdb", store::CreateUserDb);

    const QString wanted = state.AppPath + separator() + "sys" + separator() + "Database";
    if (!state.gFso->FolderExists(wanted)) {
        state.gFso->CreateFolder(wanted);
    }
    const QString folder = withSeparator(files::resolved(wanted));
    open(state, state.gDbTemplate, folder + "Db_Template.mdb", store::CreateTemplateDb);
    open(state, state.gDbBidSet, folder + "Db_BidSet.mdb",
         [](modMain& started, const QString& path) {
             store::CreateBidSetDb(started, path, QDate::currentDate());
         });
}

// A user who is not told would take the settings and plans of the replaced file for lost.
void tellWhatWasMadeAnew(const modMain& state, desktop::MessageBoxes& messages) {
    for (const store::LegacyTakeover& takeover : state.LegacyTakeovers) {
        if (const QString text = store::centralFailureText(takeover); !text.isEmpty()) {
            messages.tell(text, desktop::Icon::exclamation, QStringLiteral("提示"));
        }
    }
}

} // namespace

bool isInWorkSpace(const QString& appPath, registry::Registry& registry, const QString& file) {
    const QString work =
        configuredWorkFolder(configurationFolder(registry), withSeparator(appPath)).path;
    return history::Places(appPath, {work}).hasIn(history::spelt(file));
}

bool Main(modMain& state, const QString& appPath, const MainServices& services) {
    try {
        services.splash.show();
        resolveFolders(state, appPath, services.registry);
        if (state.Turn) {
            state.Turn->cover(state.gUserTplPath);
        }
        openHistory(state, services.messages);
        openDatabases(state);
        tellWhatWasMadeAnew(state, services.messages);
        services.windows.showMainForm();
        services.windows.showFrmBid();
        services.splash.unload();
        return true;
    } catch (const RunTimeError& failure) {
        services.messages.tell(QString::number(failure.number()) + desktop::descriptionOf(failure),
                               desktop::Icon::exclamation, QStringLiteral("提示"));
        return false;
    }
}

} // namespace qvnd::startup
