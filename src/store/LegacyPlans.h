#pragma once

#include "store/LegacyTakeover.h"
#include "store/modMain.h"

#include <QString>

// Plans and templates made by older installations: their folder holds a genuine Jet file where a
// database of ours belongs.
namespace qvnd::store {

// Takes over the outline (its rows in ID order, with their IDs if each has one of its own, else
// numbered anew) and, if `withInformation`, the information of the folder `name` from the Jet file
// `file`, which is then kept beside as "<file>.jet" ("<file>.jet.2" when another one bears that
// name). Fields that we do not know stay in the kept file alone.
//
// Wholly or not at all: the Jet file is copied first, then the complete new database replaces it in
// one step. A killed process leaves one of the two in place, and the next run tries again. Errors:
// 3343 for a damaged file, 3078 for one without an outline of that name, those of the store and the
// file system; the file is then as it was.
LegacyTakeover takeOverLegacyFile(modMain& state, const QString& file, const QString& name,
                                  bool withInformation);

// The same for a folder whose database is `file`, if that is a Jet file; anything else is left
// alone. What was done, or why not, is added to state.LegacyTakeovers. False when there is a Jet
// file and it could not be taken over.
bool adoptLegacyFile(modMain& state, const QString& file, const QString& name,
                     bool withInformation);

} // namespace qvnd::store
