#pragma once

#include <QString>

namespace qvnd::generate {

// The path of a file in a folder below "sys" of the program folder.
QString programFile(const QString& gAppPath, const QString& folder, const QString& name);

} // namespace qvnd::generate
