#include "platform/jet/file/SqlNames.h"

namespace qvnd::jet {

namespace {

QByteArray quoted(QByteArray name) { return '"' + name.replace("\"", "\"\"") + '"'; }

// As SQLite does it, QByteArray lowers ASCII letters alone.
QByteArray mappedTable(const QString& table) {
    const QByteArray name = table.toUtf8();
    const QByteArray lower = name.toLower();
    const bool isReserved = lower.startsWith("sqlite_") || lower.startsWith("jet_");
    return isReserved ? "." + name : name;
}

} // namespace

QByteArray sqlTableName(const QString& table) { return quoted(mappedTable(table)); }

QByteArray sqlColumnName(const QString& field) {
    const QByteArray name = field.toUtf8();
    return quoted(name.toLower() == "rowid" ? "." + name : name);
}

QByteArray sqlIndexName(const QString& table, const QString& index) {
    return quoted(mappedTable(table) + "." + index.toUtf8());
}

} // namespace qvnd::jet
