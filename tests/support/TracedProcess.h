#pragma once

#ifdef __linux__

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qvnd::test {

// A piece of work in a process of its own, which is killed without warning just before one of its
// calls to the system that change files: so every state that a killed process can leave behind is
// reached on purpose, and reached again at will.
class TracedProcess {
public:
    using Work = std::function<void()>;

    // Runs the work until it is about to make change number `deadly`, counted from 1; 0 lets it
    // run to its end. Returns how many changes were made; -1 where processes cannot be traced.
    static int run(const Work& work, int deadly) {
        const pid_t process = fork();
        if (process == 0) {
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
                _exit(cannotTrace);
            }
            raise(SIGSTOP);
            work();
            _exit(0);
        }
        return follow(process, deadly);
    }

private:
    static constexpr int cannotTrace = 113;

    static int follow(pid_t process, int deadly) {
        int status = 0;
        int changes = 0;
        waitpid(process, &status, 0);
        if (WIFEXITED(status)) {
            return -1;
        }
        ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
        for (int signal = 0;;) {
            ptrace(PTRACE_SYSCALL, process, nullptr, signal);
            waitpid(process, &status, 0);
            if (WIFEXITED(status) || WIFSIGNALED(status)) {
                return changes;
            }
            signal = WSTOPSIG(status);
            if (signal == (SIGTRAP | 0x80)) {
                signal = 0;
                if (isAboutToChange(process) && ++changes == deadly) {
                    kill(process, SIGKILL);
                    waitpid(process, &status, 0);
                    return changes - 1;
                }
            }
        }
    }

    // Not every machine has the older of these calls.
    static bool changesFiles(unsigned long call) {
        switch (call) {
#ifdef SYS_unlink
        case SYS_unlink:
        case SYS_rename:
        case SYS_mkdir:
        case SYS_rmdir:
        case SYS_link:
#endif
#ifdef SYS_renameat
        case SYS_renameat:
#endif
        case SYS_renameat2:
        case SYS_unlinkat:
        case SYS_linkat:
        case SYS_mkdirat:
        case SYS_write:
        case SYS_pwrite64:
        case SYS_writev:
        case SYS_ftruncate:
        case SYS_fallocate:
        case SYS_copy_file_range:
        case SYS_sendfile:
            return true;
        default:
            return false;
        }
    }
    static bool isAboutToChange(pid_t process) {
        __ptrace_syscall_info info{};
        ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof info, &info);
        if (info.op != PTRACE_SYSCALL_INFO_ENTRY) {
            return false;
        }
        if (info.entry.nr == SYS_openat) {
            return (info.entry.args[2] & (O_CREAT | O_TRUNC)) != 0;
        }
        return changesFiles(info.entry.nr);
    }
};

} // namespace qvnd::test

#endif
