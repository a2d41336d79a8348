#pragma once

#include <QString>

namespace qvnd::files {

// The value line straight behind the first line that equals `key` without regard to case. Both
// lines are taken whole: nothing is trimmed. Empty when the file cannot be read, no line matches
// or the key stands in the last line. Never throws.
QString ReadKeyedLine(const QString& fileName, const QString& key);

enum class MadePath { made = 0, baseMissing = 1, alreadyThere = 2 };

// Makes the folders of `path` below `base`, which must exist. `alreadyThere` says that the whole
// path was there. Throws as FileSystemObject::CreateFolder when a folder cannot be made.
MadePath MakePath(const QString& path, QString base);

} // namespace qvnd::files
