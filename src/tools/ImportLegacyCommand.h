#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// "plan import-legacy": plans and templates whose folder holds a Jet file of an older
// installation.
std::vector<Command> importLegacyCommands();

} // namespace qvnd::tools
