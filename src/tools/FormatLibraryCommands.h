#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// The commands on saved settings, "format library list", "save", "show", "delete" and "use", and
// on custom pages, "format custom list", "create", "delete" and "use".
std::vector<Command> formatLibraryCommands();

} // namespace qvnd::tools
