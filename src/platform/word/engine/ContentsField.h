#pragma once

#include "platform/word/engine/ContentsEntries.h"
#include "platform/word/engine/StoryEdits.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qvnd::word {

// A field in the main story, from its begin mark to behind its end mark.
struct FieldSpan {
    Cp start = 0;
    Cp end = 0;
};

// The contents as a TOC field that the word processor can update: an entry a paragraph in the
// style of its level, each a link to its heading, with a right tab (or a blank) and the page
// number as a PAGEREF field; one without a bookmark shows its text alone. The last paragraph has no
// mark yet. `styles` are those of the levels
// 1 to 9. A contents without entries says so.
Story contentsField(PropertyLists& lists, const std::vector<ContentsEntry>& entries,
                    const TableOfContentsOptions& options, std::span<const StyleIndex> styles);

// The TOC fields of the main story that lie in no other field, in order.
std::vector<FieldSpan> contentsFields(const WorkingStory& story);

// The changes that give the field other page numbers: `pageOf` tells the number for a bookmark's
// name, nothing leaves the entry as it is. So does a number that stands there already, and what is
// no number but several paragraphs or a field.
using PageOfBookmark = std::function<std::optional<std::u16string>(const std::u16string&)>;
StoryEdits pageNumberEdits(const Story& contents, const PageOfBookmark& pageOf);

} // namespace qvnd::word
