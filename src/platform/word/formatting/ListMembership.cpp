#include "platform/word/formatting/ListMembership.h"

namespace qvnd::word {

namespace {

constexpr std::uint32_t levelMask = 0x0F;      // iLvl of LFOLVL
constexpr std::uint32_t formattingFlag = 0x20; // fFormatting of LFOLVL

} // namespace

std::uint16_t listIndexOf(std::uint16_t ilfo) {
    if (ilfo >= firstHiddenList) {
        return static_cast<std::uint16_t>(0x10000 - ilfo);
    }
    return ilfo <= lastListIndex ? ilfo : noList;
}

const ListDefinition* ListLevels::definition(std::int32_t lsid) {
    // Lists only ever come in, at the end; one that is unknown may have come since.
    if (const auto known = places_.find(lsid); known != places_.end()) {
        return &tables_.listDefinitions[known->second];
    }
    for (std::size_t i = 0; i < tables_.listDefinitions.size(); ++i) {
        if (tables_.listDefinitions[i].lsid == lsid) {
            places_.emplace(lsid, i);
            return &tables_.listDefinitions[i];
        }
    }
    return nullptr;
}

const ListLevel* ListLevels::level(std::uint16_t ilfo, std::uint8_t ilvl) {
    const std::uint16_t index = listIndexOf(ilfo);
    if (index == 0 || index > tables_.listOverrides.size()) {
        return nullptr;
    }
    const ListOverride& list = tables_.listOverrides[index - 1];
    for (const ListLevelOverride& overriding : list.levels) {
        if ((overriding.flags & levelMask) == ilvl && (overriding.flags & formattingFlag) != 0 &&
            overriding.level) {
            return &*overriding.level;
        }
    }
    const ListDefinition* found = definition(list.lsid);
    return found != nullptr && ilvl < found->levels.size() ? &found->levels[ilvl] : nullptr;
}

ByteView ListLevels::paragraph(std::uint16_t ilfo, std::uint8_t ilvl) {
    const ListLevel* found = level(ilfo, ilvl);
    return found != nullptr ? tables_.lists[found->paragraph] : ByteView{};
}

} // namespace qvnd::word
