#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/format/Sprm.h"

#include <cstdint>

// Questions to section property lists (SEPX), and lists changed. Lengths are twips.
namespace qvnd::word {

// The last entry's operand as a number, or what counts when there is none.
std::uint32_t sprmValue(ByteView list, SprmOpcode opcode, std::uint32_t otherwise);

enum class SectionBreak : std::uint8_t { continuous = 0, newColumn = 1, nextPage = 2 };

// Whether both have the same paper size and orientation.
bool samePaper(ByteView a, ByteView b);
// Whether text of the one may stand in the other: same paper and as many columns.
bool samePageFormat(ByteView a, ByteView b);

// How the section begins (sprmSBkc), taken from another list.
Bytes withBreakOf(ByteView list, ByteView other);
Bytes withBreak(ByteView list, SectionBreak kind);

// Without a title page and without page numbers that start anew: a section that was inserted goes
// on with the numbers and has the header and footer of the one before.
Bytes withoutOwnNumbering(ByteView list);
// Title page and page numbering as in `other`.
Bytes withNumberingOf(ByteView list, ByteView other);

} // namespace qvnd::word
