#include "platform/jet/file/TableCreation.h"

#include "platform/error/RunTimeError.h"
#include "platform/jet/Failure.h"
#include "platform/jet/TextOrder.h"
#include "platform/jet/file/SqlNames.h"

#include <algorithm>

namespace qvnd::jet {

namespace {

constexpr qsizetype longestName = 64;

bool isForbidden(QChar c) { return c.unicode() < u' ' || QStringView(u".!`[]").contains(c); }

void checkName(const QString& name) {
    const bool bad = name.isEmpty() || name.size() > longestName || name.startsWith(u' ') ||
                     std::any_of(name.begin(), name.end(), isForbidden);
    if (bad) {
        fail(error::nameInvalid, QStringLiteral("『%1』不是有效的名称：不能为空，不能超过 64 个"
                                                "字符，不能以空格开头，不能含有 . ! ` [ ]。")
                                     .arg(name));
    }
}

void checkFields(const TableDef& definition) {
    if (definition.Fields.empty()) {
        fail(error::noFieldDefined,
             QStringLiteral("表『%1』没有定义字段，不能添加。").arg(definition.Name));
    }
    for (const Field& field : definition.Fields) {
        checkName(field.Name);
        if (definition.FindField(field.Name) != &field) {
            fail(error::fieldDefinedTwice,
                 QStringLiteral("字段『%1』被定义了两次。").arg(field.Name));
        }
    }
}

void checkIndexes(const TableDef& definition) {
    for (const Index& index : definition.Indexes) {
        for (const QString& field : index.Fields) {
            if (definition.FindField(field) == nullptr) {
                fail(error::fieldDefinitionInvalid,
                     QStringLiteral("索引『%1』的字段『%2』不存在。").arg(index.Name, field));
            }
        }
    }
}

QByteArray columnType(FieldType type) {
    switch (type) {
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
        return "INTEGER";
    case FieldType::Single:
    case FieldType::Double:
        return "REAL";
    case FieldType::Date:
    case FieldType::Text:
    case FieldType::Memo:
        break;
    }
    return "TEXT";
}

void enterTable(Connection& connection, StoredTable& table) {
    Statement statement(connection, "INSERT INTO jet_tables(name) VALUES(?1)");
    statement.Bind(1, Value(table.Definition.Name));
    statement.Run();
    table.Id = connection.LastInsertedRow();
}

void enterFields(Connection& connection, const StoredTable& table) {
    Statement statement(connection, "INSERT INTO jet_fields VALUES(?1,?2,?3,?4,?5,?6,?7,?8)");
    int position = 0;
    for (const Field& field : table.Definition.Fields) {
        statement.Bind(1, table.Id);
        statement.Bind(2, std::int64_t{position++});
        statement.Bind(3, Value(field.Name));
        statement.Bind(4, std::int64_t{static_cast<int>(field.Type)});
        statement.Bind(5, std::int64_t{field.Size});
        statement.Bind(6, std::int64_t{field.Attributes});
        statement.Bind(7, std::int64_t{field.AllowZeroLength});
        statement.Bind(8, field.DefaultValue ? Value(*field.DefaultValue) : Value());
        statement.Run();
    }
}

void enterIndex(Connection& connection, const StoredTable& table, int number) {
    const Index& index = table.Definition.Indexes[static_cast<std::size_t>(number)];
    Statement entry(connection, "INSERT INTO jet_indexes VALUES(?1,?2,?3,?4,?5)");
    entry.Bind(1, table.Id);
    entry.Bind(2, std::int64_t{number});
    entry.Bind(3, Value(index.Name));
    entry.Bind(4, std::int64_t{index.Primary});
    entry.Bind(5, std::int64_t{index.Unique});
    entry.Run();
    Statement part(connection, "INSERT INTO jet_index_fields VALUES(?1,?2,?3,?4)");
    int position = 0;
    for (const QString& field : index.Fields) {
        part.Bind(1, table.Id);
        part.Bind(2, std::int64_t{number});
        part.Bind(3, std::int64_t{position++});
        part.Bind(4, std::int64_t{table.PositionOf(field)});
        part.Run();
    }
}

// Two indexes of one name are told apart by their positions.
QByteArray nameOf(const StoredTable& table, int position) {
    const auto& indexes = table.Definition.Indexes;
    const QString& name = indexes[static_cast<std::size_t>(position)].Name;
    const bool isTaken =
        std::any_of(indexes.begin(), indexes.begin() + position,
                    [&](const Index& other) { return sameName(other.Name, name); });
    return sqlIndexName(table.Definition.Name,
                        isTaken ? name + '.' + QString::number(position) : name);
}

void makeIndex(Connection& connection, const StoredTable& table, int position) {
    const Index& index = table.Definition.Indexes[static_cast<std::size_t>(position)];
    QByteArrayList columns;
    for (const QString& name : index.Fields) {
        const bool isText = table.Definition.FieldNamed(name).IsText();
        columns << table.ColumnName(table.PositionOf(name)) + (isText ? " COLLATE NOCASE" : "");
    }
    connection.Run(QByteArray("CREATE ") + (index.IsUnique() ? "UNIQUE " : "") + "INDEX " +
                   nameOf(table, position) + " ON " + table.TableName() + "(" + columns.join(',') +
                   ")");
}

} // namespace

void makeRows(Connection& connection, const StoredTable& table) {
    const int rowId = table.RowIdPosition();
    QByteArrayList columns;
    int position = 0;
    for (const Field& field : table.Definition.Fields) {
        const QByteArray type = position == rowId ? "INTEGER PRIMARY KEY" : columnType(field.Type);
        columns << table.ColumnName(position++) + " " + type;
    }
    if (rowId < 0) {
        columns << "rowid INTEGER PRIMARY KEY AUTOINCREMENT";
    }
    connection.Run("CREATE TABLE " + table.TableName() + "(" + columns.join(',') + ")");
}

void makeIndexes(Connection& connection, const StoredTable& table) {
    int position = 0;
    for (const Index& index : table.Definition.Indexes) {
        if (!table.IsRowId(index)) {
            makeIndex(connection, table, position);
        }
        ++position;
    }
}

void checkDefinition(const TableDef& definition) {
    checkName(definition.Name);
    checkFields(definition);
    checkIndexes(definition);
}

void createTable(Connection& connection, StoredTable& table) {
    enterTable(connection, table);
    enterFields(connection, table);
    makeRows(connection, table);
    for (int i = 0; i < static_cast<int>(table.Definition.Indexes.size()); ++i) {
        enterIndex(connection, table, i);
    }
    makeIndexes(connection, table);
}

} // namespace qvnd::jet
