#pragma once

#include <QString>

namespace qvnd {
struct modMain;
}

// Where plans and templates lie on disk: a folder each, in it a database of its own and a file for
// each document, which bears the document's key.
//
// Names and keys come from databases that others may have written. Each function answers a path
// inside the folder that it names, or raises error 76: for a name that is no plain folder name
// ("..", "a/b", "C:", "NUL", blanks alone) and for a key that is not the outline's name with
// numbers behind it.
namespace qvnd::outline {

// gUserTplPath + plan, without a separator at its end.
QString planFolder(const modMain& state, const QString& plan);
// The folder's own database: folder + "/" + plan + ".mdb", spelt as it is on disk.
QString planDatabasePath(const modMain& state, const QString& plan);
// folder + "/" + key + ".doc". The key may belong to an outline of another name.
QString documentPath(const modMain& state, const QString& plan, const QString& key);

// gSysPath + "database/Db_Template.mdb", spelt as it is on disk.
QString templateLibraryPath(const modMain& state);
// gSysPath + "标书模板/" + name, without a separator at its end.
QString templateFolder(const modMain& state, const QString& name);
// The folder's own database: folder + "/" + name + ".mdb", spelt as it is on disk.
QString templateDatabasePath(const modMain& state, const QString& name);
// folder + "/" + key + ".doc". The key may belong to an outline of another name.
QString templateDocumentPath(const modMain& state, const QString& name, const QString& key);

} // namespace qvnd::outline
