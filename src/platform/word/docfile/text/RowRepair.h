#pragma once

#include "platform/word/docfile/document/Story.h"

namespace qvnd::word {

// Gives every row's end a definition (sprmTDefTable) of as many cells as the row has, and the last
// cell of a row its end. A row without a cell, or with more than a definition can hold, becomes
// ordinary text of where its table stands. For stories that repairTables() has gone over: every
// row has its end. Answers how many rows were changed; 0 for sound tables, which stay as they are.
int repairRows(Story& story, PropertyLists& lists);

} // namespace qvnd::word
