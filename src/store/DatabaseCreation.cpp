#include "store/DatabaseCreation.h"

#include "store/FormatDefaults.h"
#include "store/FormatTables.h"
#include "store/Names.h"
#include "store/PlanTables.h"

namespace qvnd::store {

namespace {

std::unique_ptr<jet::Database> created(modMain& state, const QString& path) {
    return state.gWs->CreateDatabase(path, QString::fromUtf16(jet::dbLangGeneral));
}

// Values go through the recordset as text, so numbers and dates are the engine's conversions.
void seed(jet::Database& database, const QString& table, const std::vector<SeedRow>& rows) {
    if (rows.empty()) {
        return;
    }
    const auto recordset = database.OpenRecordset(table, jet::OpenAs::Table);
    for (const SeedRow& row : rows) {
        recordset->AddNew();
        for (const auto& [field, value] : row) {
            recordset->Set(field, value);
        }
        recordset->Update();
    }
}

} // namespace

// The tables are made in one transaction: one write to the disk instead of thirty, and a killed
// process leaves a file without tables rather than with some of them.
void CreateUserDb(modMain& state, const QString& path) {
    state.gDbUser = created(state, path);
    state.gWs->BeginTrans();
    jet::TableDefs tables = state.gDbUser->TableDefs();
    tables.Append(nameTable(table::planList));
    tables.Append(nameTable(table::currentPlan));
    tables.Append(bidDocumentsTable());
    tables.Append(outlineTable(table::scratch.toString()));
    state.gWs->CommitTrans();
}

void CreateTemplateDb(modMain& state, const QString& path) {
    state.gDbTemplate = created(state, path);
    state.gDbTemplate->TableDefs().Append(nameTable(table::planList));
}

void CreateBidSetDb(modMain& state, const QString& path, const QDate& today) {
    state.gDbBidSet = created(state, path);
    state.gWs->BeginTrans();
    for (const jet::TableDef& definition : formatTables()) {
        state.gDbBidSet->TableDefs().Append(definition);
        seed(*state.gDbBidSet, definition.Name, formatDefaults(definition.Name, today));
    }
    state.gWs->CommitTrans();
}

} // namespace qvnd::store
