#include "platform/word/engine/RunFacts.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/format/TextParts.h"
#include "platform/word/engine/StyleLookup.h"

namespace qvnd::word {

RunFacts RunFactsTable::read(ByteView list) const {
    RunFacts facts;
    for (const SprmView& entry : parseSprms(list).sprms) {
        const unsigned first = entry.operand.empty() ? 0U : entry.operand[0];
        if (entry.opcode == sprm::CFSpec) {
            facts.special = first == 1;
        } else if (entry.opcode == sprm::CFData) {
            facts.data = first == 1;
        } else if (entry.opcode == sprm::CFOle2 || entry.opcode == sprm::CFObj) {
            facts.object = facts.object || first == 1;
        } else if (entry.opcode == sprm::CPicLocation) {
            LittleEndianReader operand(entry.operand, "sprmCPicLocation");
            facts.blob = operand.u32();
            facts.pictureThere = facts.blob < tables_.blobs.size() && tables_.blobs[facts.blob];
        } else if (entry.opcode == sprm::CObjLocation) {
            LittleEndianReader operand(entry.operand, "sprmCObjLocation");
            const std::uint32_t index = operand.u32();
            facts.objectThere = index < tables_.objects.size() && tables_.objects[index];
        } else if (entry.opcode == sprm::CIstd) {
            LittleEndianReader operand(entry.operand, "sprmCIstd");
            facts.characterStyle = operand.u16();
        }
    }
    if (!hasStyle(tables_.styles, facts.characterStyle, StyleKind::character)) {
        facts.characterStyle = StyleDefinition::none;
    }
    return facts;
}

const RunFacts& RunFactsTable::of(PropertyListId list) {
    std::optional<RunFacts>& known = facts_.at(static_cast<std::size_t>(list));
    if (!known) {
        known = read(lists_[list]);
    }
    return *known;
}

Missing missingAt(char16_t character, const RunFacts& facts, bool anchored) {
    if (character == special::picture) {
        if (facts.pictureThere || facts.objectThere) {
            return Missing::nothing;
        }
        const Missing blob = facts.data ? Missing::fieldData : Missing::picture;
        return facts.object ? Missing::object : blob;
    }
    if (anchored || !standsForText(character)) {
        return Missing::nothing;
    }
    return character == special::drawing ? Missing::drawing : Missing::note;
}

} // namespace qvnd::word
