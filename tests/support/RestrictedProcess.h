#pragma once

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace qvnd::test {

// Runs a piece of work in a process of its own in which calls to the system fail as they do on a
// full disk, on a damaged one, and for a user without rights. What the work answers comes back:
// the number of its error, 0 for none. Nothing comes back where the machine offers no such limit.
class RestrictedProcess {
public:
    using Work = std::function<std::optional<long>()>;
    using Answer = std::optional<long>;

    // Without a limit; the work may set one of its own, such as FullDisk.
    static Answer alone(const Work& work) {
        return run([] { return true; }, work);
    }

    // No file grows beyond that many bytes.
    static Answer withFilesUpTo(std::size_t bytes, const Work& work) {
        return run(
            [bytes] {
                const rlimit limit{bytes, bytes};
                signal(SIGXFSZ, SIG_IGN);
                return setrlimit(RLIMIT_FSIZE, &limit) == 0;
            },
            work);
    }

    // Each call that asks for that many bytes or more of a file is told of a damaged disk.
    static Answer withReadsBelow(std::size_t bytes, const Work& work) {
        return run([bytes] { return failReadsFrom(bytes); }, work);
    }

    // With the rights of a user to whom `owned` are given, and no others; the first is a folder
    // that such a user can reach.
    static Answer withoutPrivileges(const std::vector<std::string>& owned, const Work& work) {
        constexpr uid_t nobody = 65534;
        if (geteuid() == 0) {
            for (const std::string& path : owned) {
                if (chown(path.c_str(), nobody, nobody) != 0) {
                    return std::nullopt;
                }
            }
        }
        return run(
            [&] {
                return (geteuid() != 0 || setuid(nobody) == 0) &&
                       ::access(owned.front().c_str(), X_OK) == 0;
            },
            work);
    }

private:
    static bool failReadsFrom(std::size_t bytes) {
        constexpr auto call = offsetof(seccomp_data, nr);
        constexpr auto count = offsetof(seccomp_data, args) + 2 * sizeof(std::uint64_t);
        sock_filter steps[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, call),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_read, 0, 2),
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, count),
            BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, static_cast<std::uint32_t>(bytes), 1, 0),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EIO),
        };
        const sock_fprog filter{sizeof steps / sizeof *steps, steps};
        return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
               prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
    }

    static Answer run(const std::function<bool()>& restrict, const Work& work) {
        int ends[2];
        if (pipe(ends) != 0) {
            throw std::runtime_error("no pipe");
        }
        const pid_t process = fork();
        if (process == 0) {
            if (restrict()) {
                const long number = work().value_or(0);
                _exit(write(ends[1], &number, sizeof number) == sizeof number ? 0 : 1);
            }
            _exit(0);
        }
        close(ends[1]);
        long number = 0;
        const bool answered = read(ends[0], &number, sizeof number) == sizeof number;
        close(ends[0]);
        int status = 0;
        waitpid(process, &status, 0);
        if (status != 0) {
            throw std::runtime_error("the work has not come to its end");
        }
        return answered ? Answer(number) : std::nullopt;
    }
};

} // namespace qvnd::test
