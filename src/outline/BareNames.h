#pragma once

#include <QString>

namespace qvnd::outline {

// The name as it may stand bare in a statement. Error 3075 with a plain word for a name that needs
// brackets: without them its first word could be taken for another table, with the second as that
// table's alias.
const QString& bareName(const QString& table);

} // namespace qvnd::outline
