#pragma once

#include "tools/Command.h"

#include <iosfwd>

namespace qvnd::tools {

// The whole tool but the process: `words` is the command line without the program's name.
ExitStatus run(const QStringList& words, std::ostream& out, std::ostream& err);

// The usage text, for people.
QString usageText(const std::vector<Command>& table);

} // namespace qvnd::tools
