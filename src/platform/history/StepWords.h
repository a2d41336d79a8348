#pragma once

#include "platform/history/HistoryFile.h"
#include "platform/history/Step.h"

namespace qvnd::history {

// "删除[施工部署]": the caption, and the name of what the command was about: the selected node
// where the command changed it, else what came first.
QString titleOf(const CommandFrame& frame, const QList<Change>& changes);

// Whether nothing was changed but which plan is open, a scratch table, and plans' own copies of
// their tables.
bool isMinor(const QList<Change>& changes, const QList<FileChange>& files);

// One line for a change, as the list of the history shows it: "删去节点 施工部署（甲.1）".
QString lineOf(const Change& change);

} // namespace qvnd::history
