#include "platform/word/docfile/formatting/SoundSprms.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/format/SprmFacts.h"

#include <algorithm>

namespace qvnd::word {

namespace {

bool namesStyle(SprmTarget target) {
    return target == SprmTarget::characterStyle || target == SprmTarget::paragraphStyle ||
           target == SprmTarget::tableStyle;
}

Bytes unlessStyleName(const SprmView& entry) {
    return namesStyle(factsOf(entry.opcode).target) ? Bytes()
                                                    : Bytes(entry.whole.begin(), entry.whole.end());
}

} // namespace

bool hasSoundOperand(const SprmView& entry) {
    constexpr unsigned lastLevel = 8;
    constexpr unsigned bodyOfOldNumbering = 0xC; // kept by numbering as Word 95 did
    return entry.opcode != sprm::PIlvl || entry.operand[0] <= lastLevel ||
           entry.operand[0] == bodyOfOldNumbering;
}

Bytes soundSprms(ByteView list, std::initializer_list<SprmGroup> groups) {
    Bytes sound;
    sound.reserve(list.size());
    for (const SprmView& entry : parseSprms(list).sprms) {
        if (std::find(groups.begin(), groups.end(), groupOf(entry.opcode)) != groups.end() &&
            hasSoundOperand(entry)) {
            sound.insert(sound.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    return sound;
}

Bytes withoutStyleNames(ByteView list) {
    Bytes result;
    result.reserve(list.size());
    for (const SprmView& entry : parseSprms(list).sprms) {
        const SprmFacts facts = factsOf(entry.opcode);
        const auto inside = facts.target == SprmTarget::listInside
                                ? withListInside(entry.operand, facts.targetAt, unlessStyleName)
                                : std::nullopt;
        const Bytes kept = inside ? withSprm({}, entry.opcode, *inside) : unlessStyleName(entry);
        result.insert(result.end(), kept.begin(), kept.end());
    }
    return result;
}

} // namespace qvnd::word
