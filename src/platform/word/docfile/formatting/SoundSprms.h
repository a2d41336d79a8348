#pragma once

#include "platform/word/docfile/format/Sprm.h"

#include <initializer_list>

namespace qvnd::word {

// Whether the operand is one that the format knows; most operands may be anything.
bool hasSoundOperand(const SprmView& entry);

// The entries of a list that are whole and of one of the groups, up to the first that is not
// whole, those without a sound operand and a padding byte at the end left out.
Bytes soundSprms(ByteView list, std::initializer_list<SprmGroup> groups);

// The list of a style or of a list's level without the entries that name a style, also inside of
// others: they would lead from one to the next without an end.
Bytes withoutStyleNames(ByteView list);

} // namespace qvnd::word
