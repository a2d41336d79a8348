#include "platform/word/docfile/text/TablePlaces.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>

namespace qvnd::word {

const TablePlaces::Properties& TablePlaces::propertiesOf(PropertyListId id) {
    const auto index = static_cast<std::size_t>(id);
    if (index >= known_.size()) {
        known_.resize(lists_.size());
    }
    std::optional<Properties>& known = known_.at(index);
    if (!known) {
        known = read(id);
    }
    return *known;
}

TablePlaces::Properties TablePlaces::read(PropertyListId id) const {
    Properties result;
    bool inTable = false;
    for (const SprmView& entry : parseSprms(lists_[id]).sprms) {
        switch (entry.opcode) {
        case sprm::PFInTable:
            inTable = entry.operand[0] != 0;
            break;
        case sprm::PFTtp:
            result.rowEnd = entry.operand[0] != 0;
            break;
        case sprm::PFInnerTableCell:
            result.innerCellEnd = entry.operand[0] != 0;
            break;
        case sprm::PFInnerTtp:
            result.innerRowEnd = entry.operand[0] != 0;
            break;
        case sprm::PItap:
            result.depth =
                std::clamp(LittleEndianReader(entry.operand, "sprmPItap").i32(), 0, deepestTable);
            break;
        default:
            break;
        }
    }
    result.depth = inTable ? std::max(result.depth, 1) : result.depth;
    return result;
}

TablePlace TablePlaces::of(PropertyListId id, char16_t mark) {
    const Properties& properties = propertiesOf(id);
    TablePlace place;
    place.depth = properties.depth;
    if (place.depth == 0) {
        return place;
    }
    // Marks of inner tables are paragraph marks; only the outermost table has a mark of its own.
    const bool outerMark = mark == special::cellMark;
    place.rowEnd = outerMark ? properties.rowEnd : place.depth > 1 && properties.innerRowEnd;
    place.cellEnd = !place.rowEnd && (outerMark || (place.depth > 1 && properties.innerCellEnd));
    return place;
}

} // namespace qvnd::word
