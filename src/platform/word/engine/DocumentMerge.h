#pragma once

#include "platform/word/engine/DocumentConverter.h"
#include "platform/word/engine/FontChange.h"
#include "platform/word/engine/ImportReport.h"
#include "platform/word/engine/WorkingDocument.h"

#include <filesystem>
#include <memory>
#include <span>

namespace qvnd::word {

// A new document that holds the files one after another and nothing else: no paragraph between
// them and none behind the last one. The font is set over all text where it has values. Files of
// other formats are converted where there is a `converter`. Throws RunTimeError as
// readDocumentFile() does; what a file holds and the result does not is reported.
std::unique_ptr<WorkingDocument> mergeDocuments(std::span<const std::filesystem::path> files,
                                                const FontChange& font, ImportReport& report,
                                                DocumentConverter* converter = nullptr);

} // namespace qvnd::word
