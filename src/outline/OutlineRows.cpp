#include "outline/OutlineRows.h"

#include "outline/BareNames.h"
#include "outline/OutlineKeys.h"
#include "platform/files/Paths.h"
#include "store/Names.h"
#include "store/modMain.h"

namespace qvnd::outline {

void addRow(jet::Recordset& rs, const OutlineRow& row) {
    rs.AddNew();
    rs.Set(store::field::name, row.name);
    rs.Set(store::field::key, row.key);
    rs.Set(store::field::isDocument, row.isDocument ? u"是" : u"否");
    rs.Update();
}

void addRows(jet::Recordset& to, jet::Recordset& from) {
    for (; !from.Eof(); from.MoveNext()) {
        to.AddNew();
        for (const QStringView field :
             {store::field::key, store::field::name, store::field::isDocument}) {
            to.Set(field, from.Get(field));
        }
        to.Update();
    }
}

std::int16_t idOfKey(jet::Database& db, const QString& table, const QString& key) {
    const auto rs =
        db.OpenRecordset("Select * from " + bareName(table) + " where Key='" + key + u'\'');
    return rs->Get(store::field::id).ToInteger();
}

TableEnd endOf(jet::Database& db, const QString& table, const QString& order) {
    const auto rs = db.OpenRecordset("Select * from " + bareName(table) + order);
    rs->MoveLast();
    return {rs->Get(store::field::id).ToInteger(), toInteger(rs->RecordCount())};
}

std::unique_ptr<jet::Recordset> rowsLike(jet::Database& db, const QString& table,
                                         const QString& parentKey) {
    auto rs = db.OpenRecordset("Select * from " + bareName(table) + " where Key like '" +
                               parentKey + "*'");
    rs->MoveLast();
    return rs;
}

QString planDatabasePath(const modMain& state, const QString& plan) {
    return files::resolved(state.gUserTplPath + plan + files::separator() + plan + ".mdb");
}

QString documentPath(const modMain& state, const QString& plan, const QString& key) {
    return state.gUserTplPath + plan + files::separator() + key + ".doc";
}

} // namespace qvnd::outline
