#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// history list, show, undo, redo, restore and take.
std::vector<Command> historyCommands();

} // namespace qvnd::tools
