#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/engine/BookmarkNames.h"

#include <string>
#include <vector>

namespace qvnd::word {

// Brings `source` into a document with the tables `target`: property lists travel as they came,
// only operands that name fonts, styles, lists, pictures and authors are rewritten.
// Fonts merge by name. A built-in style is that of the same number (sti), another one that of the
// same name and kind; where the target has it, the target's definition stands, and what the
// source's said otherwise becomes direct formatting. What the target lacks comes along, if the
// text uses it. Lists always come as new ones, so that no numbering goes on from elsewhere.
// Linear in the size of `source`. Names of bookmarks that come along are added to `names`.
// All sections of the answer but the last end in their break mark (U+000C); the last one has none
// of its own, and whether its properties count is for the caller to decide. It has no headers: its
// page is that of the target. `headers` is empty when no section has any.
// `leftOut` gets a line in Chinese for each kind of thing that the document holds and the answer
// does not, the remarks of the source first.
DocumentBody importDocument(DocumentTables& target, BookmarkNames& names,
                            const DocumentContent& source, std::vector<std::u16string>& leftOut);

} // namespace qvnd::word
