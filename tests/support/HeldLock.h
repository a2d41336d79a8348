#pragma once

#include <QFile>
#include <QString>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qvnd::test {

enum class LockKind { record, sharedRecord, whole };

// A lock on a file as another program holds it: a process of its own, for as long as the object
// lives. A record lock covers the file's first byte alone.
class HeldLock {
public:
    HeldLock(const QString& path, LockKind kind) {
        int ready[2];
        if (pipe(ready) != 0) {
            qFatal("no pipe");
        }
        const QByteArray name = QFile::encodeName(path);
        holder_ = fork();
        if (holder_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            const int file = open(name.constData(), O_RDWR);
            const char isHeld = file >= 0 && take(file, kind) ? 'y' : 'n';
            (void)!write(ready[1], &isHeld, 1);
            for (;;) {
                pause();
            }
        }
        char isHeld = 'n';
        if (read(ready[0], &isHeld, 1) != 1 || isHeld != 'y') {
            qFatal("cannot lock %s", name.constData());
        }
        close(ready[0]);
        close(ready[1]);
    }
    ~HeldLock() {
        kill(holder_, SIGKILL);
        waitpid(holder_, nullptr, 0);
    }
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

private:
    static bool take(int file, LockKind kind) {
        if (kind == LockKind::whole) {
            return flock(file, LOCK_SH) == 0;
        }
        struct flock lock {};
        lock.l_type = kind == LockKind::sharedRecord ? F_RDLCK : F_WRLCK;
        lock.l_whence = SEEK_SET;
        lock.l_len = 1;
        return fcntl(file, F_SETLK, &lock) == 0;
    }

    pid_t holder_ = -1;
};

} // namespace qvnd::test
