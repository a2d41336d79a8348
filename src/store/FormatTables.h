#pragma once

#include "platform/jet/TableDef.h"

#include <vector>

namespace qvnd::store {

// The tables of Db_BidSet.mdb in the order of their creation. All but the plain lists (封面库,
// 当前自定义, 设置库) follow one rule: texts may be empty, whole numbers are 0 by default.
std::vector<jet::TableDef> formatTables();

} // namespace qvnd::store
