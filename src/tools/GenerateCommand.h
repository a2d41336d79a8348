#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// "generate": makes 施工方案.doc of a plan in the work folder.
std::vector<Command> generateCommands();

} // namespace qvnd::tools
