#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/container/OutputFile.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace qvnd::test {

// What a file of a MemoryFolder was asked to do.
enum class FileCall { write, writeHead, sync, truncate, close, replace };

// What goes wrong with the files of a MemoryFolder, and what they were asked. What fails counts
// from 0 over all files. As on a disk, a write that fails leaves the blocks that came before.
struct FileTrouble {
    std::optional<std::size_t> failingWrite;
    std::optional<std::size_t> failingSync;
    std::optional<std::size_t> capacity; // bytes that all files together may have
    bool shortWrites = false;            // at most one block a call
    bool failingClose = false;           // the file is closed all the same
    bool failingReplace = false;
    bool failingTruncate = false;

    std::size_t writes = 0;
    std::size_t bytesWritten = 0;
    std::size_t syncs = 0;
    std::vector<FileCall> calls; // in their order
    std::function<void()> afterWrite;
};

// Files in memory that fail on demand.
class MemoryFolder final : public word::OutputFolder {
public:
    struct Stored {
        word::Bytes bytes;
        std::uint64_t version = 0; // raised by every change
        std::uint64_t identity = 0;
    };
    using Path = std::filesystem::path;

    FileTrouble trouble;
    std::map<Path, std::shared_ptr<Stored>> files;

    std::unique_ptr<word::OutputFile> createBeside(const Path& target, Path* path) override {
        *path = target.parent_path() / ("temporary" + std::to_string(++number_));
        files[*path] = std::make_shared<Stored>();
        files[*path]->identity = number_;
        return std::make_unique<File>(*this, files[*path]);
    }

    std::unique_ptr<word::OutputFile> openForUpdate(const Path& path) override {
        if (files.count(path) == 0) {
            throw RunTimeError(error::pathNotFound, u"找不到文件");
        }
        return std::make_unique<File>(*this, files[path]);
    }

    void replace(const Path& from, const Path& to) override {
        trouble.calls.push_back(FileCall::replace);
        if (trouble.failingReplace) {
            throw RunTimeError(error::permissionDenied, u"没有权限");
        }
        files[to] = std::exchange(files[from], nullptr);
        files.erase(from);
    }

    void remove(const Path& path) noexcept override { files.erase(path); }

    std::optional<word::FileStamp> stamp(const Path& path) override {
        const auto found = files.find(path);
        if (found == files.end()) {
            return std::nullopt;
        }
        const Stored& file = *found->second;
        const auto time = std::filesystem::file_time_type(
            std::filesystem::file_time_type::duration(static_cast<long>(file.version)));
        return word::FileStamp{file.identity, file.bytes.size(), time};
    }

    const word::Bytes& bytes(const Path& path) const { return files.at(path)->bytes; }

private:
    class File final : public word::OutputFile {
    public:
        File(MemoryFolder& folder, std::shared_ptr<Stored> stored)
            : folder_(folder), stored_(std::move(stored)) {}

        std::size_t writeSome(std::uint64_t offset, word::ByteView bytes) override {
            FileTrouble& asked = folder_.trouble;
            const bool fails = asked.failingWrite == asked.writes++;
            asked.calls.push_back(offset == 0 ? FileCall::writeHead : FileCall::write);
            if (asked.shortWrites) {
                bytes = bytes.first(std::min(bytes.size(), block));
            }
            const auto at = static_cast<std::size_t>(offset);
            if (fails) {
                put(at, bytes.first(bytes.size() / 2 / block * block));
                throw RunTimeError(error::pathAccess, u"写入失败");
            }
            const std::size_t room = roomFrom(at);
            if (room < bytes.size()) {
                bytes = bytes.first(room / block * block);
                if (bytes.empty()) {
                    throw RunTimeError(error::diskFull, u"磁盘已满");
                }
            }
            put(at, bytes);
            if (asked.afterWrite) {
                asked.afterWrite();
            }
            return bytes.size();
        }

        std::uint64_t size() override { return stored_->bytes.size(); }
        void truncate(std::uint64_t size) override {
            folder_.trouble.calls.push_back(FileCall::truncate);
            if (folder_.trouble.failingTruncate) {
                throw RunTimeError(error::pathAccess, u"不能截短");
            }
            stored_->bytes.resize(static_cast<std::size_t>(size));
            ++stored_->version;
        }
        void sync() override {
            FileTrouble& asked = folder_.trouble;
            asked.calls.push_back(FileCall::sync);
            if (asked.failingSync == asked.syncs++) {
                throw RunTimeError(error::diskFull, u"磁盘已满");
            }
        }
        void close() override {
            folder_.trouble.calls.push_back(FileCall::close);
            if (folder_.trouble.failingClose) {
                throw RunTimeError(error::diskFull, u"磁盘已满");
            }
        }

    private:
        static constexpr std::size_t block = 512;

        void put(std::size_t at, word::ByteView bytes) {
            stored_->bytes.resize(std::max(stored_->bytes.size(), at + bytes.size()));
            std::copy(bytes.begin(), bytes.end(), stored_->bytes.begin() + static_cast<long>(at));
            ++stored_->version;
            folder_.trouble.bytesWritten += bytes.size();
        }
        // How many bytes the disk takes from there on.
        std::size_t roomFrom(std::size_t at) const {
            if (!folder_.trouble.capacity) {
                return static_cast<std::size_t>(-1);
            }
            const std::size_t size = stored_->bytes.size();
            const std::size_t others = folder_.total() - size;
            const std::size_t mine =
                *folder_.trouble.capacity - std::min(*folder_.trouble.capacity, others);
            return std::max({mine, size, at}) - at;
        }

        MemoryFolder& folder_;
        std::shared_ptr<Stored> stored_;
    };

    std::size_t total() const {
        std::size_t bytes = 0;
        for (const auto& [path, file] : files) {
            bytes += file->bytes.size();
        }
        return bytes;
    }

    unsigned number_ = 0;
};

} // namespace qvnd::test
