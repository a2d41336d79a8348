#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <filesystem>
#include <functional>

namespace qvnd::word {

// Runs work that may take long, such as the reading of a file, to its end; what it throws passes.
// What else runs meanwhile must not touch what the work does: a document, the file of a document.
// Where there is none the work runs as it comes.
using LongWork = std::function<void(const std::function<void()>& work)>;

// Turns documents of other formats into Word 97-2003 documents.
class DocumentConverter {
public:
    virtual ~DocumentConverter() = default;

    // False where nothing is installed that could; converted() is not called then.
    virtual bool isAvailable() const = 0;
    // What the file holds, as the bytes of a Word 97-2003 document. The format is told by the
    // content, whatever the file is called; the file stays as it is. Throws RunTimeError with the
    // reason in Chinese when it cannot be converted; error::stopped, where the user has stopped it,
    // passes through the engine.
    virtual Bytes converted(const std::filesystem::path& file) = 0;
};

} // namespace qvnd::word
