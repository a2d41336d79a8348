#pragma once

#include <QString>
#include <QStringList>

#include <sqlite3.h>

namespace qvnd::test {

// A database file as any SQLite tool has it: without the collation and the functions of our store.
class PlainSqlite {
public:
    explicit PlainSqlite(const QString& path) {
        sqlite3_open(path.toUtf8().constData(), &connection_);
    }
    ~PlainSqlite() { sqlite3_close_v2(connection_); }
    PlainSqlite(const PlainSqlite&) = delete;
    PlainSqlite& operator=(const PlainSqlite&) = delete;

    // A row each, its columns joined by "|", Null as "Null"; what SQLite says when it refuses.
    QStringList rows(const QString& sql) {
        QStringList found;
        const QByteArray utf8 = sql.toUtf8();
        for (const char* rest = utf8.constData(); *rest != '\0';) {
            sqlite3_stmt* statement = nullptr;
            int code = sqlite3_prepare_v2(connection_, rest, -1, &statement, &rest);
            while (code == SQLITE_OK && (code = sqlite3_step(statement)) == SQLITE_ROW) {
                found << row(statement);
                code = SQLITE_OK;
            }
            sqlite3_finalize(statement);
            if (code != SQLITE_OK && code != SQLITE_DONE) {
                return {QString::fromUtf8(sqlite3_errmsg(connection_))};
            }
        }
        return found;
    }

    // Does every index agree with its table, and is every page in its place?
    bool isSound() {
        return rows(QStringLiteral("PRAGMA integrity_check")) == QStringList(QStringLiteral("ok"));
    }

private:
    static QString row(sqlite3_stmt* statement) {
        QStringList columns;
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
            columns << (text == nullptr
                            ? QStringLiteral("Null")
                            : QString::fromUtf8(text, sqlite3_column_bytes(statement, i)));
        }
        return columns.join(u'|');
    }

    sqlite3* connection_ = nullptr;
};

} // namespace qvnd::test
