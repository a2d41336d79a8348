#include "outline/InformationTable.h"

#include "platform/error/RunTimeError.h"
#include "store/Names.h"
#include "store/PlanLists.h"

namespace qvnd::outline {

namespace {

bool isListed(jet::Database& db, const QString& name) {
    if (!db.TableDefs().Contains(store::table::planList.toString())) {
        return false;
    }
    return store::listedNames(db).contains(name, Qt::CaseInsensitive);
}

} // namespace

bool hasInformationTable(jet::Database& db, const QString& plan) {
    const QString table = store::informationTableOf(plan);
    return db.TableDefs().Contains(table) && !isListed(db, table);
}

void deleteInformationTable(jet::Database& db, const QString& plan) {
    if (!hasInformationTable(db, plan)) {
        throw RunTimeError(error::itemNotFound, u"在此集合中找不到项目");
    }
    db.TableDefs().Delete(store::informationTableOf(plan));
}

} // namespace qvnd::outline
