#pragma once

#include "platform/word/engine/ContentsField.h"
#include "platform/word/engine/StoryEditor.h"

namespace qvnd::word {

// Puts a contents at the insertion point, in paragraphs of its own, and leaves the insertion point
// at the start of the paragraph behind it. Its styles get a right tab at the text's edge.
ContentsLosses insertContents(WorkingDocument& document, Insertion& insertion,
                              const TableOfContentsOptions& options);

// Removes a contents, and those of its paragraphs that hold nothing else.
void removeContents(WorkingDocument& document, FieldSpan contents);

// The right tab of the contents styles: its place in twips, and what fills the space before it.
void setContentsTab(DocumentTables& tables, int position, TabLeader leader);
// Changes the leader of the tabs that the contents styles have.
void setContentsLeader(DocumentTables& tables, TabLeader leader);

} // namespace qvnd::word
