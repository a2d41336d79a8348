#pragma once

#include "platform/jet/Database.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

// Statements on outline tables that several commands share. Table names stand bare in them: error
// 3075 as in bareName. Errors of the store pass through.
namespace qvnd::outline {

struct OutlineRow {
    QString key;
    QString name;            // 名称
    bool isDocument = false; // 是否文档 is "是" or "否"
};

// Adds a row; the table numbers it.
void addRow(jet::Recordset& rs, const OutlineRow& row);

// Adds a row with the key, the name and the mark of the current row of `from`.
void addRowOf(jet::Recordset& rs, const jet::Recordset& from);

// The row of that key in the table that the key names. Error 3021, which tells the key, when there
// is none.
std::unique_ptr<jet::Recordset> rowOfKey(jet::Database& db, const QString& key);
// What the row of that key says of being a document; nothing without a row.
std::optional<QString> documentMark(jet::Database& db, const QString& key);
// The ID of the row of that key. 16 bits wide: error 6 beyond; 3021 as in rowOfKey.
std::int16_t idOfKey(jet::Database& db, const QString& key);

struct TableEnd {
    std::int16_t lastId = 0;
    std::int16_t count = 0;
};
// The last row's ID, in the order of the IDs, and the row count. Error 3021 for a table without
// rows.
TableEnd endOf(jet::Database& db, const QString& table);

// Takes the rows behind the ID `place` out of the table, into the scratch table `temp`, which is
// made anew. Answers the base of the number that a new row there gets: the last ID before, less the
// number of rows that are left.
std::int16_t moveRowsOut(jet::Database& db, const QString& table, std::int16_t place);
// Adds them at the table's end again, with new IDs and their old keys.
void moveRowsBack(jet::Database& db, const QString& table);
// Takes the move back: they come in with the IDs that they had.
void undoRowsOut(jet::Database& db, const QString& table);

// The rows whose key begins with `parentKey`, the last one current; error 3021 when there is none.
std::unique_ptr<jet::Recordset> rowsLike(jet::Database& db, const QString& table,
                                         const QString& parentKey);

} // namespace qvnd::outline
