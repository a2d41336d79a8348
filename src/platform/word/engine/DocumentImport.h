#pragma once

#include "platform/word/docfile/document/DocumentData.h"
#include "platform/word/engine/BookmarkNames.h"

#include <memory>
#include <string>
#include <vector>

namespace qvnd::word {

// A read document in the terms of another document's tables, ready to become a slice of its text.
struct ImportedText {
    // Ids and indexes are those of the target's tables. Nobody shares it yet: it may be changed.
    std::shared_ptr<Story> text;
    // The sections of the text; their lengths add up to text->size(). All but the last end in
    // their break mark (U+000C); the last one has none of its own, and whether its properties
    // count is for the caller to decide.
    std::vector<SectionRun> sections;
    // Headers and footers of their own that the sections have, one set a section; nothing for the
    // last one, whose page the target makes. No set at all when no section has any.
    std::vector<HeaderSet> headers;
    std::vector<Bookmark> bookmarks; // positions in the text; names unique in the target
    // What the document holds and the text does not, in Chinese, one line each: the remarks of the
    // source first.
    std::vector<std::u16string> leftOut;
};

// Brings `source` into a document with the tables `target`: property lists travel as they came,
// only operands that name fonts, styles, lists, pictures and authors are rewritten.
// Fonts merge by name. A built-in style is that of the same number (sti), another one that of the
// same name and kind; where the target has it, the target's definition stands, and what the
// source's said otherwise becomes direct formatting. What the target lacks comes along, if the
// text uses it. Lists always come as new ones, so that no numbering goes on from elsewhere.
// Linear in the size of `source`. Names of bookmarks that come along are added to `names`.
ImportedText importDocument(DocumentTables& target, BookmarkNames& names,
                            const DocumentData& source);

} // namespace qvnd::word
