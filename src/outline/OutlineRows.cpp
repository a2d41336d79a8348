#include "outline/OutlineRows.h"

#include "outline/OutlineKeys.h"
#include "outline/QueryText.h"
#include "platform/error/IgnoringErrors.h"
#include "store/Names.h"

namespace qvnd::outline {

namespace {

std::unique_ptr<jet::Recordset> inOrder(jet::Database& db, const QString& table) {
    return db.OpenRecordset("Select * from " + bareName(table) + " order by ID asc");
}

void dropScratchTable(jet::Database& db) {
    ignoringError(error::tableToDropNotFound,
                  [&] { db.Execute(QStringLiteral("DROP TABLE temp")); });
}

} // namespace

void addRow(jet::Recordset& rs, const OutlineRow& row) {
    rs.AddNew();
    rs.Set(store::field::name, row.name);
    rs.Set(store::field::key, row.key);
    rs.Set(store::field::isDocument, row.isDocument ? u"是" : u"否");
    rs.Update();
}

void addRowOf(jet::Recordset& rs, const jet::Recordset& from) {
    rs.AddNew();
    for (const QStringView field :
         {store::field::key, store::field::name, store::field::isDocument}) {
        rs.Set(field, from.Get(field));
    }
    rs.Update();
}

std::unique_ptr<jet::Recordset> rowOfKey(jet::Database& db, const QString& key) {
    auto row = db.OpenRecordset(rowQuery(tableOfKey(key), key));
    if (row->Eof()) {
        throw RunTimeError(error::noCurrentRecord,
                           QStringLiteral("编号为“%1”的节点已不在“%2”中，请重新打开它后再试。")
                               .arg(key, tableOfKey(key))
                               .toStdU16String());
    }
    return row;
}

std::optional<QString> documentMark(jet::Database& db, const QString& key) {
    const auto row = db.OpenRecordset(rowQuery(tableOfKey(key), key));
    return row->Eof() ? std::nullopt
                      : std::optional(row->Get(store::field::isDocument).TextOrEmpty());
}

std::int16_t idOfKey(jet::Database& db, const QString& key) {
    return rowOfKey(db, key)->Get(store::field::id).ToInteger();
}

TableEnd endOf(jet::Database& db, const QString& table) {
    const auto rs = inOrder(db, table);
    rs->MoveLast();
    return {rs->Get(store::field::id).ToInteger(), toInteger(rs->RecordCount())};
}

std::int16_t moveRowsOut(jet::Database& db, const QString& table, std::int16_t place) {
    const QString behind = " where ID > " + QString::number(place);
    dropScratchTable(db);
    db.Execute("Select * into  temp  from " + bareName(table) + behind);
    const std::int16_t lastId = endOf(db, table).lastId;
    db.Execute("Delete * from " + table + behind);
    return toInteger(lastId - endOf(db, table).count);
}

void moveRowsBack(jet::Database& db, const QString& table) {
    const auto moved = db.OpenRecordset(QStringLiteral("Select * from temp"));
    const auto rows = db.OpenRecordset("Select * from " + bareName(table));
    for (; !moved->Eof(); moved->MoveNext()) {
        addRowOf(*rows, *moved);
    }
}

void undoRowsOut(jet::Database& db, const QString& table) {
    db.Execute("INSERT INTO " + bareName(table) + " SELECT * FROM temp");
}

std::unique_ptr<jet::Recordset> rowsLike(jet::Database& db, const QString& table,
                                         const QString& parentKey) {
    auto rs = db.OpenRecordset("Select * from " + bareName(table) + " where Key like '" +
                               parentKey + "*'");
    rs->MoveLast();
    return rs;
}

} // namespace qvnd::outline
