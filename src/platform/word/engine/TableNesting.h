#pragma once

#include "platform/word/docfile/document/PropertyLists.h"
#include "platform/word/docfile/document/Story.h"

namespace qvnd::word {

// How deep the deepest table of a text is nested; 0 for a text without tables.
int depthOfTables(const Story& text, const PropertyLists& lists);

// Makes whole paragraphs the content of a cell `depth` tables deep: text becomes text of the cell,
// tables become inner ones. The marks of what was an outermost table become paragraph marks, as
// [MS-DOC] 2.4.3 wants them of inner tables. `depth` 0 changes nothing.
void nestInCell(Story& text, int depth, PropertyLists& lists);

// A paragraph's properties with and without the end of an inner table's cell.
PropertyListId withInnerCellEnd(PropertyListId properties, PropertyLists& lists);
PropertyListId withoutInnerCellEnd(PropertyListId properties, PropertyLists& lists);

} // namespace qvnd::word
