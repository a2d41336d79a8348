#pragma once

#include <QDate>
#include <QString>

#include <utility>
#include <vector>

namespace qvnd::store {

// One row: fields and their values, all as text; what is not named stays unset.
using SeedRow = std::vector<std::pair<QString, QString>>;

// The rows that the tables of a new Db_BidSet.mdb begin with, in order; none for a table that
// starts empty. They are design: the first generated document is formatted by exactly these.
// `today` dates the cover.
std::vector<SeedRow> formatDefaults(QStringView table, const QDate& today);

} // namespace qvnd::store
