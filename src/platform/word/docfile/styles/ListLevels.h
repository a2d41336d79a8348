#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/DocumentTables.h"

namespace qvnd::word {

// Of a list that is not a simple one.
inline constexpr std::size_t levelCount = 9;

// One level of a list (LVL, [MS-DOC] 2.9.150). Entries of its lists
// that are not whole or not of the list's kind are left out, and a form of its number that no
// program knows becomes the plain one. Throws FormatError when it reaches
// past the end.
ListLevel decodeListLevel(LittleEndianReader& reader, PropertyLists& lists);
void encodeListLevel(LittleEndianWriter& writer, const ListLevel& level,
                     const PropertyLists& lists);

// A level that shows no number and adds no distance.
ListLevel levelWithoutNumber();

} // namespace qvnd::word
