#pragma once

#include "platform/jet/Workspace.h"

#include <QString>

#include <functional>

namespace qvnd::store {

// Puts a database of ours in the place of `file`, a database of an older installation, and answers
// where the old file is kept: beside it as "<file>.jet", or "<file>.jet.2" and so on when another
// file bears that name.
//
// `build` makes the new database, and closes it, at the path that it is handed. The database takes
// the file's place when it is complete, and the old file is kept before that; a killed process
// leaves the one or the other, and the next run does it again. When `build` throws, or the disk
// fails, the file is as it was. The workspace's observer is told of the change; the kept file is
// not told, so that it stays whatever is taken back.
QString replaceLegacyFile(jet::Workspace& workspace, const QString& file,
                          const std::function<void(const QString& path)>& build);

} // namespace qvnd::store
