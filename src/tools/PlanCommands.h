#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// "init" and the commands on plans: "plan create", "plan list", "plan open", "plan info".
std::vector<Command> planCommands();

} // namespace qvnd::tools
