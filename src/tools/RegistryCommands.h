#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// "registry get" on the program's registry file, and "profile get" on any profile (ini) file.
// Neither starts the program.
std::vector<Command> registryCommands();

} // namespace qvnd::tools
