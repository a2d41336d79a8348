#pragma once

#include "platform/preview/DocumentReading.h"
#include "platform/word/docfile/document/DocumentContent.h"

#include <QString>

namespace qvnd::preview {

// How much of a huge document is read for the first sight.
struct ReadingLimits {
    std::size_t paragraphs = 1500;
    std::size_t characters = 200'000;
};

// The head of the document, at most as much as the limits say and cut between paragraphs or rows.
// Text boxes stand behind the paragraph of their anchor, floating pictures at theirs. Headers,
// footers and notes are not part of it.
DocumentReading ownReading(const word::DocumentContent& document, const ReadingLimits& limits = {});

// Reads a file. Throws RunTimeError with a Chinese reason when it is missing, is no .doc, is
// encrypted or damaged beyond reading.
DocumentReading ownReading(const QString& path, const ReadingLimits& limits = {});

} // namespace qvnd::preview
