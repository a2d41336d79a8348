#include "platform/word/docfile/writer/FileProperties.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

namespace qvnd::word {

ByteView FileProperties::of(PropertyListId id) {
    const ByteView list = tables_.lists[id];
    auto known = known_.find(id);
    if (known == known_.end()) {
        std::optional<Bytes> changed;
        if (findSprm(list, sprm::CPicLocation) || findSprm(list, sprm::CObjLocation)) {
            changed = converted(list);
        }
        known = known_.emplace(id, std::move(changed)).first;
    }
    return known->second ? ByteView(*known->second) : list;
}

Bytes FileProperties::converted(ByteView list) {
    LittleEndianWriter out;
    for (const SprmView& entry : parseSprms(list).sprms) {
        const bool picture = entry.opcode == sprm::CPicLocation;
        if (!picture && entry.opcode != sprm::CObjLocation) {
            out.bytes(entry.whole);
            continue;
        }
        const std::uint32_t index = LittleEndianReader(entry.operand, "location").u32();
        if (picture && index < tables_.blobs.size() && tables_.blobs[index] != nullptr) {
            out.u16(sprm::CPicLocation);
            out.u32(data_.offsetOf(tables_.blobs[index]));
        } else if (!picture && index < tables_.objects.size() &&
                   tables_.objects[index] != nullptr) {
            out.u16(sprm::CPicLocation);
            out.u32(objects_.numberOf(tables_.objects[index]));
        }
    }
    return out.take();
}

} // namespace qvnd::word
