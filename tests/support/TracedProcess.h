#pragma once

#ifdef __linux__

#include "support/ScratchFolder.h"

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <set>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

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
        return watch(work, [deadly](int change) { return change != deadly; });
    }
    // Asks before each change whether the work may go on, which stands still meanwhile: what it has
    // left on the disk is what a process that is killed then leaves. It is killed where it may not.
    static int watch(const Work& work, const std::function<bool(int change)>& mayGoOn) {
        const ScratchFolder temporary; // what the process leaves there goes with it
        const pid_t process = fork();
        if (process == 0) {
            setenv("TMPDIR", temporary.path().c_str(), 1);
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0 || !stopAtChanges()) {
                _exit(cannotTrace);
            }
            raise(SIGSTOP);
            [&work]() noexcept { work(); }(); // an error must not lead on into the other tests
            _exit(0);
        }
        return TracedProcess(process).follow(mayGoOn);
    }

private:
    static constexpr int cannotTrace = 113;

    explicit TracedProcess(pid_t process) : process_(process), traced_{process} {}

    int follow(const std::function<bool(int)>& mayGoOn) {
        int status = 0;
        waitpid(process_, &status, 0);
        if (WIFEXITED(status)) {
            return -1;
        }
        // The processes and threads that it starts stop as well, and have to be told to go on.
        ptrace(PTRACE_SETOPTIONS, process_, nullptr,
               PTRACE_O_TRACESECCOMP | PTRACE_O_EXITKILL | PTRACE_O_TRACEFORK |
                   PTRACE_O_TRACEVFORK | PTRACE_O_TRACECLONE | PTRACE_O_TRACEEXEC);
        int changes = 0;
        for (pid_t stopped = process_; traced_.contains(process_);) {
            if (stopped == process_ && isAboutToChange(status)) {
                if (!mayGoOn(changes + 1)) {
                    break;
                }
                ++changes;
            }
            goOn(stopped, status);
            stopped = next(status);
        }
        endAll();
        return changes;
    }

    // The next of them that stops or ends; -1 when there is none.
    pid_t next(int& status) {
        const pid_t stopped = waitpid(-1, &status, __WALL);
        if (stopped < 0) {
            traced_.clear();
        } else if (WIFSTOPPED(status)) {
            traced_.insert(stopped);
        } else {
            traced_.erase(stopped);
        }
        return stopped;
    }
    void goOn(pid_t stopped, int status) {
        if (stopped < 0 || !WIFSTOPPED(status)) {
            return;
        }
        const int event = status >> 16;
        if (event == PTRACE_EVENT_FORK || event == PTRACE_EVENT_VFORK ||
            event == PTRACE_EVENT_CLONE) {
            unsigned long started = 0;
            if (ptrace(PTRACE_GETEVENTMSG, stopped, nullptr, &started) == 0 && started > 0) {
                traced_.insert(static_cast<pid_t>(started));
            }
        }
        // What stops for this trace alone must not get a signal of it.
        const bool isOurs = event != 0 || WSTOPSIG(status) == SIGSTOP;
        ptrace(PTRACE_CONT, stopped, nullptr, isOurs ? 0 : WSTOPSIG(status));
    }
    // The first thread of a process ends behind its others, each of which has to be waited for.
    void endAll() {
        for (const pid_t each : traced_) {
            kill(each, SIGKILL);
        }
        for (int status = 0; !traced_.empty();) {
            next(status);
        }
    }
    static bool isAboutToChange(int status) {
        return status >> 8 == (SIGTRAP | (PTRACE_EVENT_SECCOMP << 8));
    }

    // From now on this process stops before each call that changes files. Not every machine has the
    // older of these calls.
    static bool stopAtChanges() {
        static constexpr int changing[] = {
#ifdef SYS_unlink
            SYS_unlink,    SYS_rename,   SYS_mkdir,     SYS_rmdir,     SYS_link,
#endif
#ifdef SYS_renameat
            SYS_renameat,
#endif
            SYS_renameat2, SYS_unlinkat, SYS_linkat,    SYS_mkdirat,   SYS_write,
            SYS_pwrite64,  SYS_writev,   SYS_ftruncate, SYS_fallocate, SYS_copy_file_range,
            SYS_sendfile,
        };
        constexpr auto call = offsetof(seccomp_data, nr);
        constexpr auto flags = offsetof(seccomp_data, args) + 2 * sizeof(std::uint64_t);
        std::vector<sock_filter> steps{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, call)};
        for (const int each : changing) {
            steps.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(each), 0, 1));
            steps.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRACE));
        }
        steps.insert(steps.end(), {BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 3),
                                   BPF_STMT(BPF_LD | BPF_W | BPF_ABS, flags),
                                   BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, O_CREAT | O_TRUNC, 0, 1),
                                   BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRACE),
                                   BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)});
        const sock_fprog filter{static_cast<unsigned short>(steps.size()), steps.data()};
        return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
               prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
    }

    pid_t process_;
    std::set<pid_t> traced_; // with the processes and threads that it has started
};

} // namespace qvnd::test

#endif
