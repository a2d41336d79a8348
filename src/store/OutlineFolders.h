#pragma once

#include <QString>

#include <cstdint>

namespace qvnd {
struct modMain;
}

// Where plans and templates lie on disk: a folder each, and in it a database of its own. Their
// names come from databases that others may have written: a function that answers a path raises
// error 76 for a name that is no plain one (platform/files/PlainName.h), so that no path leads
// elsewhere.
namespace qvnd::store {

// gUserTplPath + plan, without a separator at its end.
QString planFolder(const modMain& state, const QString& plan);
// The folder's own database: folder + "/" + plan + ".mdb", spelt as it is on disk.
QString planDatabasePath(const modMain& state, const QString& plan);

// gSysPath + "标书模板": the folders of all templates.
QString templatesFolder(const modMain& state);
// templatesFolder + "/" + name, without a separator at its end.
QString templateFolder(const modMain& state, const QString& name);
// The folder's own database: folder + "/" + name + ".mdb", spelt as it is on disk.
QString templateDatabasePath(const modMain& state, const QString& name);
// gSysPath + "database/Db_Template.mdb", spelt as it is on disk.
QString templateLibraryPath(const modMain& state);

// The database of its own that a folder found on disk may hold, spelt as it is on disk. Any name
// that a folder has will do.
QString databaseIn(const QString& folder, const QString& name);

// What there is of the folder of a listed plan or template.
enum class FolderState : std::uint8_t {
    there,
    missing,
    unnameable, // the name is no plain one: nothing is known of a folder
};
FolderState stateOfPlanFolder(const modMain& state, const QString& plan);
FolderState stateOfTemplateFolder(const modMain& state, const QString& name);

} // namespace qvnd::store
