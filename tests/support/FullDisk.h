#pragma once

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <memory>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace qvnd::test {

// A disk that is full from some moment on: of the calls that this thread makes to the system, those
// fail that need more room than the disk has given already, whatever they are about. What is only
// written over, renamed or taken away succeeds, as on a real one. It cannot be lifted again, so it
// stands in a process of its own, see RestrictedProcess::alone.
class FullDisk {
public:
    // Nothing fails yet.
    FullDisk() {
        std::thread([disk = disk_] { serve(*disk); }).detach();
        disk_->listener = listen();
        disk_->isReady = true;
        disk_->isReady.notify_one();
    }
    ~FullDisk() { empty(); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

    // False where the machine has no such filter.
    bool isOffered() const { return disk_->listener >= 0; }
    // The call of that number from now on, counted from 1, and all that follow fail.
    void fillFrom(int call) {
        disk_->calls = 0;
        disk_->from = call;
    }
    // Gives room again. The calls since fillFrom that needed room.
    int empty() {
        disk_->from = INT_MAX;
        return disk_->calls;
    }

private:
    // What the thread that answers needs; it lives as long as the process.
    struct Disk {
        std::atomic<int> calls = 0;
        std::atomic<int> from = INT_MAX;
        std::atomic<bool> isReady = false;
        int listener = -1;
    };

    static std::vector<int> calls() {
        return {
#ifdef SYS_open
            SYS_open,     SYS_creat,   SYS_mkdir,     SYS_link,      SYS_symlink,
#endif
            SYS_openat,   SYS_mkdirat, SYS_linkat,    SYS_symlinkat, SYS_write,
            SYS_pwrite64, SYS_writev,  SYS_ftruncate, SYS_fallocate, SYS_copy_file_range,
            SYS_sendfile,
        };
    }
    // From now on those calls of this thread wait for an answer; -1 where that is not offered.
    static int listen() {
        std::vector<sock_filter> steps{
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
        for (const int call : calls()) {
            steps.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1));
            steps.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
        }
        steps.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
        const sock_fprog filter{static_cast<unsigned short>(steps.size()), steps.data()};
        if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
            return -1;
        }
        return static_cast<int>(syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER,
                                        SECCOMP_FILTER_FLAG_NEW_LISTENER, &filter));
    }

    // In a thread that makes no such call itself and takes no memory.
    static void serve(Disk& disk) {
        disk.isReady.wait(false);
        for (;;) {
            seccomp_notif asked{};
            if (ioctl(disk.listener, SECCOMP_IOCTL_NOTIF_RECV, &asked) != 0) {
                if (errno == EINTR) {
                    continue;
                }
                return;
            }
            seccomp_notif_resp answer{};
            answer.id = asked.id;
            if (needsRoom(asked.data) && ++disk.calls >= disk.from) {
                answer.error = -ENOSPC;
            } else {
                answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
            }
            ioctl(disk.listener, SECCOMP_IOCTL_NOTIF_SEND, &answer);
        }
    }

    static bool needsRoom(const seccomp_data& call) {
        const auto& args = call.args;
        switch (call.nr) {
#ifdef SYS_open
        case SYS_open:
            return (args[1] & O_CREAT) != 0 && isMissing(AT_FDCWD, args[0]);
        case SYS_creat:
            return isMissing(AT_FDCWD, args[0]);
#endif
        case SYS_openat:
            return (args[2] & O_CREAT) != 0 && isMissing(static_cast<int>(args[0]), args[1]);
        case SYS_write:
            return growsTo(args[0], placeOf(args[0]) + args[2]);
        case SYS_pwrite64:
            return growsTo(args[0], args[3] + args[2]);
        case SYS_ftruncate:
            return growsTo(args[0], args[1]);
        case SYS_writev:
        case SYS_sendfile:
        case SYS_fallocate:
            return growsTo(args[0], UINT64_MAX);
        case SYS_copy_file_range:
            return growsTo(args[2], UINT64_MAX);
        default:
            return true;
        }
    }
    static bool isMissing(int folder, std::uint64_t path) {
        // The path is in the memory that both threads share.
        return faccessat(folder, reinterpret_cast<const char*>(path), F_OK, 0) != 0; // NOLINT
    }
    static std::uint64_t placeOf(std::uint64_t file) {
        const int handle = static_cast<int>(file);
        const bool atEnd = (fcntl(handle, F_GETFL) & O_APPEND) != 0;
        return atEnd ? sizeOf(handle) : static_cast<std::uint64_t>(lseek(handle, 0, SEEK_CUR));
    }
    static std::uint64_t sizeOf(int file) {
        struct stat status {};
        return fstat(file, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
    }
    static bool growsTo(std::uint64_t file, std::uint64_t size) {
        struct stat status {};
        const int handle = static_cast<int>(file);
        return fstat(handle, &status) == 0 && S_ISREG(status.st_mode) &&
               size > static_cast<std::uint64_t>(status.st_size);
    }

    std::shared_ptr<Disk> disk_ = std::make_shared<Disk>();
};

} // namespace qvnd::test
