#include "store/OutlineFolders.h"

#include "platform/files/Paths.h"
#include "platform/files/PlainName.h"
#include "store/ProgramFiles.h"
#include "store/modMain.h"

namespace qvnd::store {

namespace {

FolderState stateOf(const modMain& state, const QString& parent, const QString& name) {
    if (!files::isPlainName(name)) {
        return FolderState::unnameable;
    }
    return state.gFso->FolderExists(files::withSeparator(parent) + name) ? FolderState::there
                                                                         : FolderState::missing;
}

} // namespace

QString planFolder(const modMain& state, const QString& plan) {
    return state.gUserTplPath + files::plainName(plan);
}

QString planDatabasePath(const modMain& state, const QString& plan) {
    return databaseIn(planFolder(state, plan), plan);
}

QString templatesFolder(const modMain& state) {
    return state.gSysPath + folder::templates.toString();
}

QString templateFolder(const modMain& state, const QString& name) {
    return templatesFolder(state) + files::separator() + files::plainName(name);
}

QString templateDatabasePath(const modMain& state, const QString& name) {
    return databaseIn(templateFolder(state, name), name);
}

QString templateLibraryPath(const modMain& state) {
    return files::resolved(state.gSysPath + "database" + files::separator() + "Db_Template.mdb");
}

QString databaseIn(const QString& folder, const QString& name) {
    return files::resolved(folder + files::separator() + name + ".mdb");
}

FolderState stateOfPlanFolder(const modMain& state, const QString& plan) {
    return stateOf(state, state.gUserTplPath, plan);
}

FolderState stateOfTemplateFolder(const modMain& state, const QString& name) {
    return stateOf(state, templatesFolder(state), name);
}

} // namespace qvnd::store
