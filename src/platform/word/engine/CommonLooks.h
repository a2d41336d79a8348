#pragma once

#include "platform/word/docfile/document/PropertyLists.h"
#include "platform/word/docfile/document/Story.h"

namespace qvnd::word {

// Takes away direct formatting that more than half of a paragraph's characters have alike, its mark
// not counted unless it is alone. Other values of the same property stay. `part` consists of whole
// paragraphs. Answers whether anything went.
bool dropCommonLooks(Story& part, PropertyLists& lists);

} // namespace qvnd::word
