#pragma once

#include "platform/word/engine/LeftOut.h"
#include "platform/word/engine/WorkingDocument.h"
#include "platform/word/model/TablesOfContents.h"

#include <string>
#include <vector>

namespace qvnd::word {

// A heading that the contents list.
struct ContentsEntry {
    int level = 1;
    Cp start = 0; // in the main story
    Cp end = 0;   // in front of the paragraph mark
    std::u16string text;
    std::u16string bookmark; // of the heading; empty where a file has no room for one
};

// Every paragraph in one of the built-in heading styles of the levels asked for, or in one of the
// added styles ("标题 1,1" names a style and its level), in the order of the text. Paragraphs
// without visible text are no entries. `bookmark` is left empty.
std::vector<ContentsEntry> contentsEntries(WorkingDocument& document,
                                           const TableOfContentsOptions& options);

// What of a heading's text the contents show: no field codes, pictures, notes; a tab or a line
// break is a blank.
std::u16string entryText(std::u16string_view text);

// Names a bookmark on each heading, setting those that are missing. Where a file has no room for
// them all, hidden ones that no field speaks of go, and what then has no room stays without.
ContentsLosses bookmarkEntries(WorkingDocument& document, std::vector<ContentsEntry>& entries);

} // namespace qvnd::word
