#pragma once

#include "platform/jet/Database.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

// The lists of names that the central databases keep: 遍历表 names the plans in Db_UsTemplate.mdb
// and the templates in Db_Template.mdb, 当前表 in Db_UsTemplate.mdb names the plan that is open.
// Errors are those of the store.
namespace qvnd::store {

std::unique_ptr<jet::Recordset> openPlanList(jet::Database& db);
std::unique_ptr<jet::Recordset> openCurrentPlan(jet::Database& db);

// The names of 遍历表 in the order of their rows, Null as the empty text.
QStringList listedNames(jet::Database& db);
// Adds a row to 遍历表.
void enlist(jet::Database& db, const QString& name);

// The plan that 当前表 names, Null as the empty text; nothing without a row.
std::optional<QString> currentPlan(jet::Database& db);
// Deletes the first row of 当前表, if there is one.
void forgetCurrentPlan(jet::Database& db);

} // namespace qvnd::store
