#include "store/PlanLists.h"

#include "store/Names.h"

namespace qvnd::store {

namespace {

std::unique_ptr<jet::Recordset> openAll(jet::Database& db, QStringView table) {
    return db.OpenRecordset("Select * from " + table.toString());
}

} // namespace

std::unique_ptr<jet::Recordset> openPlanList(jet::Database& db) {
    return openAll(db, table::planList);
}

std::unique_ptr<jet::Recordset> openCurrentPlan(jet::Database& db) {
    return openAll(db, table::currentPlan);
}

QStringList listedNames(jet::Database& db) {
    QStringList names;
    for (const auto list = openPlanList(db); !list->Eof(); list->MoveNext()) {
        names << list->Get(field::name).TextOrEmpty();
    }
    return names;
}

void enlist(jet::Database& db, const QString& name) {
    const auto list = openPlanList(db);
    list->AddNew();
    list->Set(field::name, name);
    list->Update();
}

std::optional<QString> currentPlan(jet::Database& db) {
    const auto current = openCurrentPlan(db);
    return current->Eof() ? std::nullopt : std::optional(current->Get(field::name).TextOrEmpty());
}

void forgetCurrentPlan(jet::Database& db) {
    const auto current = openCurrentPlan(db);
    if (!current->Eof()) {
        current->Delete();
    }
}

} // namespace qvnd::store
