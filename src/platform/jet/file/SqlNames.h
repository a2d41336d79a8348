#pragma once

#include <QByteArray>
#include <QString>

// The names that tables, fields and indexes have in the SQLite file, quoted for a statement.
//
// Tables and fields have their own names. A name that the file needs for itself gets a point in
// front, which none of our names contains, so that the result meets no other name. Needed are, of
// tables, the names that begin with "sqlite_" (kept by SQLite) or "jet_" (the catalogue), and of
// fields, "rowid". SQLite compares names without the case of ASCII letters; two names that it takes
// for one are one name for us too.
namespace qvnd::jet {

QByteArray sqlTableName(const QString& table);
QByteArray sqlColumnName(const QString& field);

// Indexes share the namespace of the tables, so the index PrimaryKey of the table 甲 is
// "甲.PrimaryKey".
QByteArray sqlIndexName(const QString& table, const QString& index);

} // namespace qvnd::jet
