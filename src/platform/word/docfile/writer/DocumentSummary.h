#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <array>

namespace qvnd::word {

// What a document consists of. Where nothing else is said, only the main story counts.
struct DocumentSummary {
    int paragraphs = 0; // those in cells included, the ends of rows not
    int tables = 0;     // nested ones included
    int cells = 0;      // of all tables
    int pictures = 0;   // in the line of the text
    int sections = 0;
    int lists = 0; // in use by a paragraph, itself or through its style
    int fields = 0;
    std::array<int, anchorKinds> anchors{}; // notes, comments, drawings, by AnchorKind
    int bookmarks = 0;
    int embeddedObjects = 0;
    int styles = 0; // in the style sheet
};

DocumentSummary summarize(const DocumentContent& document);

} // namespace qvnd::word
