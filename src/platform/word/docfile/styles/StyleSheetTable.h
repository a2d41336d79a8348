#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/Remarks.h"

namespace qvnd::word {

// The places of a style sheet (cstd of Stshif in [MS-DOC] is less than 0x0FFE).
inline constexpr std::size_t mostStyles = 0x0FFD;
// The most bytes of one property list of a style, so that all of them fit a style: its size counts
// in 15 bits (cbStd of LPStd in [MS-DOC]).
inline constexpr std::size_t longestStyleList = 6000;

// The style sheet (STSH, [MS-DOC] 2.4.6.5): of the table stream, lcbStshf bytes at fcStshf.
// The property lists of the styles go into `lists`, but for entries that are not whole or not of
// the list's kind. What the format does not allow is repaired as repairStyleSheet() says.
// A damaged style becomes an empty slot, named in `remarks`; so that paragraphs always have a
// style, slot 0 is filled with a plain "Normal" when the file has none. At least 15 slots and at
// most mostStyles; no list is longer than longestStyleList. What goes is counted in `remarks`.
StyleSheet decodeStyleSheet(ByteView stsh, PropertyLists& lists, Remarks& remarks);

// Writes Stdf with its post-2000 part, and at least 15 slots.
Bytes encodeStyleSheet(const StyleSheet& sheet, const PropertyLists& lists);

} // namespace qvnd::word
