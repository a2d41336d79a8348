#pragma once

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/engine/WorkingStory.h"

#include <optional>
#include <string>

namespace qvnd::word {

// What a Font call sets; what has no value stays.
struct FontChange {
    std::optional<std::u16string> name;
    std::optional<float> points;
    std::optional<bool> bold;
};

// The change as one of character property lists. A name is set for Latin, Chinese and other
// characters alike; text in a symbol font keeps that font, since no other one has its characters.
// Sizes are rounded to half a point and held within 1 to 1638 points.
PropertyChange propertyChange(DocumentTables& tables, const FontChange& change);

// Adds or replaces the entry in the list with that id.
PropertyListId withEntry(PropertyLists& lists, PropertyListId list, SprmOpcode opcode,
                         unsigned operand);

} // namespace qvnd::word
