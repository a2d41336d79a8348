#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/format/Sprm.h"

// Which entries of a character property list are a matter of looks, and which make the character
// what it is (picture, field mark, symbol, revision).
namespace qvnd::word {

bool isLook(SprmOpcode opcode);

// The list that text typed beside such a character gets.
PropertyListId looksOnly(PropertyLists& lists, PropertyListId id);

// The list without those entries.
PropertyListId withoutEntries(PropertyLists& lists, PropertyListId id,
                              const std::vector<SprmOpcode>& opcodes);

} // namespace qvnd::word
