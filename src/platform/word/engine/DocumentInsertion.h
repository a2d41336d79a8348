#pragma once

#include "platform/word/engine/DocumentImport.h"
#include "platform/word/engine/WorkingDocument.h"

namespace qvnd::word {

// Puts a whole document into the main story at `at` and returns the place behind it.
// A page break in force at `at` moves on to the first inserted paragraph.
// Sections inside the document keep their breaks and properties. Where the first one differs from
// the text in front in more than its margins, a section break is set in front, ahead of headings
// that lead over to the document: on a new page where both cannot stand on one. Behind the last
// one the page is that of the text in front. From the first section with headers of its own on they
// keep their headers, title pages and page numbers; in front of it those of the document under work
// go through.
Cp insertDocument(WorkingDocument& document, Cp at, DocumentBody text);

} // namespace qvnd::word
