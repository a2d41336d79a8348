#pragma once

#include "platform/jet/legacy/LegacyDatabase.h"

namespace qvnd::jet::legacy {

// Read a Jet file with libmdb, which may crash on a damaged file: call these in a child process
// only. They throw std::runtime_error for a file that cannot be read whole.

QStringList readTableNames(const QString& path);
// Error 3078 is for the caller: the name must be one of the table names. Binary and object fields
// come as Null.
LegacyTable readTable(const QString& path, const QString& name);

} // namespace qvnd::jet::legacy
