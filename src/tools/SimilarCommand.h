#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// "similar": the template documents that bear the name of a plan's document.
std::vector<Command> similarCommands();

} // namespace qvnd::tools
