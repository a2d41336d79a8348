#pragma once

#include "platform/word/docfile/document/Story.h"

namespace qvnd::word {

// Takes paragraphs out of tables that do not hold together: of rows without an end (then one level
// up, an ordinary paragraph at the outermost), and cell marks outside of any table, which become
// paragraph marks. No text is lost. Answers how many paragraphs there were; 0 for sound tables,
// which stay as they are.
int repairTables(Story& story, PropertyLists& lists);

// A paragraph's properties as those of text in a cell at `depth`; outside of tables for 0.
PropertyListId asTextAt(int depth, PropertyListId properties, PropertyLists& lists);

} // namespace qvnd::word
