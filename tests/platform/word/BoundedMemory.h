#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/container/OutputFile.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

// What a file may ask of memory: no more than twenty times its size and 50 MB.
namespace qvnd::test {

inline constexpr std::size_t megabyte = std::size_t{1} << 20;

std::size_t mostFor(const word::Bytes& file);

// Where what is written takes no memory, as on a disk.
class FilesElsewhere final : public word::OutputFolder {
public:
    std::unique_ptr<word::OutputFile> createBeside(const std::filesystem::path& target,
                                                   std::filesystem::path* path) override;
    std::unique_ptr<word::OutputFile> openForUpdate(const std::filesystem::path& path) override;
    void replace(const std::filesystem::path&, const std::filesystem::path&) override {}
    void remove(const std::filesystem::path&) noexcept override {}
    std::optional<word::FileStamp> stamp(const std::filesystem::path&) override {
        return std::nullopt;
    }
};

// The bytes in use at one time while the file is read, put into a new document and saved there. The
// document has a bookmark of that name already, where there is one.
std::size_t peakOfBringingIn(const word::Bytes& file, const std::u16string& nameInUse = {});

// Expects the bound of that.
void expectBounded(const word::Bytes& file);

} // namespace qvnd::test
