#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/Remarks.h"

namespace qvnd::word {

// The style sheet (STSH, [MS-DOC] 2.4.6.5): of the table stream, lcbStshf bytes at fcStshf.
// The property lists of the styles go into `lists`, but for entries that are not whole or not of
// the list's kind. What the format does not allow is repaired as repairStyleSheet() says.
// A damaged style becomes an empty slot, named in `remarks`; so that paragraphs always have a
// style, slot 0 is filled with a plain "Normal" when the file has none. At least 15 slots.
StyleSheet decodeStyleSheet(ByteView stsh, PropertyLists& lists, Remarks& remarks);

// Writes Stdf with its post-2000 part, and at least 15 slots.
Bytes encodeStyleSheet(const StyleSheet& sheet, const PropertyLists& lists);

} // namespace qvnd::word
