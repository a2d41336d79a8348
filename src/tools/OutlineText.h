#pragma once

#include "outline/OutlineTree.h"
#include "platform/jet/Recordset.h"

#include <QJsonArray>
#include <QString>

// An outline as the tool prints it.
namespace qvnd::tools {

// An object for each row from the current one on: ID, Key, 名称, 是否文档, depth.
QJsonArray rowsAsJson(jet::Recordset& rs);

// For people: as the tree shows it, a line for each node.
QString treeAsText(const outline::OutlineTree& tree);

} // namespace qvnd::tools
