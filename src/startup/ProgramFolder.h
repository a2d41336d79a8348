#pragma once

#include <QString>

namespace qvnd::startup {

// Where the program keeps its own files (App.Path): the folder of the executable when a file
// "qvnd.portable" lies beside it, else "qvnd" in the user's data folder. Native separators.
QString programFolder(const QString& executableFolder);

// "qvnd" in the user's own data folder.
QString userProgramFolder();

// The file that makes an installation portable.
bool isPortable(const QString& executableFolder);

} // namespace qvnd::startup
