#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// "generate" and "contents rebuild".
std::vector<Command> generateCommands();

} // namespace qvnd::tools
