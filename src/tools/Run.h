#pragma once

#include "tools/Command.h"

#include <iosfwd>

namespace qvnd::tools {

// The whole tool but the process: `words` is the command line without the program's name,
// `executableFolder` the folder in which the executable lies.
ExitStatus run(const QStringList& words, std::ostream& out, std::ostream& err,
               const QString& executableFolder = {});

// The usage text, for people; `home` is the program folder.
QString usageText(const std::vector<Command>& table, const QString& home);

} // namespace qvnd::tools
