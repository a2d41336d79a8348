#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// The commands on single Word documents: "doc merge", "doc text", "doc info" and "doc
// check".
std::vector<Command> docCommands();

} // namespace qvnd::tools
