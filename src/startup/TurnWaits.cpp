#include "startup/TurnWaits.h"

namespace qvnd::startup {

void StartWait::begin(const QString& reason) {
    splash_.tell(QStringLiteral("正在等待：") + reason);
}

bool StartWait::goesOn() {
    events_.doEvents();
    return true;
}

void StartWait::end() { splash_.tell({}); }

void CommandWait::begin(const QString& reason) {
    longRun_.begin(QStringLiteral("正在等待"), 0);
    longRun_.next(reason + QStringLiteral("\n轮到时自动继续。"));
}

bool CommandWait::goesOn() {
    events_.keepPainted();
    return !longRun_.isCancelled();
}

} // namespace qvnd::startup
