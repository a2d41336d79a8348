#pragma once

#include "platform/word/docfile/format/Sprm.h"

#include <optional>

// Facts about sprms that comparing the formatting of styles needs.
namespace qvnd::word {

// The property that a sprm sets, named by the oldest sprm that sets it: sprmPJc80 for sprmPJc80 and
// for sprmPJc.
SprmOpcode propertySetBy(SprmOpcode opcode);

// Whether the property is a toggle, such as bold or italic. Its operand is 0, 1, 0x80 (the style's
// value) or 0x81 (the opposite of the style's value).
bool isToggle(SprmOpcode opcode);

// Whether the sprm formats paragraphs or characters. False for sprms that refer to a table, a
// revision, a picture or another style, and for tab stops.
bool belongsToLook(SprmOpcode opcode);
bool setsTabStops(SprmOpcode opcode);

// Whether the property is an indent. List levels set indents too.
bool isIndent(SprmOpcode property);

// The entry that sets the property's default value ([MS-DOC] 2.6.1 and 2.6.2); nothing when the
// default is unknown.
std::optional<Bytes> defaultEntry(SprmOpcode opcode);

// Whether two entries of one property have the same effect, such as a colour by index and the same
// colour by its components, or an older and a newer sprm with the same value.
bool sameEffect(ByteView one, ByteView other);

// A property list entry: opcode and operand of 8 or 16 bits.
Bytes entry8(SprmOpcode opcode, unsigned operand);
Bytes entry16(SprmOpcode opcode, unsigned operand);

} // namespace qvnd::word
