#include "platform/office/ProcessGroup.h"

#include <QProcess>

#ifdef Q_OS_UNIX
#include <csignal>
#include <unistd.h>
#endif

namespace qvnd::office {

#ifdef Q_OS_UNIX

void setOwnGroup(QProcess& process) {
    process.setChildProcessModifier([] { ::setpgid(0, 0); });
}

void endGroup(QProcess& process) {
    if (const auto id = static_cast<pid_t>(process.processId()); id > 0) {
        ::kill(-id, SIGKILL);
    }
    process.kill();
}

#else

void setOwnGroup(QProcess& /*process*/) {}

void endGroup(QProcess& process) {
    if (process.processId() > 0) {
        QProcess::startDetached(QStringLiteral("taskkill"),
                                {QStringLiteral("/T"), QStringLiteral("/F"), QStringLiteral("/PID"),
                                 QString::number(process.processId())});
    }
    process.kill();
}

#endif

} // namespace qvnd::office
