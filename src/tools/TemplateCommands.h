#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// The commands on the system templates: "template store", "template list", "template show",
// "template delete".
std::vector<Command> templateCommands();

} // namespace qvnd::tools
