#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/word/docfile/container/Bytes.h"

namespace qvnd::test {

// A new folder that goes with the object, for rooms that do without Qt.
class ScratchFolder {
public:
    ScratchFolder() {
        static std::atomic<int> count = 0;
        const auto time = std::chrono::steady_clock::now().time_since_epoch().count();
        path_ = std::filesystem::temp_directory_path() /
                ("qvnd-" + std::to_string(time) + "-" + std::to_string(++count));
        std::filesystem::create_directories(path_);
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path write(const std::string& name, word::ByteView bytes) const {
        std::ofstream file(path_ / name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};

} // namespace qvnd::test
