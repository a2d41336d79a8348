#include "platform/word/docfile/formatting/SoundSprms.h"

#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>

namespace qvnd::word {

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

} // namespace qvnd::word
