#include "tools/Command.h"

#include "tools/DocCommands.h"

namespace qvnd::tools {

std::vector<Command> commandTable() { return docCommands(); }

} // namespace qvnd::tools
