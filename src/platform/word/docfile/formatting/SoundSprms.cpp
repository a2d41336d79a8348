#include "platform/word/docfile/formatting/SoundSprms.h"

#include <algorithm>

namespace qvnd::word {

Bytes soundSprms(ByteView list, std::initializer_list<SprmGroup> groups) {
    Bytes sound;
    sound.reserve(list.size());
    for (const SprmView& entry : parseSprms(list).sprms) {
        if (std::find(groups.begin(), groups.end(), groupOf(entry.opcode)) != groups.end()) {
            sound.insert(sound.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    return sound;
}

} // namespace qvnd::word
