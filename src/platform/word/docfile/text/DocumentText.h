#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/SlicedText.h"

#include <string>

namespace qvnd::word {

// The text of a story as one would type it: a line for each paragraph, line break and page break;
// the cells of a table row separated by tabs, a line for each row; of fields what they show, not
// their instructions; no special characters (pictures, notes, drawings, optional hyphens).
// A symbol stands as the code that its font has for it.
std::u16string documentText(const SlicedText& text, const DocumentTables& tables);

} // namespace qvnd::word
