#include "outline/TemplateLibrary.h"

#include "platform/files/Paths.h"

namespace qvnd::outline {

QString templateLibraryPath(const modMain& state) {
    return files::resolved(state.gSysPath + "database" + files::separator() + "Db_Template.mdb");
}

QString templateFolder(const modMain& state, const QString& name) {
    return state.gSysPath + "标书模板" + files::separator() + name;
}

QString templateDatabasePath(const modMain& state, const QString& name) {
    return files::resolved(templateFolder(state, name) + files::separator() + name + ".mdb");
}

QString templateDocumentPath(const modMain& state, const QString& name, const QString& key) {
    return templateFolder(state, name) + files::separator() + key + ".doc";
}

} // namespace qvnd::outline
