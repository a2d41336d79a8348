#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// What a drag does in the windows: "outline move", "outline copy".
std::vector<Command> outlineDragCommands();

} // namespace qvnd::tools
