#pragma once

#include "platform/jet/Database.h"

#include <QDate>
#include <QString>

namespace qvnd::plans {

// The one row of a plan's information table.
struct PlanInformation {
    QString client;      // 建设单位
    QString contractor;  // 施工单位
    QString author;      // 编制人
    QString approver;    // 审批人
    QDate date;          // 编制日期
    QString explanation; // 注释
};

// The name of the plan's information table.
QString informationTableOf(const QString& plan);

// Reads the row of the plan's information table. The table's name stands bare in the statement.
// Errors of the store pass through: 3078 without the table, 3021 without a row, 94 for a field
// that holds nothing.
PlanInformation readInformation(jet::Database& db, const QString& plan);

// Sets the fields of the row in hand of `rs`, which has been opened by AddNew or Edit.
void setInformation(jet::Recordset& rs, const PlanInformation& information);

} // namespace qvnd::plans
