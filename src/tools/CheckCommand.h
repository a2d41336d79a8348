#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// "check": what a planner should know before generating a plan.
std::vector<Command> checkCommands();

} // namespace qvnd::tools
