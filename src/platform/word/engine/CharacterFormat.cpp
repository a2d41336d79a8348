#include "platform/word/engine/CharacterFormat.h"

#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <array>

namespace qvnd::word {

namespace {

constexpr SprmOpcode revisionTime = 0x6805;       // sprmCDttmRMark
constexpr SprmOpcode deletionTime = 0x6864;       // sprmCDttmRMarkDel
constexpr SprmOpcode displayedFieldMark = 0xCA62; // sprmCDispFldRMark

constexpr std::array substance{sprm::CFRMarkDel,   sprm::CFRMarkIns,   sprm::CFFldVanish,
                               sprm::CPicLocation, sprm::CIbstRMark,   sprm::CFData,
                               sprm::CSymbol,      sprm::CFOle2,       sprm::CFSpec,
                               sprm::CFObj,        sprm::CObjLocation, sprm::CIbstRMarkDel,
                               sprm::CPropRMark90, sprm::CPropRMark,   revisionTime,
                               deletionTime,       displayedFieldMark};

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
    return std::find(substance.begin(), substance.end(), opcode) == substance.end();
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
