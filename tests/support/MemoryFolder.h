#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/container/OutputFile.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace qvnd::test {

// What goes wrong with the files of a MemoryFolder, and what they were asked.
struct FileTrouble {
    std::optional<std::size_t> failingWrite; // counted from 0 over all files
    std::optional<std::size_t> capacity;     // bytes that all files together may have
    bool shortWrites = false;                // at most one block a call
    bool failingSync = false;

    std::size_t writes = 0;
    std::size_t bytesWritten = 0;
    std::size_t syncs = 0;
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
            if (asked.failingWrite == asked.writes++) {
                throw RunTimeError(error::pathAccess, u"写入失败");
            }
            if (asked.shortWrites) {
                bytes = bytes.first(std::min<std::size_t>(bytes.size(), 512));
            }
            const auto at = static_cast<std::size_t>(offset);
            const std::size_t end = std::max(stored_->bytes.size(), at + bytes.size());
            const std::size_t others = folder_.total() - stored_->bytes.size();
            if (asked.capacity && others + end > *asked.capacity) {
                throw RunTimeError(error::diskFull, u"磁盘已满");
            }
            stored_->bytes.resize(end);
            std::copy(bytes.begin(), bytes.end(), stored_->bytes.begin() + static_cast<long>(at));
            ++stored_->version;
            asked.bytesWritten += bytes.size();
            if (asked.afterWrite) {
                asked.afterWrite();
            }
            return bytes.size();
        }

        std::uint64_t size() override { return stored_->bytes.size(); }
        void truncate(std::uint64_t size) override {
            stored_->bytes.resize(static_cast<std::size_t>(size));
            ++stored_->version;
        }
        void sync() override {
            ++folder_.trouble.syncs;
            if (folder_.trouble.failingSync) {
                throw RunTimeError(error::diskFull, u"磁盘已满");
            }
        }
        void close() override {}

    private:
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
