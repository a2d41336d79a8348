#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// The commands that change a node in its place: "outline delete", "outline rename".
std::vector<Command> outlineEditCommands();

} // namespace qvnd::tools
