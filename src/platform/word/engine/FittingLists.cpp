#include "platform/word/engine/FittingLists.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/formatting/Sections.h"

namespace qvnd::word {

PropertyListId FittingLists::fittedSection(PropertyListId list) {
    return fitted(list, longestSepx);
}

PropertyListId FittingLists::fitted(PropertyListId list, std::size_t most) {
    if (lists_[list].size() <= most) {
        return list;
    }
    const auto [known, isNew] = known_.try_emplace(list, list);
    if (isNew) {
        known->second = lists_.intern(cutSprms(lists_[list], most).list);
    }
    return known->second;
}

} // namespace qvnd::word
