#include "platform/word/engine/EngineFormat.h"

#include "platform/word/formatting/FormatResolver.h"

namespace qvnd::word {

int characterSize(const DocumentTables& tables, PropertyListId character, StyleIndex style) {
    constexpr int twipsPerHalfPoint = 10;
    return FormatResolver(tables).text(style, character).halfPoints * twipsPerHalfPoint;
}

} // namespace qvnd::word
