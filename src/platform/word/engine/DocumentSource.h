#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <filesystem>

namespace qvnd::word {

// Reads the document of a file. Throws RunTimeError: 53 when there is no such file, 5 otherwise,
// with a description in Chinese that names the file and the reason.
DocumentContent readDocumentFile(const std::filesystem::path& path);

} // namespace qvnd::word
