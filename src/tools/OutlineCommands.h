#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// The commands on a plan's outline: "outline show", "outline add-folder", "outline add-document".
std::vector<Command> outlineCommands();

} // namespace qvnd::tools
