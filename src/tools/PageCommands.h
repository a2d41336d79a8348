#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// The commands that lay a Word document out: "doc pdf", "doc png" and "doc pages".
std::vector<Command> pageCommands();

} // namespace qvnd::tools
