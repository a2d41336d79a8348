#include "platform/word/engine/TableNesting.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/TablePlaces.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr char16_t paragraphMark = 0x0D;
constexpr char16_t cellMark = 0x07;

PropertyListId nested(PropertyListId properties, const TablePlace& place, int depth, char16_t mark,
                      PropertyLists& lists) {
    Bytes list = withSprm8(lists[properties], sprm::PFInTable, 1);
    list = withSprm32(list, sprm::PItap, static_cast<std::uint32_t>(depth + place.depth));
    if (mark == cellMark) {
        list = withSprm8(withoutSprm(list, sprm::PFTtp), sprm::PFInnerTableCell, 1);
        list = place.rowEnd ? withSprm8(list, sprm::PFInnerTtp, 1) : list;
    }
    return lists.intern(list);
}

} // namespace

int depthOfTables(const Story& text, const PropertyLists& lists) {
    TablePlaces places(lists);
    int depth = 0;
    for (const ParagraphRun& paragraph : text.paragraphs) {
        depth = std::max(depth, places.of(paragraph.properties, paragraphMark).depth);
    }
    return depth;
}

void nestInCell(Story& text, int depth, PropertyLists& lists) {
    if (depth == 0) {
        return;
    }
    TablePlaces places(lists);
    Cp end = 0;
    for (ParagraphRun& paragraph : text.paragraphs) {
        end += paragraph.length;
        char16_t& mark = text.text[end - 1];
        const TablePlace place = places.of(paragraph.properties, mark);
        paragraph.properties = nested(paragraph.properties, place, depth, mark, lists);
        mark = mark == cellMark ? paragraphMark : mark;
    }
}

PropertyListId withInnerCellEnd(PropertyListId properties, PropertyLists& lists) {
    return lists.intern(withSprm8(lists[properties], sprm::PFInnerTableCell, 1));
}

PropertyListId withoutInnerCellEnd(PropertyListId properties, PropertyLists& lists) {
    return lists.intern(withoutSprm(lists[properties], sprm::PFInnerTableCell));
}

} // namespace qvnd::word
