#pragma once

#include "outline/PutBack.h"
#include "outline/Services.h"
#include "outline/Workbench.h"
#include "platform/history/Step.h"
#include "store/modMain.h"

#include <cstdint>
#include <optional>

namespace qvnd::outline {

// 撤消 and 恢复: take the last command back, or do the last undone one again. The step that was
// taken; null when there is none, or when an earlier one had to be brought to its end first. Rows,
// numbers, files, the open plan and the selected node are those of the state behind it, and the
// trees are filled anew. Errors of files and store pass through; the trees then show what the
// tables hold.
std::optional<history::Step> undo(modMain& state, Workbench& workbench, const Services& services);
std::optional<history::Step> redo(modMain& state, Workbench& workbench, const Services& services);

// The same for what has named the step to the user. Another window or program may have made it
// another one since: then nothing is taken, the trees are filled anew, and the user is told to look
// again.
std::optional<history::Step> undoNamed(modMain& state, Workbench& workbench,
                                       const Services& services, std::int64_t named);
std::optional<history::Step> redoNamed(modMain& state, Workbench& workbench,
                                       const Services& services, std::int64_t named);

// To the state behind a step, or to the beginning of the history.
void goToStep(modMain& state, Workbench& workbench, const Services& services, std::int64_t step);
// The same out of a list that shows `latest` as the step that 撤消 would take. Where it would take
// another one nothing is done but filling the trees; the user is told, and the answer is false.
bool goToListed(modMain& state, Workbench& workbench, const Services& services, std::int64_t step,
                std::int64_t latest);

// Takes one change out of a step, as putBack says, and shows the tables with what came back
// selected where the open plan has it.
PutBack putBackAndShow(modMain& state, Workbench& workbench, const Services& services,
                       std::int64_t step, const history::Change& change);

// What the start, or a command, has found left behind and mended, in sentences for the user, who is
// taken to read them: they are told once. Empty for nothing. `undo` is what the user calls the
// command that takes a step back.
QString takeMended(modMain& state, const QString& undo);

// Fills the trees of the workbench from the tables: TrvCurrent with the plan that 当前表 names, if
// it and its folder are there, and the node of that key selected, else its last one.
void showTables(modMain& state, Workbench& workbench, const Services& services,
                const QString& selectedKey);

} // namespace qvnd::outline
