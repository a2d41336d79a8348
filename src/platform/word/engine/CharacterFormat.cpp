#include "platform/word/engine/CharacterFormat.h"

#include "platform/word/docfile/format/SprmFacts.h"

#include <algorithm>

namespace qvnd::word {

namespace {

template <typename Keeps>
PropertyListId filtered(PropertyLists& lists, PropertyListId id, const Keeps& keeps) {
    Bytes kept;
    for (const SprmView& entry : parseSprms(lists[id]).sprms) {
        if (keeps(entry.opcode)) {
            kept.insert(kept.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    return lists.intern(kept);
}

} // namespace

bool isLook(SprmOpcode opcode) {
    const SprmKind kind = factsOf(opcode).kind;
    return kind != SprmKind::substance && kind != SprmKind::revision;
}

PropertyListId looksOnly(PropertyLists& lists, PropertyListId id) {
    return filtered(lists, id, isLook);
}

PropertyListId withoutEntries(PropertyLists& lists, PropertyListId id,
                              const std::vector<SprmOpcode>& opcodes) {
    return filtered(lists, id, [&](SprmOpcode opcode) {
        return std::find(opcodes.begin(), opcodes.end(), opcode) == opcodes.end();
    });
}

} // namespace qvnd::word
