#include "platform/word/formatting/StyleProperties.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/format/SprmFacts.h"
#include "platform/word/formatting/PropertyValues.h"

#include <algorithm>

namespace qvnd::word {

namespace {

bool isShading(SprmOpcode opcode) { return opcode == sprm::PShd || opcode == sprm::CShd; }

bool isBorder(SprmOpcode opcode) {
    return (opcode >= sprm::PBrcTop && opcode <= sprm::PBrcBar) || opcode == sprm::CBrc;
}

Bytes opcodeBytes(SprmOpcode opcode) {
    return {static_cast<std::uint8_t>(opcode), static_cast<std::uint8_t>(opcode >> 8)};
}

Bytes entryOf(SprmOpcode opcode, std::uint32_t operand, std::size_t size) {
    Bytes entry = opcodeBytes(opcode);
    for (std::size_t i = 0; i < size; ++i) {
        entry.push_back(static_cast<std::uint8_t>(operand >> (8 * i)));
    }
    return entry;
}

// COLORREF of a colour by its index; a colour that is none is the automatic one.
std::uint32_t referenceOf(unsigned ico) {
    constexpr std::uint32_t automatic = 0xFF000000;
    const auto rgb = colourOfIndex(ico);
    return rgb ? ((*rgb & 0xFF) << 16) | (*rgb & 0xFF00) | (*rgb >> 16) : automatic;
}

// The operand of the entry that has the last word; of a colour its parts.
Bytes effectOf(ByteView entries) {
    const ParsedSprms parsed = parseSprms(entries);
    if (parsed.sprms.empty()) {
        return {};
    }
    const SprmView& last = parsed.sprms.back();
    if (last.opcode == sprm::CIco) {
        return entryOf(sprm::CCv, referenceOf(last.operand[0]), 4);
    }
    if (last.opcode == sprm::CCv || last.operand.size() > 2) {
        return {last.whole.begin(), last.whole.end()};
    }
    return {last.operand.begin(), last.operand.end()};
}

// SHDOperand with automatic colours and no pattern; BrcOperand without a border.
std::optional<Bytes> defaultOfVariableSize(SprmOpcode opcode) {
    Bytes entry = opcodeBytes(opcode);
    if (isShading(opcode)) {
        entry.insert(entry.end(), {10, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0});
        return entry;
    }
    if (isBorder(opcode)) {
        entry.insert(entry.end(), {8, 0, 0, 0, 0, 0, 0, 0, 0});
        return entry;
    }
    return std::nullopt;
}

} // namespace

SprmOpcode propertySetBy(SprmOpcode opcode) { return factsOf(opcode).property; }

bool isToggle(SprmOpcode opcode) { return factsOf(opcode).toggle; }

bool setsTabStops(SprmOpcode opcode) { return factsOf(opcode).kind == SprmKind::tabStops; }

bool belongsToLook(SprmOpcode opcode) {
    const SprmGroup group = groupOf(opcode);
    return (group == SprmGroup::paragraph || group == SprmGroup::character) &&
           factsOf(opcode).kind == SprmKind::look;
}

bool isIndent(SprmOpcode property) { return factsOf(property).indent; }

std::optional<Bytes> defaultEntry(SprmOpcode opcode) {
    const auto size = fixedOperandSize(opcode);
    return size ? entryOf(opcode, factsOf(opcode).plain, *size) : defaultOfVariableSize(opcode);
}

bool sameEffect(ByteView one, ByteView other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end()) ||
           effectOf(one) == effectOf(other);
}

Bytes entry8(SprmOpcode opcode, unsigned operand) { return entryOf(opcode, operand, 1); }
Bytes entry16(SprmOpcode opcode, unsigned operand) { return entryOf(opcode, operand, 2); }

} // namespace qvnd::word
