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
// A damaged Jet file is replaced by a new database, as a first start makes it, and the takeover
// tells why. In both cases the old file is kept beside, see replaceLegacyFile(), and the takeover
// is added to state.LegacyTakeovers. Every other error passes through and leaves the file as it
// was: 3051 when it could not be read this time, those of the disk and of the store.
void takeOverCentralFile(modMain& state, const QString& file,
                         const std::function<void(const QString& path)>& create);

// The user's message on a central database that could not be read; empty for any other takeover.
QString centralFailureText(const LegacyTakeover& takeover);

} // namespace qvnd::store
