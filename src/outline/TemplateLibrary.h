#pragma once

#include "store/modMain.h"

#include <QString>

// Where the system templates are: a table each in Db_Template.mdb, and a folder each with a
// database of its own and the documents.
namespace qvnd::outline {

// gSysPath + "database/Db_Template.mdb", spelt as it is on disk.
QString templateLibraryPath(const modMain& state);
// gSysPath + "标书模板/" + name, without a separator at its end.
QString templateFolder(const modMain& state, const QString& name);
// The folder's own database: folder + "/" + name + ".mdb".
QString templateDatabasePath(const modMain& state, const QString& name);
// folder + "/" + key + ".doc".
QString templateDocumentPath(const modMain& state, const QString& name, const QString& key);

} // namespace qvnd::outline
