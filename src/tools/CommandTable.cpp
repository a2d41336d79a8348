#include "tools/Command.h"

namespace qvnd::tools {

std::vector<Command> commandTable() { return {}; }

} // namespace qvnd::tools
