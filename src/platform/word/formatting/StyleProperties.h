#pragma once

#include "platform/word/docfile/format/Sprm.h"

#include <optional>

// What the entries of property lists set, for comparing what styles come to.
namespace qvnd::word {

// Names a property by the oldest sprm that sets it: sprmPJc80 and sprmPJc both set sprmPJc80.
SprmOpcode propertySetBy(SprmOpcode opcode);

// Bold, italic and their like: operand 0 and 1, 0x80 as the style has it, 0x81 the opposite.
bool isToggle(SprmOpcode opcode);

// Whether the entry is part of how a paragraph or a character of a style looks: not what ties it
// to a place in a table, to a revision, to a picture or to another style. Tab stops are counted
// apart.
bool belongsToLook(SprmOpcode opcode);
bool setsTabStops(SprmOpcode opcode);

// Indents, which a list's level sets as well.
bool isIndent(SprmOpcode property);

// The entry that sets what holds when no entry sets the property ([MS-DOC] 2.6.1 and 2.6.2);
// nothing when that is unknown.
std::optional<Bytes> defaultEntry(SprmOpcode opcode);

// Whether the entries, all of one property, come to the same: a colour by number and one by its
// parts, or an older and a newer spelling of the same value.
bool sameEffect(ByteView one, ByteView other);

// An entry of a list: opcode and operand.
Bytes entry8(SprmOpcode opcode, unsigned operand);
Bytes entry16(SprmOpcode opcode, unsigned operand);

} // namespace qvnd::word
