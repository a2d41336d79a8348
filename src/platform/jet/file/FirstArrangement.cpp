#include "platform/jet/file/FirstArrangement.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/jet/file/Catalogue.h"
#include "platform/jet/file/TableCreation.h"

#include <algorithm>

namespace qvnd::jet {

namespace {

constexpr std::int64_t firstArrangement = 1;

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

// The old table's name. The table is renamed first where another one needs its name.
QByteArray movedAside(Connection& connection, const StoredTable& table,
                      const std::vector<StoredTable>& all) {
    QByteArray old = "t" + QByteArray::number(table.Id);
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
        connection.Run("DROP INDEX t" + QByteArray::number(table.Id) + "_" + QByteArray::number(i));
    }
}

QByteArray firstColumn(int position) { return "f" + QByteArray::number(position); }

// The numbers of the rows. Where one lacks its number, all get new ones, 1 and up in the order in
// which they have been read so far: the rows without a number first.
QByteArray numbersOf(Connection& connection, const QByteArray& column, const QByteArray& old) {
    const bool isMissing =
        connection.NumberOf("SELECT count(*) FROM " + old + " WHERE " + column + " IS NULL") > 0;
    return isMissing ? "row_number() OVER (ORDER BY " + column + ",rid)" : column;
}

void copyRows(Connection& connection, const StoredTable& table, const QByteArray& old) {
    const int rowId = table.RowIdPosition();
    QByteArrayList from;
    for (int i = 0; i < static_cast<int>(table.Definition.Fields.size()); ++i) {
        from << (i == rowId ? numbersOf(connection, firstColumn(i), old) : firstColumn(i));
    }
    QByteArray to = table.AllColumns();
    if (rowId < 0) {
        from << "rid";
        to += ",rowid";
    }
    connection.Run("INSERT INTO " + table.TableName() + "(" + to + ") SELECT " + from.join(',') +
                   " FROM " + old + " ORDER BY rid");
}

// No number that a row has may be given again.
void reachNumbers(Connection& connection, const StoredTable& table) {
    if (table.RowIdPosition() >= 0) {
        connection.Run("UPDATE jet_tables SET last_number=max(last_number,"
                       "(SELECT coalesce(max(rowid),0) FROM " +
                       table.TableName() + ")) WHERE id=" + QByteArray::number(table.Id));
    }
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
        reachNumbers(connection, table);
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
        connection.Run("PRAGMA user_version=" + QByteArray::number(Catalogue::Arrangement));
    }
    transaction.Commit();
}

} // namespace qvnd::jet
