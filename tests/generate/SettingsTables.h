#pragma once

#include "platform/jet/Database.h"

#include <QString>

#include <initializer_list>
#include <vector>

namespace qvnd::test {

struct Cell {
    QString field;
    jet::Value value;
};
using Row = std::vector<Cell>;

// Makes a table of the given rows in place of one that may be there; the first row tells the
// fields. A number makes a number field, everything else text of any length.
void putTable(jet::Database& database, const QString& name, const std::vector<Row>& rows);
// The same table without its rows.
void putEmptyTable(jet::Database& database, const QString& name, const Row& fields);
// Changes one field in the first row.
void change(jet::Database& database, const QString& table, const QString& field,
            const jet::Value& value);
void dropTable(jet::Database& database, const QString& name);

// The settings that a first installation works with, as far as generation reads them.
void putFirstSettings(jet::Database& database);

Row coverRow();
Row pageRow();
Row headerFooterRow();
Row selectionRow(const char16_t* 是否封面, const char16_t* 封面名称, const char16_t* 是否设置,
                 const char16_t* 设置名称, const char16_t* 是否定义);

} // namespace qvnd::test
