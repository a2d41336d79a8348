#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// The commands on the format tables: "format load", "format show", "format set".
std::vector<Command> formatCommands();

} // namespace qvnd::tools
