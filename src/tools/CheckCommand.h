#pragma once

#include "generate/PlanCheck.h"
#include "tools/Command.h"

#include <QJsonArray>

namespace qvnd::tools {

// What a planner should know before generating the plan in the tree; `runsOn` when the heading of
// its first folder will not end its paragraph.
std::vector<generate::PlanFinding> findingsOf(modMain& state, const outline::OutlineTree& TrvEdit,
                                              bool runsOn);
// What to do about a text of another plan, for somebody at a terminal.
QString adviceHere(const generate::ForeignText& text);

QJsonArray findingsAsJson(const std::vector<generate::PlanFinding>& found);

// "check": what a planner should know before generating a plan.
std::vector<Command> checkCommands();

} // namespace qvnd::tools
