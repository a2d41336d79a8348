#include "platform/desktop/DesktopWindows.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>

namespace qvnd::desktop {

namespace {

constexpr int patienceMs = 2000; // of a tool that hangs
constexpr int betweenEventsMs = 30;

// As the program itself or as what an interpreter runs.
bool runs(const QStringList& commandLine, const QString& program) {
    return commandLine.mid(0, 2).contains(program);
}

} // namespace

bool DesktopWindows::activateByTool(const QString& title) {
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("wmctrl"));
    if (tool.isEmpty()) {
        return false;
    }
    QProcess process;
    process.start(tool, {QStringLiteral("-F"), QStringLiteral("-a"), title});
    QElapsedTimer clock;
    clock.start();
    while (!process.waitForFinished(betweenEventsMs) && process.state() != QProcess::NotRunning) {
        if (clock.hasExpired(patienceMs)) {
            process.kill();
            process.waitForFinished();
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    return process.error() != QProcess::FailedToStart &&
           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool DesktopWindows::activate(const QString& title, const QString& program) {
    if (byTitle_(title)) {
        return true;
    }
    const auto running = processes_.commandLines();
    return std::any_of(running.begin(), running.end(),
                       [&](const QStringList& commandLine) { return runs(commandLine, program); });
}

} // namespace qvnd::desktop
