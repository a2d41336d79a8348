#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/engine/DocumentConverter.h"

#include <filesystem>
#include <string>
#include <utility>

namespace qvnd::word {

// Why a file is not read: error 5, with a description in Chinese that names the file, the reason,
// and what would help.
class DocumentRefusal : public RunTimeError {
public:
    explicit DocumentRefusal(const RunTimeError& failure, std::u16string formatToConvert = {})
        : RunTimeError(failure), formatToConvert_(std::move(formatToConvert)) {}

    // What the file is, in Chinese, when it is one that a converter would make a document of; empty
    // for every other file.
    const std::u16string& formatToConvert() const { return formatToConvert_; }

private:
    std::u16string formatToConvert_;
};

struct DocumentReading {
    DocumentContent content;
    // That the file is of another format and was converted, a line in Chinese for the user; empty
    // where it was not.
    std::u16string conversion;
};

// Reads the document of a file. A text document of another format, or of a Word before Word 97, is
// converted for that where `converter` can. What the bytes are decides, not the file's name.
// Throws RunTimeError 53 when there is no such file, DocumentRefusal otherwise.
DocumentReading readConverting(const std::filesystem::path& path, DocumentConverter* converter,
                               const LongWork& longWork = nullptr);

// The same with the conversion as the first remark.
DocumentContent readDocumentFile(const std::filesystem::path& path,
                                 DocumentConverter* converter = nullptr,
                                 const LongWork& longWork = nullptr);

} // namespace qvnd::word
