#pragma once

#include "platform/jet/Database.h"

#include <QString>

#include <cstdint>
#include <memory>

namespace qvnd {
struct modMain;
}

// Statements on outline tables that several commands share. Table names stand bare in them, as
// each command's rules want it: error 3075 as in bareName. Errors of the store pass through.
namespace qvnd::outline {

struct OutlineRow {
    QString key;
    QString name;            // 名称
    bool isDocument = false; // 是否文档 is "是" or "否"
};

// Adds a row; the table numbers it.
void addRow(jet::Recordset& rs, const OutlineRow& row);
// Adds each row of `from`, from the current one on, in the order it comes.
void addRows(jet::Recordset& to, jet::Recordset& from);

// The ID of the row with that key; error 3021 when there is none, before anything is moved on its
// account. 16 bits wide: error 6 beyond.
std::int16_t idOfKey(jet::Database& db, const QString& table, const QString& key);

struct TableEnd {
    std::int16_t lastId = 0;
    std::int16_t count = 0;
};
// The last row's ID and the row count in the order of `order` ("" or " order by ID asc").
// Error 3021 for a table without rows.
TableEnd endOf(jet::Database& db, const QString& table, const QString& order);

// The rows whose key begins with `parentKey`, the last one current; error 3021 when there is none.
std::unique_ptr<jet::Recordset> rowsLike(jet::Database& db, const QString& table,
                                         const QString& parentKey);

// gUserTplPath + plan + "/" + plan + ".mdb", spelt as it is on disk.
QString planDatabasePath(const modMain& state, const QString& plan);
// gUserTplPath + plan + "/" + key + ".doc".
QString documentPath(const modMain& state, const QString& plan, const QString& key);

} // namespace qvnd::outline
