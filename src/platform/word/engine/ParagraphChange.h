#pragma once

#include "platform/word/engine/WorkingStory.h"
#include "platform/word/model/Format.h"

// Changes of how a paragraph looks. None of them touches a table's row marks.
namespace qvnd::word {

LookChange alignmentChange(PropertyLists& lists, Alignment alignment);

// Moves the left indent by `count` widths of a character of `characterWidth` twips, from the
// indent that the paragraph has directly, by its list or by its style.
LookChange indentChange(DocumentTables& tables, int count, int characterWidth);

// Sets the style and removes the direct formatting, except a page break in front of the paragraph
// and its place in a table.
LookChange styleChange(PropertyLists& lists, StyleIndex style);

bool hasPageBreak(const PropertyLists& lists, const ParagraphLook& look);
ParagraphLook withPageBreak(PropertyLists& lists, const ParagraphLook& look, bool pageBreak);

// The look of the paragraph that Enter begins at the end of one with this look.
ParagraphLook nextLook(DocumentTables& tables, const ParagraphLook& look);

} // namespace qvnd::word
