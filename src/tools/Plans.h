#pragma once

#include <QString>
#include <QStringList>

namespace qvnd::outline {
class OutlineNode;
}

namespace qvnd::tools {

class ProgramRun;

// The plans that the library lists, in its order.
QStringList planNames(ProgramRun& run);
// Throws RunTimeError 3078 with a Chinese description when there is no plan of that name.
void requirePlan(ProgramRun& run, const QString& name);
// Opens the plan as a click on its root does. Does nothing when it is the open one.
void openPlan(ProgramRun& run, const QString& name);

} // namespace qvnd::tools
