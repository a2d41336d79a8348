#include "platform/jet/file/Catalogue.h"

#include "platform/jet/Failure.h"
#include "platform/jet/TextOrder.h"
#include "platform/jet/file/SqlNames.h"
#include "platform/jet/file/TableCreation.h"

#include <algorithm>
#include <limits>

namespace qvnd::jet {

namespace {

constexpr std::int64_t applicationId = 0x51564E44; // "QVND"

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

std::vector<std::vector<int>> uniqueTextsOf(const StoredTable& table) {
    std::vector<std::vector<int>> found;
    for (const Index& index : table.Definition.Indexes) {
        std::vector<int> positions;
        bool hasText = false;
        for (const QString& name : index.Fields) {
            positions.push_back(table.PositionOf(name));
            hasText = hasText || table.Definition.FieldNamed(name).IsText();
        }
        if (index.IsUnique() && hasText) {
            found.push_back(std::move(positions));
        }
    }
    return found;
}

} // namespace

StoredTable::StoredTable(std::int64_t id, TableDef definition)
    : Id(id), Definition(std::move(definition)), tableName_(sqlTableName(Definition.Name)) {
    for (const Field& field : Definition.Fields) {
        columnNames_ << sqlColumnName(field.Name);
    }
    allColumns_ = columnNames_.join(',');
    uniqueTexts_ = uniqueTextsOf(*this);
}

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

int StoredTable::RowIdPosition() const {
    const auto& indexes = Definition.Indexes;
    const bool isRowId = std::any_of(indexes.begin(), indexes.end(),
                                     [&](const Index& index) { return IsRowId(index); });
    return isRowId ? AutoIncrementPosition() : -1;
}

bool StoredTable::IsRowId(const Index& index) const {
    const int numbered = AutoIncrementPosition();
    return numbered >= 0 && index.IsUnique() && index.Fields.size() == 1 &&
           PositionOf(index.Fields.front()) == numbered;
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

void Catalogue::CreateTableList(Connection& connection) {
    connection.Run("CREATE TABLE jet_tables(id INTEGER PRIMARY KEY AUTOINCREMENT, "
                   "name TEXT NOT NULL UNIQUE, last_number INTEGER NOT NULL DEFAULT 0)");
}

void Catalogue::Create(Connection& connection, const QString& locale) {
    CreateTableList(connection);
    connection.Run("CREATE TABLE jet_info(name TEXT PRIMARY KEY, value TEXT);"
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
    connection.Run("PRAGMA application_id=" + QByteArray::number(applicationId));
    connection.Run("PRAGMA user_version=" + QByteArray::number(Arrangement));
    Statement info(connection, "INSERT INTO jet_info(name,value) VALUES('locale',?1)");
    info.Bind(1, Value(locale));
    info.Run();
}

std::int64_t Catalogue::ArrangementOf(Connection& connection) {
    return connection.NumberOf("PRAGMA application_id") == applicationId
               ? connection.NumberOf("PRAGMA user_version")
               : -1;
}

std::vector<StoredTable> Catalogue::TablesIn(Connection& connection) {
    std::vector<StoredTable> tables;
    Statement statement(connection, "SELECT id,name,last_number FROM jet_tables ORDER BY id");
    while (statement.Step()) {
        const std::int64_t id = statement.Number(0);
        TableDef definition(statement.Text(1));
        definition.Fields = loadFields(connection, id);
        definition.Indexes = loadIndexes(connection, id);
        tables.emplace_back(id, std::move(definition));
        tables.back().LastNumber = static_cast<std::int32_t>(statement.Number(2));
    }
    return tables;
}

void Catalogue::Load(Connection& connection) {
    if (ArrangementOf(connection) != Arrangement) {
        failUnrecognizedFormat(connection.Path());
    }
    tables_ = TablesIn(connection);
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
    StoredTable table(0, definition);
    createTable(connection, table);
    tables_.push_back(std::move(table));
    return tables_.back();
}

void Catalogue::Remove(Connection& connection, std::int64_t id) {
    const StoredTable* table = Find(id);
    connection.Run("DROP TABLE " + table->TableName());
    for (const char* part : {"jet_index_fields", "jet_indexes", "jet_fields"}) {
        connection.Run(QByteArray("DELETE FROM ") + part +
                       " WHERE table_id=" + QByteArray::number(id));
    }
    connection.Run("DELETE FROM jet_tables WHERE id=" + QByteArray::number(id));
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
