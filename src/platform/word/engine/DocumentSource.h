#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/engine/DocumentConverter.h"

#include <filesystem>

namespace qvnd::word {

// Reads the document of a file. A text document of another format, or of a Word before Word 97, is
// converted for that where `converter` can; its first remark then says so. What the bytes are
// decides, not the file's name.
// Throws RunTimeError: 53 when there is no such file, 5 otherwise, with a description in Chinese
// that names the file, the reason, and what would help.
DocumentContent readDocumentFile(const std::filesystem::path& path,
                                 DocumentConverter* converter = nullptr,
                                 const LongWork& longWork = nullptr);

// What the file is, in Chinese, when it is one that readDocumentFile() needs a converter for; empty
// for every other file.
std::u16string formatToConvert(const std::filesystem::path& path);

} // namespace qvnd::word
