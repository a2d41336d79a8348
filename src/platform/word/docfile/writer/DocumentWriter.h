#pragma once

#include "platform/word/docfile/container/OutputFile.h"
#include "platform/word/docfile/document/DocumentContent.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <vector>

namespace qvnd::word {

// Writes a document under work to one file, again and again. However a call ends (full disk,
// killed process), the file on disk is wholly its earlier state or wholly the new one.
class DocumentWriter {
public:
    DocumentWriter();
    // Writes through `folder` in place of the real file system.
    explicit DocumentWriter(std::shared_ptr<OutputFolder> folder);
    ~DocumentWriter();
    DocumentWriter(DocumentWriter&&) noexcept;
    DocumentWriter& operator=(DocumentWriter&&) noexcept;

    // Writes the whole document in reading order and puts it in place of `path`.
    // Throws RunTimeError: 61 disk full, 70 permission denied, 75 or 76 for the path.
    void saveAs(const std::filesystem::path& path, const DocumentContent& content);

    // Brings the file of the last saveAs() to the new state by appending what is new: fragments
    // written before, known by identity, are not written again. The same tables must serve all
    // calls: property lists of fragments written before are not looked at again. Writes the whole
    // document as saveAs() does when the file has been changed or removed by others or the call
    // before has failed. Same errors; a std::logic_error before the first saveAs().
    void save(const DocumentContent& content);

    // Property lists of characters of which the file has the first part only: it has no room for
    // more than 32,768 of those that are longer than 255 bytes.
    std::size_t cutLists() const;
    // Comments of which the file has the place and not the text that they speak of: it has room for
    // 16,379 of those.
    std::size_t rangesWithoutRoom() const;

private:
    friend void writeMarkedCopy(const std::filesystem::path& path, const DocumentContent& content,
                                std::vector<Bookmark> marks);

    struct State;
    std::unique_ptr<State> state_;
};

// Writes a copy of the document to `path` that bears further bookmarks, so that a layout of it can
// be asked where they came to stand. Errors as DocumentWriter::saveAs().
void writeMarkedCopy(const std::filesystem::path& path, const DocumentContent& content,
                     std::vector<Bookmark> marks);

} // namespace qvnd::word
