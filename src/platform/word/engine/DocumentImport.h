#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/engine/BookmarkNames.h"
#include "platform/word/engine/ImportReport.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace qvnd::word {

// What is to be told of a document that came in, a line of Chinese each.
struct ImportNotes {
    // What the document holds and the answer does not, the remarks of the source first.
    std::vector<std::u16string> leftOut;
    // What has other numbers or names there, and why.
    std::vector<std::u16string> changed;
    // What is to be said once of all documents that come in: that the smart tags of this one stay
    // behind. They mark words for programs, in nearly every file of some years, and show nothing.
    std::u16string smartTags;

    // `areSmartTagsTold`: whether they were told of an earlier document; set where they are now.
    void tell(ImportReport& report, const std::filesystem::path& path,
              bool& areSmartTagsTold) const;
};

// Rewrites the text of `source` in terms of the tables `target`, to which it adds what they lack.
// Property lists are copied; only operands that name fonts, styles, lists, pictures and authors are
// rewritten. Fonts are matched by name, built-in styles by number (sti), other styles by name and
// kind. Where the target has the style, its definition is used, and what the source defines
// differently becomes direct formatting. Styles and fonts that the target lacks are added if the
// text uses them. Lists are always added as new ones, so that no numbering continues that of
// another document. Names of bookmarks are added to `names`. Linear in the size of `source`. Every
// section of the answer but the last ends in its break mark (U+000C). The last one has no mark and
// no headers; the caller decides whether its properties are used. `headers` is empty when no
// section has any. `notes` gets a line for each kind of thing.
DocumentBody importDocument(DocumentTables& target, BookmarkNames& names,
                            const DocumentContent& source, ImportNotes& notes);

bool hasHeaders(const HeaderSet& set);
// The first section that has headers; the number of sections where none has any. It and those
// behind it show headers of their document.
std::size_t firstSectionWithHeaders(const DocumentBody& body);

} // namespace qvnd::word
