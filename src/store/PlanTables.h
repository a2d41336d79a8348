#pragma once

#include "platform/jet/TableDef.h"

// The tables of Db_UsTemplate.mdb, of Db_Template.mdb, and of the databases in the folders of
// plans and templates.
namespace qvnd::store {

// 名称 alone: the list of plans or templates, or the open plan.
jet::TableDef nameTable(QStringView name);
// 位置 alone.
jet::TableDef bidDocumentsTable();

// 名称, Key, ID and 是否文档, texts empty by default; unique indexes "PrimaryKey" on Key and, the
// primary one in spite of that name, "ID" on ID. A row's ID alone fixes its place in the outline.
jet::TableDef outlineTable(const QString& name);

// 建设单位, 施工单位, 编制人, 审批人 (100 characters each), 编制日期, 注释; named after the plan
// with "Org" behind.
jet::TableDef informationTable(const QString& plan);

} // namespace qvnd::store
