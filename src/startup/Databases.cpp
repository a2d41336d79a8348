#include "startup/Databases.h"

#include "platform/files/Paths.h"
#include "store/DatabaseCreation.h"

namespace qvnd::startup {

namespace {

using Create = void (*)(modMain& state, const QString& path);

// The handle from the creation gives way to the one that stays open.
void open(modMain& state, std::unique_ptr<jet::Database>& handle, const QString& path,
          Create create) {
    if (!state.gFso->FileExists(path)) {
        create(state, path);
        handle->Close();
    }
    handle = state.gWs->OpenDatabase(files::resolved(path));
}

} // namespace

void openDatabases(modMain& state) {
    state.gWs = &state.DBEngine.Workspaces(0);
    open(state, state.gDbUser, state.gUserTplPath + "Db_UsTemplate.mdb", store::CreateUserDb);

    const QChar slash = files::separator();
    const QString wanted = state.AppPath + slash + "sys" + slash + "Database";
    if (!state.gFso->FolderExists(wanted)) {
        state.gFso->CreateFolder(wanted);
    }
    const QString folder = files::resolved(wanted) + slash;
    open(state, state.gDbTemplate, folder + "Db_Template.mdb", store::CreateTemplateDb);
    open(state, state.gDbBidSet, folder + "Db_BidSet.mdb",
         [](modMain& started, const QString& path) {
             store::CreateBidSetDb(started, path, QDate::currentDate());
         });
}

} // namespace qvnd::startup
