#include "platform/files/WorkSpaceTurn.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <sys/file.h>
#endif

namespace qvnd::files {

namespace {

constexpr unsigned long pause = 20; // milliseconds between two attempts

#ifdef _WIN32

// A byte behind the text, which others may read meanwhile.
bool lockWhole(QFile& file) {
    OVERLAPPED place{};
    place.Offset = 1U << 30;
    return LockFileEx(reinterpret_cast<HANDLE>(_get_osfhandle(file.handle())),
                      LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0;
}

#else

bool lockWhole(QFile& file) { return flock(file.handle(), LOCK_EX | LOCK_NB) == 0; }

#endif

} // namespace

WorkSpaceTurn::WorkSpaceTurn(const QString& programFolder)
    : folder_(programFolder), file_(withSeparator(programFolder) + "qvnd.lock") {}

void WorkSpaceTurn::take(std::chrono::milliseconds longest) {
    if (file_.isOpen() || !file_.open(QIODevice::ReadWrite)) {
        return;
    }
    if (lockWhole(file_) || (longest.count() > 0 && waitForLock(longest))) {
        sign();
        return;
    }
    const QString reason =
        QStringLiteral("『%1』正由%2使用，等了 %3 秒还没有轮到。请等它做完再试。")
            .arg(withoutSeparator(folder_), holder())
            .arg(longest.count() / 1000);
    file_.close();
    throw RunTimeError(error::storeBusy, reason.toStdU16String());
}

bool WorkSpaceTurn::waitForLock(std::chrono::milliseconds longest) {
    const auto tell = [this](bool isWaiting) {
        if (onWaiting) {
            onWaiting(isWaiting);
        }
    };
    QElapsedTimer waiting;
    waiting.start();
    tell(true);
    bool isLocked = false;
    while (!isLocked && !waiting.hasExpired(longest.count())) {
        QThread::msleep(pause);
        isLocked = lockWhole(file_);
    }
    tell(false);
    return isLocked;
}

// The lock goes with the last handle on the file.
void WorkSpaceTurn::giveBack() { file_.close(); }

void WorkSpaceTurn::sign() {
    const QString text = QStringLiteral("程序“%1”（进程 %2）")
                             .arg(QCoreApplication::applicationName())
                             .arg(QCoreApplication::applicationPid());
    file_.resize(0);
    file_.write(text.toUtf8());
    file_.flush();
}

QString WorkSpaceTurn::holder() {
    file_.seek(0);
    const QString text = QString::fromUtf8(file_.readAll());
    return text.isEmpty() ? QStringLiteral("另一个程序") : text;
}

} // namespace qvnd::files
