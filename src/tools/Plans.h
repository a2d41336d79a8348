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
// Throws RunTimeError (3078) with a plain word when there is no plan of that name.
void requirePlan(ProgramRun& run, const QString& name);
// Makes it the open plan as a click on its root does; an open one is left as it is.
void openPlan(ProgramRun& run, const QString& name);

} // namespace qvnd::tools
