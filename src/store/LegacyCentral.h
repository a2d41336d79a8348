#pragma once

#include "store/modMain.h"

#include <QString>

#include <functional>

namespace qvnd::store {

// Takes over a central database (Db_UsTemplate.mdb, Db_Template.mdb, Db_BidSet.mdb) of an older
// installation, if `file` is a Jet file: all its tables with their rows, under their names. Tables
// of a known shape get our definition, any other one comes with its own fields. What the old file
// lacks is there as in a new database.
//
// `create` makes a new database of that kind at a path, and closes it.
//
// A Jet file that cannot be read whole gives way to a new database as a first start makes it; its
// takeover bears the reason. In both cases the old file is kept beside, see replaceLegacyFile(),
// and the takeover is added to state.LegacyTakeovers. Errors of the disk pass through, and the file
// is as it was.
void takeOverCentralFile(modMain& state, const QString& file,
                         const std::function<void(const QString& path)>& create);

// The user's message on a central database that could not be read; empty for any other takeover.
QString centralFailureText(const LegacyTakeover& takeover);

} // namespace qvnd::store
