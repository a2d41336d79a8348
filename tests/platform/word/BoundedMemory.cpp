#include "platform/word/BoundedMemory.h"

#include "platform/word/CountedMemory.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/NormalTemplate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace qvnd::test {

using namespace word;

namespace {

class FileElsewhere final : public OutputFile {
public:
    std::size_t writeSome(std::uint64_t offset, ByteView bytes) override {
        size_ = std::max(size_, offset + bytes.size());
        return bytes.size();
    }
    std::uint64_t size() override { return size_; }
    void truncate(std::uint64_t size) override { size_ = size; }
    void sync() override {}
    void close() override {}

private:
    std::uint64_t size_ = 0;
};

void bringIn(const Bytes& file, const std::u16string& nameInUse) {
    WorkingDocument document(normalTemplate());
    if (!nameInUse.empty()) {
        document.bookmarkNames().add(nameInUse);
    }
    {
        const DocumentContent source = readDocument(file);
        ImportNotes notes;
        insertDocument(document, document.main().size() - 1,
                       importDocument(document.tables(), document.bookmarkNames(), source, notes));
    }
    DocumentWriter(std::make_shared<FilesElsewhere>()).saveAs("/a.doc", document.content());
}

} // namespace

std::size_t mostFor(const Bytes& file) { return 20 * file.size() + 50 * megabyte; }

std::unique_ptr<OutputFile> FilesElsewhere::createBeside(const std::filesystem::path& target,
                                                         std::filesystem::path* path) {
    *path = target;
    return std::make_unique<FileElsewhere>();
}

std::unique_ptr<OutputFile> FilesElsewhere::openForUpdate(const std::filesystem::path&) {
    return std::make_unique<FileElsewhere>();
}

std::size_t peakOfBringingIn(const Bytes& file, const std::u16string& nameInUse) {
    const MemoryUse use = memoryUseOf([&] {
        try {
            bringIn(file, nameInUse);
        } catch (const FormatError&) {
            // Refused: what that took is counted as well.
        }
    });
    return use.peak;
}

void expectBounded(const Bytes& file) {
    EXPECT_LE(peakOfBringingIn(file), mostFor(file)) << "for a file of " << file.size();
}

} // namespace qvnd::test
