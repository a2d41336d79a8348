#include "platform/jet/file/SameText.h"

#include "platform/jet/Failure.h"
#include "platform/jet/TextOrder.h"

namespace qvnd::jet {

namespace {

// A text with more spellings is compared row by row.
constexpr qsizetype mostSpellings = 64;

QByteArray placeFor(const Value& value, std::vector<Value>& parameters) {
    parameters.push_back(value);
    return "?" + QByteArray::number(static_cast<int>(parameters.size()));
}

bool hasOtherSpellings(const Value& value) {
    return value.IsText() && !spellings(value.ToText(), 1);
}

// The condition that a row has the values of `row` at the positions; empty when a Null is among
// them, or when SQLite's own index sees to it.
QByteArray sameRowSql(const StoredTable& table, const std::vector<int>& positions,
                      const std::vector<Value>& row, std::vector<Value>& parameters) {
    QByteArrayList conditions;
    bool isNeeded = false;
    for (const int position : positions) {
        const Value& value = row[static_cast<std::size_t>(position)];
        if (value.IsNull()) {
            return {};
        }
        isNeeded = isNeeded || hasOtherSpellings(value);
        const QByteArray& column = table.ColumnName(position);
        conditions << (value.IsText() ? sameTextSql(column, value.ToText(), parameters)
                                      : column + "=" + placeFor(value, parameters));
    }
    return isNeeded ? conditions.join(" AND ") : QByteArray();
}

bool isThereBut(std::optional<std::int64_t> self, Connection& connection, const QByteArray& sql,
                const std::vector<Value>& parameters) {
    Statement statement(connection, sql);
    int position = 0;
    for (const Value& parameter : parameters) {
        statement.Bind(++position, parameter);
    }
    while (statement.Step()) {
        if (statement.Number(0) != self) {
            return true;
        }
    }
    return false;
}

} // namespace

QByteArray sameTextSql(const QByteArray& column, const QString& text,
                       std::vector<Value>& parameters) {
    const auto all = spellings(text, mostSpellings);
    // NOCASE compares no further than to a NUL.
    if (!all || text.contains(QChar(0))) {
        return "(" + column + "=" + placeFor(text, parameters) + " COLLATE JET)";
    }
    QByteArrayList places;
    for (const QString& spelling : *all) {
        places << placeFor(spelling, parameters);
    }
    return "(" + column + " COLLATE NOCASE IN (" + places.join(',') + "))";
}

void refuseSameTexts(Connection& connection, const StoredTable& table,
                     const std::vector<Value>& row, std::optional<std::int64_t> self) {
    for (const std::vector<int>& positions : table.UniqueTexts()) {
        std::vector<Value> parameters;
        const QByteArray same = sameRowSql(table, positions, row, parameters);
        if (!same.isEmpty() &&
            isThereBut(self, connection,
                       "SELECT rowid FROM " + table.TableName() + " WHERE " + same, parameters)) {
            failDuplicate();
        }
    }
}

} // namespace qvnd::jet
