#include "platform/word/engine/FontChange.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/Fonts.h"
#include "platform/word/engine/SectionProperties.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace qvnd::word {

namespace {

constexpr std::uint32_t noFont = 0xFFFF;

bool usesSymbolFont(const DocumentTables& tables, ByteView list) {
    const auto isSymbol = [&](SprmOpcode opcode) {
        const std::uint32_t font = sprmValue(list, opcode, noFont);
        return font < tables.fonts.size() && isSymbolFont(tables.fonts[font]);
    };
    return isSymbol(sprm::CRgFtc0) || isSymbol(sprm::CRgFtc2);
}

unsigned halfPoints(float points) {
    return static_cast<unsigned>(std::lround(std::clamp(points, 1.0F, 1638.0F) * 2));
}

} // namespace

PropertyListId withEntry(PropertyLists& lists, PropertyListId list, SprmOpcode opcode,
                         unsigned operand) {
    const bool isByte = (opcode >> 13) < 2;
    return lists.intern(isByte ? withSprm8(lists[list], opcode, operand)
                               : withSprm16(lists[list], opcode, operand));
}

PropertyChange propertyChange(DocumentTables& tables, const FontChange& change) {
    std::optional<std::uint16_t> font;
    if (change.name) {
        font = fontNamed(tables.fonts, *change.name);
    }
    return [&tables, change, font](PropertyListId id) {
        const ByteView old = tables.lists[id];
        Bytes list(old.begin(), old.end());
        if (font && !usesSymbolFont(tables, list)) {
            list = withSprm16(list, sprm::CRgFtc0, *font);
            list = withSprm16(list, sprm::CRgFtc1, *font);
            list = withSprm16(list, sprm::CRgFtc2, *font);
        }
        if (change.points) {
            list = withSprm16(list, sprm::CHps, halfPoints(*change.points));
            list = withSprm16(list, sprm::CHpsBi, halfPoints(*change.points));
        }
        if (change.bold) {
            list = withSprm8(list, sprm::CFBold, *change.bold ? 1 : 0);
            list = withSprm8(list, sprm::CFBoldBi, *change.bold ? 1 : 0);
        }
        return tables.lists.intern(list);
    };
}

} // namespace qvnd::word
