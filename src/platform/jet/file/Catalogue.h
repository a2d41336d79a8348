#pragma once

#include "platform/jet/TableDef.h"
#include "platform/jet/file/Connection.h"

#include <QByteArray>

#include <cstdint>
#include <vector>

namespace qvnd::jet {

// One table as the file keeps it: an SQLite table of its own name, with its fields as columns of
// their own names (see SqlNames.h for the few exceptions).
//
// "rowid" numbers the rows in their order. It is the auto-increment field where a unique index
// lies on that field alone, and a column of its own, behind the others, everywhere else.
struct StoredTable {
    StoredTable(std::int64_t id, TableDef definition);

    std::int64_t Id;
    TableDef Definition;
    std::int32_t LastNumber = 0; // the last number that the auto-increment field gave
    bool NumberChanged = false;  // LastNumber is ahead of the file

    // Names as SQL statements have them.
    const QByteArray& TableName() const { return tableName_; }
    const QByteArray& ColumnName(int position) const { return columnNames_.at(position); }
    // Of all fields, joined by commas.
    const QByteArray& AllColumns() const { return allColumns_; }

    // Position of a field, or of the auto-increment field; -1 when there is none.
    int PositionOf(QStringView field) const;
    int AutoIncrementPosition() const;
    // Position of the field that is "rowid"; -1 when that is a column of its own.
    int RowIdPosition() const;
    // A unique index on that field is the table itself, without an index of SQLite's.
    bool IsRowId(const Index& index) const;
    // The positions of the fields of each unique index that has a text among them.
    const std::vector<std::vector<int>>& UniqueTexts() const { return uniqueTexts_; }

    // The number behind LastNumber; error 6 when there is none.
    std::int32_t NextNumber() const;
    // Raises LastNumber to the number that a row has in the auto-increment field.
    void Reach(std::int32_t number);

private:
    QByteArray tableName_;
    QByteArrayList columnNames_;
    QByteArray allColumns_;
    std::vector<std::vector<int>> uniqueTexts_;
};

// The definitions of all tables of one file. What SQLite has no place for is kept in tables of the
// file itself:
//
//   jet_info(name, value)                                           "locale"
//   jet_tables(id, name, last_number)
//   jet_fields(table_id, position, name, type, size, attributes, zero_length, default_value)
//   jet_indexes(table_id, position, name, is_primary, is_unique)
//   jet_index_fields(table_id, index_position, position, field_position)
//
// application_id marks the file as ours, user_version counts the versions of this arrangement.
class Catalogue {
public:
    static void Create(Connection& connection, const QString& locale);

    // What user_version says of a file in this arrangement; -1 for a file that is none of ours.
    static constexpr std::int64_t Arrangement = 2;
    static std::int64_t ArrangementOf(Connection& connection);
    // The tables that a file lists, in the order of creation.
    static std::vector<StoredTable> TablesIn(Connection& connection);
    // Makes jet_tables.
    static void CreateTableList(Connection& connection);

    // Error 3343 when the file is none of ours.
    void Load(Connection& connection);

    // In the order of creation.
    const std::vector<StoredTable>& Tables() const { return tables_; }
    // Null when there is none.
    StoredTable* Find(QStringView name);
    StoredTable* Find(std::int64_t id);

    // The errors are those of TableDefs::Append.
    StoredTable& Add(Connection& connection, const TableDef& definition);
    void Remove(Connection& connection, std::int64_t id);
    // Writes the LastNumber of every table whose number has changed.
    void WriteNumbers(Connection& connection);

private:
    std::vector<StoredTable> tables_;
};

} // namespace qvnd::jet
