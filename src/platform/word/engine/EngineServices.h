#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/container/OutputFile.h"
#include "platform/word/engine/DocumentConverter.h"
#include "platform/word/engine/ImportReport.h"
#include "platform/word/layout/PageNumberSource.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace qvnd::word {

// Asked when a document is closed with changes that nobody decided about.
class UnsavedChangesQuestion {
public:
    virtual ~UnsavedChangesQuestion() = default;
    // Whether to save. The path is empty for a document that was never saved.
    virtual bool save(const std::filesystem::path& document) = 0;
};

// Turns pictures of formats that the document format has no place for, such as GIF, into one that
// it has.
class PictureConverter {
public:
    virtual ~PictureConverter() = default;
    // The picture as a PNG, JPEG, BMP, EMF or WMF file; of an animation the first frame. Nothing
    // when the bytes cannot be read as a picture.
    virtual std::optional<Bytes> convert(ByteView file) const = 0;
};

// What the engine needs from outside; all must outlive it.
struct EngineServices {
    PageNumberSource& pages;
    ImportReport& report;
    UnsavedChangesQuestion& unsaved;
    // Null: pictures of other formats are refused.
    const PictureConverter* pictures = nullptr;
    // Null: documents of other formats are refused.
    DocumentConverter* documents = nullptr;
    // Where documents are written. Null: the real file system.
    std::shared_ptr<OutputFolder> files = nullptr;
    LongWork longWork = nullptr;

    void runLong(const std::function<void()>& work) const { longWork ? longWork(work) : work(); }
};

} // namespace qvnd::word
