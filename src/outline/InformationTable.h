#pragma once

#include "platform/jet/Database.h"

#include <QString>

// The information table of a plan: the plan's name with "Org" behind it. A table of that name may
// also be the outline of another plan or template, which then is in 遍历表; it is left alone.
namespace qvnd::outline {

bool hasInformationTable(jet::Database& db, const QString& plan);

// Error 3265 when there is none.
void deleteInformationTable(jet::Database& db, const QString& plan);

} // namespace qvnd::outline
