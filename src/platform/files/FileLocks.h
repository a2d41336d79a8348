#pragma once

#include <QString>

namespace qvnd::files {

// Whether another program holds the file, or a part of it, locked: an fcntl or flock lock, shared
// or exclusive, or on Windows an open handle that does not share it. Locks of this process through
// fcntl do not count. False for what is no regular file or cannot be opened. Never throws.
//
// Must not be asked of a database that is open here: its own locks would be gone afterwards.
bool isLockedByOther(const QString& path);

} // namespace qvnd::files
