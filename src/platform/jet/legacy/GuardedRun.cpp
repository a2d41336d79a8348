#include "platform/jet/legacy/GuardedRun.h"

#include <QtGlobal>

#include <new>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace qvnd::jet::legacy {

#ifdef Q_OS_UNIX

namespace {

using Clock = std::chrono::steady_clock;

constexpr rlim_t memoryLimit = rlim_t{2} << 30;
// Behind the result, so that a cut one is not taken for whole.
const QByteArray endMark = "whole";
// What the child ends with when it lacked memory or a place for complaints.
constexpr int exitHindered = 2;

void limitTo(int resource, rlim_t most) {
    const rlimit limit = {most, most};
    setrlimit(resource, &limit);
}

void limitChild(std::chrono::milliseconds limit) {
    limitTo(RLIMIT_CORE, 0);
    limitTo(RLIMIT_CPU, static_cast<rlim_t>(limit.count() / 1000 + 1));
#ifndef __SANITIZE_ADDRESS__ // which reserves more address space than there is memory
    limitTo(RLIMIT_AS, memoryLimit);
#endif
    for (const int number : {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL, SIGPIPE, SIGTERM}) {
        std::signal(number, SIG_DFL);
    }
}

// Standard error goes to a file that can be asked whether anything was written.
std::FILE* silence() {
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDOUT_FILENO);
    std::FILE* complaints = std::tmpfile();
    dup2(complaints != nullptr ? fileno(complaints) : nowhere, STDERR_FILENO);
    return complaints;
}

bool hasComplaints(std::FILE* complaints) {
    std::fflush(stderr);
    return lseek(fileno(complaints), 0, SEEK_END) > 0;
}

bool writeAll(int descriptor, const QByteArray& bytes) {
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count = write(descriptor, bytes.constData() + written,
                                    static_cast<std::size_t>(bytes.size() - written));
        if (count < 0 && errno != EINTR) {
            return false;
        }
        written += count > 0 ? count : 0;
    }
    return true;
}

int exitOf(const std::function<QByteArray()>& work, int descriptor, std::FILE* complaints) {
    try {
        const QByteArray result = work();
        const bool done = !hasComplaints(complaints) && writeAll(descriptor, result + endMark);
        return done ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::bad_alloc&) {
        return exitHindered;
    } catch (...) { // the process ends here, whatever it was
        return EXIT_FAILURE;
    }
}

[[noreturn]] void runChild(int descriptor, const std::function<QByteArray()>& work,
                           std::chrono::milliseconds limit) {
    limitChild(limit);
    std::FILE* complaints = silence();
    _exit(complaints == nullptr ? exitHindered : exitOf(work, descriptor, complaints));
}

// What comes until the other end closes; nothing when it has not by then.
std::optional<QByteArray> readUntil(int descriptor, Clock::time_point deadline) {
    QByteArray bytes;
    char block[1 << 16];
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd wait = {descriptor, POLLIN, 0};
        const int ready = left.count() > 0 ? poll(&wait, 1, static_cast<int>(left.count())) : 0;
        if (ready == 0) {
            return std::nullopt;
        }
        const ssize_t count = ready > 0 ? read(descriptor, block, sizeof block) : -1;
        if (count == 0) {
            return bytes;
        }
        if (count < 0 && errno != EINTR) {
            return std::nullopt;
        }
        bytes.append(block, count > 0 ? count : 0);
    }
}

// The signals by which a process ends through a fault of its own.
bool isCrash(int signal) {
    for (const int crash : {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL, SIGSYS}) {
        if (signal == crash) {
            return true;
        }
    }
    return false;
}

GuardedEnd endOf(pid_t child) {
    int status = 0;
    pid_t ended = -1;
    do {
        ended = waitpid(child, &status, 0);
    } while (ended < 0 && errno == EINTR);
    if (ended == child && WIFEXITED(status) && WEXITSTATUS(status) != exitHindered) {
        return WEXITSTATUS(status) == EXIT_SUCCESS ? GuardedEnd::whole : GuardedEnd::failed;
    }
    const bool hasCrashed = ended == child && WIFSIGNALED(status) && isCrash(WTERMSIG(status));
    return hasCrashed ? GuardedEnd::failed : GuardedEnd::hindered;
}

GuardedResult resultOf(pid_t child, std::optional<QByteArray> bytes) {
    const GuardedEnd end = endOf(child);
    if (!bytes) {
        return {GuardedEnd::hindered};
    }
    if (end != GuardedEnd::whole || !bytes->endsWith(endMark)) {
        return {end == GuardedEnd::hindered ? GuardedEnd::hindered : GuardedEnd::failed};
    }
    bytes->chop(endMark.size());
    return {GuardedEnd::whole, *bytes};
}

} // namespace

GuardedResult runGuarded(const std::function<QByteArray()>& work, std::chrono::milliseconds limit) {
    int ends[2];
    if (pipe(ends) != 0) {
        return {};
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        runChild(ends[1], work, limit);
    }
    close(ends[1]);
    auto bytes = child > 0 ? readUntil(ends[0], Clock::now() + limit) : std::nullopt;
    close(ends[0]);
    if (child < 0) {
        return {};
    }
    if (!bytes) {
        kill(child, SIGKILL);
    }
    return resultOf(child, std::move(bytes));
}

#else

GuardedResult runGuarded(const std::function<QByteArray()>& work, std::chrono::milliseconds) {
    try {
        return {GuardedEnd::whole, work()};
    } catch (const std::bad_alloc&) {
        return {GuardedEnd::hindered};
    } catch (const std::exception&) {
        return {GuardedEnd::failed};
    }
}

#endif

} // namespace qvnd::jet::legacy
