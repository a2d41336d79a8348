#pragma once

#include "platform/jet/TableDef.h"
#include "platform/jet/file/Connection.h"

#include <QByteArray>

#include <cstdint>
#include <vector>

namespace qvnd::jet {

// One table as the file keeps it. Its rows stand in an SQLite table named after its number, "t7",
// in columns named after their positions, "f0", "f1"; so no name that a user gives ever meets the
// names of SQLite. The column "rid" numbers the rows in the order in which they came.
struct StoredTable {
    std::int64_t Id = 0;
    TableDef Definition;
    std::int32_t LastNumber = 0; // the last number that the auto-increment field gave
    bool NumberChanged = false;  // LastNumber is ahead of the file

    QByteArray TableName() const { return "t" + QByteArray::number(static_cast<qlonglong>(Id)); }
    static QByteArray ColumnName(int position) { return "f" + QByteArray::number(position); }
    // Position of a field, or of the auto-increment field; -1 when there is none.
    int PositionOf(QStringView field) const;
    int AutoIncrementPosition() const;
    // "f0,f1,f2"
    QByteArray AllColumns() const;
    // The number behind LastNumber; error 6 when there is none.
    std::int32_t NextNumber() const;
    // Takes note of a number that a row bears in the auto-increment field.
    void Reach(std::int32_t number);
};

// The definitions of all tables of one file. They are kept in the file itself:
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
    // Brings the file level with LastNumber of every table.
    void WriteNumbers(Connection& connection);

private:
    std::vector<StoredTable> tables_;
};

} // namespace qvnd::jet
