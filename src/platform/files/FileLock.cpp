#include "platform/files/FileLock.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"

#include <QCoreApplication>
#include <QDir>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <cerrno>
#include <sys/file.h>
#endif

namespace qvnd::files {

#ifdef _WIN32

// A byte behind the text, which others may read meanwhile.
LockAttempt systemLock(QFile& file) {
    OVERLAPPED place{};
    place.Offset = 1U << 30;
    if (LockFileEx(reinterpret_cast<HANDLE>(_get_osfhandle(file.handle())),
                   LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) {
        return {LockAttempt::Outcome::taken, {}};
    }
    const DWORD code = GetLastError();
    return {code == ERROR_LOCK_VIOLATION || code == ERROR_IO_PENDING ? LockAttempt::Outcome::held
                                                                     : LockAttempt::Outcome::failed,
            qt_error_string(static_cast<int>(code))};
}

#else

LockAttempt systemLock(QFile& file) {
    int result = 0;
    do {
        result = flock(file.handle(), LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result == 0) {
        return {LockAttempt::Outcome::taken, {}};
    }
    const int code = errno;
    return {code == EWOULDBLOCK ? LockAttempt::Outcome::held : LockAttempt::Outcome::failed,
            qt_error_string(code)};
}

#endif

FileLock::FileLock(const QString& folder, LockCall lock)
    : folder_(withoutSeparator(folder)), lock_(std::move(lock)),
      file_(withSeparator(folder) + fileName) {}

FileLock::~FileLock() { giveBack(); }

bool FileLock::tryTake() {
    if (file_.isOpen() || !open()) {
        return true;
    }
    const LockAttempt attempt = lock_(file_);
    if (attempt.outcome == LockAttempt::Outcome::taken) {
        sign();
        return true;
    }
    holder_ = QString::fromUtf8(file_.readAll());
    if (holder_.isEmpty()) {
        holder_ = QStringLiteral("另一个程序");
    }
    file_.close();
    if (attempt.outcome == LockAttempt::Outcome::failed) {
        fail(attempt.reason);
    }
    return false;
}

bool FileLock::open() {
    if (QDir().mkpath(folder_) && file_.open(QIODevice::ReadWrite)) {
        return true;
    }
    if (!file_.exists()) {
        return false;
    }
    if (!file_.open(QIODevice::ReadOnly)) {
        fail(file_.errorString());
    }
    return true;
}

// The lock goes with the handle; the name goes before, or it would stand for the next holder.
void FileLock::giveBack() {
    if (file_.isWritable()) {
        file_.resize(0);
    }
    file_.close();
}

void FileLock::sign() {
    if (!file_.isWritable()) {
        return;
    }
    const QString text = QStringLiteral("程序“%1”（进程 %2）")
                             .arg(QCoreApplication::applicationName())
                             .arg(QCoreApplication::applicationPid());
    file_.resize(0);
    file_.write(text.toUtf8());
    file_.flush();
}

void FileLock::fail(const QString& reason) const {
    throw RunTimeError(error::cannotAccessFile,
                       QStringLiteral("『%1』不能加锁，因此不能保证没有别的程序同时改动方案：%2。")
                           .arg(file_.fileName(), reason)
                           .toStdU16String());
}

} // namespace qvnd::files
