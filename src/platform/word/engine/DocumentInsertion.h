#pragma once

#include "platform/word/engine/DocumentImport.h"
#include "platform/word/engine/WorkingDocument.h"

namespace qvnd::word {

// Puts a whole document into the main story at `at` and returns the place behind it.
// A page break in force at `at` moves on to the first inserted paragraph.
// Sections inside the document keep their breaks and properties. Where the first one has other
// paper or columns than the text in front, a section break is set in front, ahead of headings that
// lead over to the document; where the last one differs, the document is closed off with a break
// of its own, else what follows joins it. Inserted sections have no headers, footers, title pages
// and page number restarts of their own: those of the document under work go through.
Cp insertDocument(WorkingDocument& document, Cp at, DocumentBody text);

} // namespace qvnd::word
