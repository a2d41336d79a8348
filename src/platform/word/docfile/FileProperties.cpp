#include "platform/word/docfile/FileProperties.h"

#include "platform/word/docfile/Sprm.h"
#include "platform/word/docfile/SprmCodes.h"

namespace qvnd::word {

ByteView FileProperties::of(PropertyListId id) {
    const ByteView list = tables_.lists[id];
    auto known = known_.find(id);
    if (known == known_.end()) {
        std::optional<Bytes> changed;
        if (findSprm(list, sprm::CPicLocation)) {
            changed = converted(list);
        }
        known = known_.emplace(id, std::move(changed)).first;
    }
    return known->second ? ByteView(*known->second) : list;
}

Bytes FileProperties::converted(ByteView list) {
    LittleEndianWriter out;
    for (const SprmView& entry : parseSprms(list).sprms) {
        if (entry.opcode != sprm::CPicLocation) {
            out.bytes(entry.whole);
            continue;
        }
        const std::uint32_t index = LittleEndianReader(entry.operand, "sprmCPicLocation").u32();
        if (index < tables_.blobs.size() && tables_.blobs[index] != nullptr) {
            out.u16(entry.opcode);
            out.u32(data_.offsetOf(tables_.blobs[index]));
        }
    }
    return out.take();
}

} // namespace qvnd::word
