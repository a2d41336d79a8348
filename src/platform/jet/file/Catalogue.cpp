#include "platform/jet/file/Catalogue.h"

#include "platform/jet/Failure.h"
#include "platform/jet/TextOrder.h"
#include "platform/jet/file/TableCreation.h"

#include <algorithm>
#include <limits>

namespace qvnd::jet {

namespace {

constexpr std::int64_t applicationId = 0x51564E44; // "QVND"
constexpr std::int64_t arrangement = 1;

QByteArray tableId(std::int64_t id) { return QByteArray::number(static_cast<qlonglong>(id)); }

std::vector<Field> loadFields(Connection& connection, std::int64_t table) {
    Statement statement(connection, "SELECT name,type,size,attributes,zero_length,default_value "
                                    "FROM jet_fields WHERE table_id=?1 ORDER BY position");
    statement.Bind(1, table);
    std::vector<Field> fields;
    while (statement.Step()) {
        Field field;
        field.Name = statement.Text(0);
        field.Type = static_cast<FieldType>(statement.Number(1));
        field.Size = static_cast<int>(statement.Number(2));
        field.Attributes = static_cast<int>(statement.Number(3));
        field.AllowZeroLength = statement.Number(4) != 0;
        if (!statement.IsNull(5)) {
            field.DefaultValue = statement.Text(5);
        }
        fields.push_back(field);
    }
    return fields;
}

QStringList loadIndexFields(Connection& connection, std::int64_t table, std::int64_t index) {
    Statement statement(connection,
                        "SELECT f.name FROM jet_index_fields x JOIN jet_fields f "
                        "ON f.table_id=x.table_id AND f.position=x.field_position "
                        "WHERE x.table_id=?1 AND x.index_position=?2 ORDER BY x.position");
    statement.Bind(1, table);
    statement.Bind(2, index);
    QStringList names;
    while (statement.Step()) {
        names << statement.Text(0);
    }
    return names;
}

std::vector<Index> loadIndexes(Connection& connection, std::int64_t table) {
    Statement statement(connection, "SELECT position,name,is_primary,is_unique FROM jet_indexes "
                                    "WHERE table_id=?1 ORDER BY position");
    statement.Bind(1, table);
    std::vector<Index> indexes;
    while (statement.Step()) {
        indexes.push_back({statement.Text(1), statement.Number(2) != 0, statement.Number(3) != 0,
                           loadIndexFields(connection, table, statement.Number(0))});
    }
    return indexes;
}

} // namespace

int StoredTable::PositionOf(QStringView field) const {
    const Field* found = Definition.FindField(field);
    return found == nullptr ? -1 : static_cast<int>(found - Definition.Fields.data());
}

int StoredTable::AutoIncrementPosition() const {
    const auto found = std::find_if(Definition.Fields.begin(), Definition.Fields.end(),
                                    [](const Field& field) { return field.IsAutoIncrement(); });
    return found == Definition.Fields.end() ? -1
                                            : static_cast<int>(found - Definition.Fields.begin());
}

QByteArray StoredTable::AllColumns() const {
    QByteArrayList columns;
    for (int i = 0; i < static_cast<int>(Definition.Fields.size()); ++i) {
        columns << ColumnName(i);
    }
    return columns.join(',');
}

std::int32_t StoredTable::NextNumber() const {
    if (LastNumber == std::numeric_limits<std::int32_t>::max()) {
        failOverflow();
    }
    return LastNumber + 1;
}

void StoredTable::Reach(std::int32_t number) {
    if (number > LastNumber) {
        LastNumber = number;
        NumberChanged = true;
    }
}

void Catalogue::Create(Connection& connection, const QString& locale) {
    connection.Run("CREATE TABLE jet_info(name TEXT PRIMARY KEY, value TEXT);"
                   "CREATE TABLE jet_tables(id INTEGER PRIMARY KEY AUTOINCREMENT, "
                   "name TEXT NOT NULL UNIQUE COLLATE JET, last_number INTEGER NOT NULL DEFAULT 0);"
                   "CREATE TABLE jet_fields(table_id INTEGER, position INTEGER, name TEXT NOT NULL,"
                   "type INTEGER NOT NULL, size INTEGER NOT NULL, attributes INTEGER NOT NULL,"
                   "zero_length INTEGER NOT NULL, default_value TEXT, "
                   "PRIMARY KEY(table_id, position));"
                   "CREATE TABLE jet_indexes(table_id INTEGER, position INTEGER, "
                   "name TEXT NOT NULL, is_primary INTEGER NOT NULL, is_unique INTEGER NOT NULL,"
                   "PRIMARY KEY(table_id, position));"
                   "CREATE TABLE jet_index_fields(table_id INTEGER, index_position INTEGER, "
                   "position INTEGER, field_position INTEGER NOT NULL, "
                   "PRIMARY KEY(table_id, index_position, position));");
    connection.Run("PRAGMA application_id=" + tableId(applicationId));
    connection.Run("PRAGMA user_version=" + tableId(arrangement));
    Statement info(connection, "INSERT INTO jet_info(name,value) VALUES('locale',?1)");
    info.Bind(1, Value(locale));
    info.Run();
}

void Catalogue::Load(Connection& connection) {
    if (connection.NumberOf("PRAGMA application_id") != applicationId ||
        connection.NumberOf("PRAGMA user_version") != arrangement) {
        failUnrecognizedFormat(connection.Path());
    }
    std::vector<StoredTable> tables;
    Statement statement(connection, "SELECT id,name,last_number FROM jet_tables ORDER BY id");
    while (statement.Step()) {
        StoredTable table;
        table.Id = statement.Number(0);
        table.Definition.Name = statement.Text(1);
        table.LastNumber = static_cast<std::int32_t>(statement.Number(2));
        table.Definition.Fields = loadFields(connection, table.Id);
        table.Definition.Indexes = loadIndexes(connection, table.Id);
        tables.push_back(std::move(table));
    }
    tables_ = std::move(tables);
}

StoredTable* Catalogue::Find(QStringView name) {
    const auto found = std::find_if(tables_.begin(), tables_.end(), [&](const StoredTable& table) {
        return sameName(table.Definition.Name, name);
    });
    return found == tables_.end() ? nullptr : &*found;
}

StoredTable* Catalogue::Find(std::int64_t id) {
    const auto found = std::find_if(tables_.begin(), tables_.end(),
                                    [&](const StoredTable& table) { return table.Id == id; });
    return found == tables_.end() ? nullptr : &*found;
}

StoredTable& Catalogue::Add(Connection& connection, const TableDef& definition) {
    checkDefinition(definition);
    if (Find(definition.Name) != nullptr) {
        failTableExists(definition.Name);
    }
    StoredTable table;
    table.Definition = definition;
    createTable(connection, table);
    tables_.push_back(std::move(table));
    return tables_.back();
}

void Catalogue::Remove(Connection& connection, std::int64_t id) {
    const StoredTable* table = Find(id);
    connection.Run("DROP TABLE " + table->TableName());
    for (const char* part : {"jet_index_fields", "jet_indexes", "jet_fields"}) {
        connection.Run(QByteArray("DELETE FROM ") + part + " WHERE table_id=" + tableId(id));
    }
    connection.Run("DELETE FROM jet_tables WHERE id=" + tableId(id));
    tables_.erase(tables_.begin() + (table - tables_.data()));
}

void Catalogue::WriteNumbers(Connection& connection) {
    for (StoredTable& table : tables_) {
        if (table.NumberChanged) {
            Statement& statement =
                connection.Prepared("UPDATE jet_tables SET last_number=?1 WHERE id=?2");
            statement.Bind(1, std::int64_t{table.LastNumber});
            statement.Bind(2, table.Id);
            statement.Run();
            table.NumberChanged = false;
        }
    }
}

} // namespace qvnd::jet
