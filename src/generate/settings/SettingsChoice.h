#pragma once

#include "platform/jet/Database.h"
#include "platform/jet/Value.h"

#include <QString>

#include <optional>

namespace qvnd::generate {

// The one row of 是否设置表: which entries of the libraries stand in for the working tables.
struct SelectionRow {
    jet::Value 是否封面;
    jet::Value 封面名称;
    jet::Value 是否设置;
    jet::Value 设置名称;
    jet::Value 是否定义;
};

// Nothing when the table has no row.
std::optional<SelectionRow> readSelectionRow(jet::Database& gDbBidSet);

// Three readers of the row, which differ in how they compare 是否设置 with "是": the body font
// trims it, the other two take it as it stands. A 设置名称 that is Null or blank never names a
// library. Each answers the name of a table.
QString bodyFontTable(const std::optional<SelectionRow>& row);
QString pageTable(const std::optional<SelectionRow>& row);
QString headerFooterTable(const std::optional<SelectionRow>& row);

struct CoverChoice {
    // The custom page of 当前自定义 in place of a cover.
    bool customPage = false;
    QString table;
};

CoverChoice chooseCover(const std::optional<SelectionRow>& row);

} // namespace qvnd::generate
