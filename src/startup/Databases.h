#pragma once

#include "store/modMain.h"

namespace qvnd::startup {

// Opens the three databases that stay open for the run, in the order user, templates, settings;
// one that is missing is made with its tables first. A file that exists is taken as it is. Errors
// of the store and of the file system pass through.
void openDatabases(modMain& state);

} // namespace qvnd::startup
