#pragma once

#include <QString>

namespace qvnd::outline {

// The name as it may stand bare in a statement. Error 3075 with a plain word for a name that needs
// brackets: without them its first word could be taken for another table, with the second as that
// table's alias.
const QString& bareName(const QString& table);

// The name in brackets. Error 3125 with a plain word for a name with a bracket in it, which could
// make the statement mean another table.
QString bracketedName(const QString& table);

} // namespace qvnd::outline
