#pragma once

#include "platform/jet/Database.h"

#include <QDate>
#include <QString>
#include <QStringList>

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

// Reads the row of the plan's information table into `information`, field by field: a field that
// holds nothing (Null), or no value of its kind, leaves its member as it was. Returns the names of
// these fields. The table's name stands bare in the statement. Throws 3078 without the table and
// 3021 without a row, and has then read nothing.
QStringList readInformation(jet::Database& db, const QString& plan, PlanInformation& information);

// Sets the fields of the row in hand of `rs`, which has been opened by AddNew or Edit.
void setInformation(jet::Recordset& rs, const PlanInformation& information);

} // namespace qvnd::plans
