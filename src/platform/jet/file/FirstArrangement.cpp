#include "platform/jet/file/FirstArrangement.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/jet/file/Catalogue.h"
#include "platform/jet/file/TableCreation.h"

#include <algorithm>

namespace qvnd::jet {

namespace {

constexpr std::int64_t firstArrangement = 1;

QByteArray textOf(std::int64_t number) {
    return QByteArray::number(static_cast<qlonglong>(number));
}

class Transaction {
public:
    explicit Transaction(Connection& connection) : connection_(connection) {
        connection_.Run("BEGIN IMMEDIATE");
    }
    ~Transaction() {
        if (connection_.InTransaction()) {
            ignoringErrors([this] { connection_.Run("ROLLBACK"); });
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit() { connection_.Run("COMMIT"); }

private:
    Connection& connection_;
};

// The old table's name, behind a renaming where another table needs that name.
QByteArray movedAside(Connection& connection, const StoredTable& table,
                      const std::vector<StoredTable>& all) {
    QByteArray old = "t" + textOf(table.Id);
    const bool isWanted = std::any_of(all.begin(), all.end(), [&](const StoredTable& other) {
        return other.TableName().toLower() == '"' + old + '"';
    });
    if (!isWanted) {
        return old;
    }
    QByteArray aside = "jet_first_" + old;
    connection.Run("ALTER TABLE " + old + " RENAME TO " + aside);
    return aside;
}

void dropIndexes(Connection& connection, const StoredTable& table) {
    for (std::size_t i = 0; i < table.Definition.Indexes.size(); ++i) {
        connection.Run("DROP INDEX t" + textOf(table.Id) + "_" +
                       textOf(static_cast<std::int64_t>(i)));
    }
}

void copyRows(Connection& connection, const StoredTable& table, const QByteArray& old) {
    QByteArrayList from;
    for (std::size_t i = 0; i < table.Definition.Fields.size(); ++i) {
        from << "f" + textOf(static_cast<std::int64_t>(i));
    }
    QByteArray to = table.AllColumns();
    if (table.RowIdPosition() < 0) {
        from << "rid";
        to += ",rowid";
    }
    connection.Run("INSERT INTO " + table.TableName() + "(" + to + ") SELECT " + from.join(',') +
                   " FROM " + old + " ORDER BY rid");
}

void bringOverTables(Connection& connection, const std::vector<StoredTable>& tables) {
    QByteArrayList old;
    for (const StoredTable& table : tables) {
        dropIndexes(connection, table);
        old << movedAside(connection, table, tables);
    }
    for (const StoredTable& table : tables) {
        makeRows(connection, table);
        copyRows(connection, table, old.front());
        makeIndexes(connection, table);
        connection.Run("DROP TABLE " + old.takeFirst());
    }
}

// Its names had the collation JET, which no other tool knows.
void bringOverTableList(Connection& connection) {
    connection.Run("ALTER TABLE jet_tables RENAME TO jet_first_tables");
    Catalogue::CreateTableList(connection);
    connection.Run("INSERT INTO jet_tables(id,name,last_number) "
                   "SELECT id,name,last_number FROM jet_first_tables ORDER BY id");
    connection.Run("DROP TABLE jet_first_tables");
}

} // namespace

void bringOverFirstArrangement(Connection& connection) {
    if (Catalogue::ArrangementOf(connection) != firstArrangement) {
        return;
    }
    Transaction transaction(connection);
    // Another process may have done it meanwhile.
    if (Catalogue::ArrangementOf(connection) == firstArrangement) {
        bringOverTables(connection, Catalogue::TablesIn(connection));
        bringOverTableList(connection);
        connection.Run("PRAGMA user_version=" + textOf(Catalogue::Arrangement));
    }
    transaction.Commit();
}

} // namespace qvnd::jet
