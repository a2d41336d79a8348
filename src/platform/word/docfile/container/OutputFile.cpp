#include "platform/word/docfile/container/OutputFile.h"

#include "platform/word/docfile/container/FileErrors.h"
#include "platform/word/docfile/container/WriteObserver.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <io.h>
#include <process.h>
#else
#include <unistd.h>
#endif

namespace qvnd::word {

namespace {

namespace fs = std::filesystem;

std::error_code lastError() { return {errno, std::generic_category()}; }

#ifdef _WIN32

int openFile(const fs::path& path, bool create) {
    const int mode = _O_RDWR | _O_BINARY | _O_NOINHERIT | (create ? _O_CREAT | _O_EXCL : 0);
    return _wopen(path.c_str(), mode, _S_IREAD | _S_IWRITE);
}
int closeFile(int file) { return _close(file); }
int syncFile(int file) { return _commit(file); }
int resizeFile(int file, std::uint64_t size) {
    errno = _chsize_s(file, static_cast<long long>(size));
    return errno == 0 ? 0 : -1;
}
long long fileSize(int file) { return _filelengthi64(file); }
long long writeFile(int file, std::uint64_t offset, ByteView bytes) {
    if (_lseeki64(file, static_cast<long long>(offset), SEEK_SET) < 0) {
        return -1;
    }
    return _write(file, bytes.data(), static_cast<unsigned>(bytes.size()));
}
int processNumber() { return _getpid(); }
std::uint64_t fileIdentity(const fs::path&) { return 0; }

#else

int openFile(const fs::path& path, bool create) {
    const int mode = O_RDWR | O_CLOEXEC | (create ? O_CREAT | O_EXCL : 0);
    return ::open(path.c_str(), mode, 0666);
}
int closeFile(int file) { return ::close(file); }
int syncFile(int file) { return ::fsync(file); }
int resizeFile(int file, std::uint64_t size) { return ::ftruncate(file, static_cast<off_t>(size)); }
long long fileSize(int file) {
    struct stat status {};
    return ::fstat(file, &status) == 0 ? static_cast<long long>(status.st_size) : -1;
}
long long writeFile(int file, std::uint64_t offset, ByteView bytes) {
    return ::pwrite(file, bytes.data(), bytes.size(), static_cast<off_t>(offset));
}
int processNumber() { return ::getpid(); }
std::uint64_t fileIdentity(const fs::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

#endif

class RealOutputFile final : public OutputFile {
public:
    RealOutputFile(int file, fs::path path) : file_(file), path_(std::move(path)) {}
    ~RealOutputFile() override {
        if (file_ >= 0) {
            closeFile(file_);
        }
    }

    std::size_t writeSome(std::uint64_t offset, ByteView bytes) override {
        constexpr std::size_t most = std::size_t{1} << 28; // every system takes that much
        long long written = 0;
        do {
            written = writeFile(file_, offset, bytes.first(std::min(bytes.size(), most)));
        } while (written < 0 && errno == EINTR);
        if (written < 0) {
            throwFileError(lastError(), path_);
        }
        return static_cast<std::size_t>(written);
    }

    std::uint64_t size() override {
        const long long bytes = fileSize(file_);
        check(bytes < 0 ? -1 : 0);
        return static_cast<std::uint64_t>(bytes);
    }
    void truncate(std::uint64_t size) override { check(resizeFile(file_, size)); }
    void sync() override { check(syncFile(file_)); }
    void close() override {
        if (file_ >= 0) {
            check(closeFile(std::exchange(file_, -1)));
        }
    }

private:
    void check(int result) const {
        if (result != 0) {
            throwFileError(lastError(), path_);
        }
    }

    int file_;
    fs::path path_;
};

// Its errors name the file that the caller wants, not one beside it that nobody knows.
std::unique_ptr<OutputFile> opened(int file, const fs::path& named) {
    if (file < 0) {
        throwFileError(lastError(), named);
    }
    return std::make_unique<RealOutputFile>(file, named);
}

// Where a link leads: the document is replaced, not the link.
fs::path behindLinks(const fs::path& path) {
    std::error_code failed;
    const bool link = fs::is_symlink(fs::symlink_status(path, failed));
    const fs::path real = link ? fs::canonical(path, failed) : path;
    return failed ? path : real;
}

WriteObserver* observer = nullptr;

class RealOutputFolder final : public OutputFolder {
public:
    std::unique_ptr<OutputFile> createBeside(const fs::path& target, fs::path* path) override {
        const fs::path real = behindLinks(target);
        const fs::path folder = real.parent_path();
        // Told already here, so that what a killed process leaves half is known as the command's.
        if (observer != nullptr) {
            observer->beforeReplacing(real);
        }
        for (;;) {
            // Short and plain, as the target's own name may be as long as names can be.
            *path = folder / ("~doc" + std::to_string(processNumber()) + "-" +
                              std::to_string(++number_) + ".tmp");
            const int file = openFile(*path, true);
            if (file >= 0 || errno != EEXIST) {
                return opened(file, target);
            }
        }
    }

    std::unique_ptr<OutputFile> openForUpdate(const fs::path& path) override {
        if (observer != nullptr) {
            observer->beforeEditing(behindLinks(path));
        }
        return opened(openFile(path, false), path);
    }

    void replace(const fs::path& from, const fs::path& to) override {
        const fs::path real = behindLinks(to);
        std::error_code failed;
        const fs::file_status status = fs::status(real, failed);
        if (fs::exists(status)) {
            requireReplaceable(real, status);
            fs::permissions(from, status.permissions(), failed);
        }
        if (observer != nullptr) {
            observer->beforeReplacing(real);
        }
        fs::rename(from, real, failed);
        if (failed) {
            throwFileError(failed, to);
        }
    }

    void remove(const fs::path& path) noexcept override {
        std::error_code ignored;
        fs::remove(path, ignored);
    }

    std::optional<FileStamp> stamp(const fs::path& path) override {
        std::error_code failed;
        FileStamp result{fileIdentity(path), fs::file_size(path, failed), {}};
        if (!failed) {
            result.time = fs::last_write_time(path, failed);
        }
        return failed ? std::nullopt : std::optional(result);
    }

private:
    // A file that may not be written could still be replaced where only the folder's permissions
    // count; that would go against the wish of whoever protected it.
    static void requireReplaceable(const fs::path& path, const fs::file_status& status) {
        constexpr auto anyWrite =
            fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
        if (fs::is_directory(status)) {
            throwFileError(std::make_error_code(std::errc::is_a_directory), path);
        }
        if ((status.permissions() & anyWrite) == fs::perms::none) {
            throwFileError(std::make_error_code(std::errc::permission_denied), path);
        }
        opened(openFile(path, false), path)->close();
    }

    unsigned number_ = 0;
};

} // namespace

void OutputFile::writeAt(std::uint64_t offset, ByteView bytes) {
    while (!bytes.empty()) {
        const std::size_t written = writeSome(offset, bytes);
        offset += written;
        bytes = bytes.subspan(written);
    }
}

void observeWrites(WriteObserver* told) { observer = told; }

std::shared_ptr<OutputFolder> realOutputFolder() { return std::make_shared<RealOutputFolder>(); }

} // namespace qvnd::word
