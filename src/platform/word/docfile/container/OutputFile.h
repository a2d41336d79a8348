#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

namespace qvnd::word {

// A file that is written at given places. Errors are RunTimeError with a description that names
// the file: 61 disk full, 70 permission denied, 76 path not found, 75 anything else.
class OutputFile {
public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    virtual ~OutputFile() = default;

    // Writes some of `bytes` at `offset`, growing the file as needed; answers how many, at least
    // one of a span that is not empty. Bytes within one block of 512 are written together.
    virtual std::size_t writeSome(std::uint64_t offset, ByteView bytes) = 0;
    virtual std::uint64_t size() = 0;
    virtual void truncate(std::uint64_t size) = 0;
    // Waits until everything written is on the device.
    virtual void sync() = 0;
    // Later calls are an error; closing twice is none.
    virtual void close() = 0;

    // Writes all of `bytes`.
    void writeAt(std::uint64_t offset, ByteView bytes);
};

// What tells whether a file is still the one that was written.
struct FileStamp {
    std::uint64_t identity = 0; // of the file behind the name, where the system has one
    std::uint64_t size = 0;
    std::filesystem::file_time_type time;
    bool operator==(const FileStamp&) const = default;
};

// The folder operations that writing needs. Same errors as OutputFile.
class OutputFolder {
public:
    OutputFolder() = default;
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;
    virtual ~OutputFolder() = default;

    // A new, empty file beside `target` under a name of its own, which `*path` becomes.
    virtual std::unique_ptr<OutputFile> createBeside(const std::filesystem::path& target,
                                                     std::filesystem::path* path) = 0;
    virtual std::unique_ptr<OutputFile> openForUpdate(const std::filesystem::path& path) = 0;
    // Puts `from` in place of `to`, at once and with the permissions that `to` had. Refuses to
    // replace a folder (75) or a file that is not to be written (70).
    virtual void replace(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    // No fault when there is no such file.
    virtual void remove(const std::filesystem::path& path) noexcept = 0;
    // Nothing when there is no such file.
    virtual std::optional<FileStamp> stamp(const std::filesystem::path& path) = 0;
};

// The one on the real file system.
std::shared_ptr<OutputFolder> realOutputFolder();

} // namespace qvnd::word
