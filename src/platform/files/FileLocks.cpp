#include "platform/files/FileLocks.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace qvnd::files {

#ifdef _WIN32

bool isLockedByOther(const QString& path) {
    const HANDLE file = CreateFileW(reinterpret_cast<LPCWSTR>(path.utf16()), GENERIC_READ | DELETE,
                                    0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD reason = GetLastError();
        return reason == ERROR_SHARING_VIOLATION || reason == ERROR_LOCK_VIOLATION;
    }
    CloseHandle(file);
    return false;
}

#else

namespace {

bool hasRecordLock(int file) {
    struct flock wanted {};
    wanted.l_type = F_WRLCK;
    wanted.l_whence = SEEK_SET;
    return fcntl(file, F_GETLK, &wanted) == 0 && wanted.l_type != F_UNLCK;
}

// The lock that the trial may get goes with the descriptor.
bool hasWholeLock(int file) { return flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK; }

} // namespace

bool isLockedByOther(const QString& path) {
    const int file =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    struct stat status {};
    const bool isLocked = fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
                          (hasRecordLock(file) || hasWholeLock(file));
    close(file);
    return isLocked;
}

#endif

} // namespace qvnd::files
