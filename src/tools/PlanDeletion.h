#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// "plan delete".
std::vector<Command> planDeletion();

} // namespace qvnd::tools
