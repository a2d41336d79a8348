#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <filesystem>

namespace qvnd::word {

// Reads a Word 97-2003 document. What contradicts itself in one place is left out and named in
// `remarks`; what leaves no document to read throws FormatError with the reason.
DocumentContent readDocument(const std::filesystem::path& path);
DocumentContent readDocument(ByteView file);

} // namespace qvnd::word
