#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/format/Sprm.h"

#include <cstdint>

// Reads section property lists (SEPX), and makes changed ones. Lengths are twips.
namespace qvnd::word {

// The operand of the last entry with that opcode as a number; `otherwise` when there is none.
std::uint32_t sprmValue(ByteView list, SprmOpcode opcode, std::uint32_t otherwise);

enum class SectionBreak : std::uint8_t { continuous = 0, newColumn = 1, nextPage = 2 };

// Whether text of both can stand on one page: the same paper, borders, direction and alignment of
// the text. Margins are left to the page setup, which goes to the whole document.
bool samePage(ByteView a, ByteView b);
// Whether both have the same number of columns.
bool sameColumns(ByteView a, ByteView b);
// Whether lines and notes look the same: line numbers, document grid, numbers of notes.
bool sameLinesAndNotes(ByteView a, ByteView b);

// How the section begins (sprmSBkc), taken from another list.
Bytes withBreakOf(ByteView list, ByteView other);
Bytes withBreak(ByteView list, SectionBreak kind);

// Without a title page and without a restart of the page numbers, so that an inserted section
// continues the numbers, the header and the footer of the one before.
Bytes withoutOwnNumbering(ByteView list);
// Title page and page numbering as in `other`.
Bytes withNumberingOf(ByteView list, ByteView other);

} // namespace qvnd::word
