#pragma once

#include "platform/registry/Registry.h"

#include <QString>

namespace qvnd::startup {

// Where the program keeps its own files, what it finds there at its first start, and what later
// starts leave alone.

// The file beside the executable that makes an installation portable ("qvnd.portable").
bool isPortable(const QString& executableFolder);

// The program's folder (App.Path), with native separators: the executable's own in a portable
// installation, else "qvnd" in the user's data folder.
QString programFolder(const QString& executableFolder);

// Makes the program folder with "Sys" and the folders of templates, pictures and custom pages in
// it. A folder that already holds more than its lock (FileLock), but no "Sys", is left as it is: an
// installation that is damaged is not mended in silence. A portable one holds the executable from
// the start and is laid out all the same.
void layOutProgramFolder(const QString& programFolder);

// Puts what is shipped in `shared` into the program folder: each file that is missing there, and
// the help whenever the shipped one differs. A missing `shared` ships nothing. Errors of the disk
// are RunTimeErrors.
void bringShippedFiles(const QString& shared, const QString& programFolder);

// Unless the registry names a configuration folder already: makes the work folder "工程文档管理" in
// `documents`, names it in a `cfgpath` file of the program folder, and names the program folder in
// the registry as the configuration folder. Where the work folder cannot be made, or plans lie
// beside the program already, nothing is written, so that start-up falls back to the folder beside
// the program.
void chooseWorkFolder(registry::Registry& registry, const QString& programFolder,
                      const QString& documents);

} // namespace qvnd::startup
