#pragma once

#include <QString>
#include <QStringList>

#include <filesystem>

namespace qvnd::files {

// Paths are text with the platform's own separator. Names are compared without case on every
// platform, as "Sys" and "sys" are one folder.

QChar separator();

// The path with one separator at its end.
QString withSeparator(const QString& path);
// The path without the one separator at its end, if it has one; a bare root keeps it.
QString withoutSeparator(const QString& path);

// The path as its existing part is spelt on disk: each name that does not exist as written but
// differs only in case from one that does takes that one's spelling. What does not exist at all
// stays as written.
QString resolved(const QString& path);

// The names in a folder, `folder` as spelt on disk, in no order. The names alone are read, as a
// folder may hold thousands of documents; of a folder that cannot be read, what could be.
QStringList namesOf(const QString& folder);

bool folderExists(const QString& path);
bool fileExists(const QString& path);

// The file that a symbolic link leads to, over any number of links and also where it is not there;
// any other path as it is. As spelt on disk.
QString behindLinks(const QString& path);

// For the rooms that speak std::filesystem; resolved like above.
std::filesystem::path toPath(const QString& path);
QString fromPath(const std::filesystem::path& path);

} // namespace qvnd::files
