#pragma once

#include "platform/word/docfile/DocumentData.h"

#include <filesystem>
#include <memory>

namespace qvnd::word {

// Writes a document under work to one file, again and again. However a call ends (full disk,
// killed process), the file on disk is wholly its earlier state or wholly the new one.
class DocumentWriter {
public:
    DocumentWriter();
    ~DocumentWriter();
    DocumentWriter(DocumentWriter&&) noexcept;
    DocumentWriter& operator=(DocumentWriter&&) noexcept;

    // Writes the whole document in reading order and puts it in place of `path`.
    // Throws RunTimeError: 61 disk full, 70 permission denied, 75 or 76 for the path.
    void saveAs(const std::filesystem::path& path, const DocumentContent& content);

    // Brings the file of the last saveAs() to the new state by appending what is new: fragments
    // written before are not written again. Same errors.
    void save(const DocumentContent& content);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace qvnd::word
