#pragma once

#include <QString>

// Names of files and folders that come from databases which others may have written.
namespace qvnd::files {

// True when the name, joined to a folder, names something in this very folder on every system.
// False for blanks and points alone, for a name with a separator, a colon or a control character,
// and for a device of Windows ("NUL", "com1.txt").
bool isPlainName(const QString& name);

// The name itself; error 76 when it is no plain name.
const QString& plainName(const QString& name);

} // namespace qvnd::files
