#pragma once

#include "tools/Command.h"

namespace qvnd::tools {

// The commands on the format tables: "format load", "format show", "format set".
std::vector<Command> formatCommands();

// Says in a box why a command on them is refused.
ExitStatus refuseInBox(Session& session, const QString& why);

} // namespace qvnd::tools
