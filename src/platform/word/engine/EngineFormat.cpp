#include "platform/word/engine/EngineFormat.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/engine/StyleLookup.h"

namespace qvnd::word {

int characterSize(const DocumentTables& tables, PropertyListId character, StyleIndex style) {
    constexpr int twipsPerHalfPoint = 10;
    constexpr std::uint32_t defaultHalfPoints = 20; // what counts when nothing is said
    const std::uint32_t inStyle = styleValue(tables, style, sprm::CHps).value_or(defaultHalfPoints);
    return static_cast<int>(sprmValue(tables.lists[character], sprm::CHps, inStyle)) *
           twipsPerHalfPoint;
}

} // namespace qvnd::word
