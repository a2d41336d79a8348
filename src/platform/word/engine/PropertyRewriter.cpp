#include "platform/word/engine/PropertyRewriter.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/format/SprmFacts.h"
#include "platform/word/docfile/formatting/SoundSprms.h"

#include <algorithm>

namespace qvnd::word {

namespace {

std::uint16_t u16At(ByteView bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] | (bytes[at + 1] << 8));
}

void putU16(Bytes& bytes, std::size_t at, std::uint16_t value) {
    bytes[at] = static_cast<std::uint8_t>(value);
    bytes[at + 1] = static_cast<std::uint8_t>(value >> 8);
}

// Rewrites the 16-bit index at `at`; false when it names nothing.
template <class Translate>
bool translate16(Bytes& operand, std::size_t at, Translate translate) {
    if (operand.size() < at + 2) {
        return false;
    }
    const std::optional<std::uint16_t> there = translate(u16At(operand, at));
    putU16(operand, at, there.value_or(0));
    return there.has_value();
}

bool translateStyle(Bytes& operand, StyleKind kind, ImportReferences& references) {
    return translate16(operand, 0,
                       [&](std::uint16_t istd) { return references.style(istd, kind); });
}

// Rewrites the 32-bit index; false when it names nothing.
template <class Translate>
bool translate32(Bytes& operand, Translate translate) {
    const std::uint32_t index =
        u16At(operand, 0) | (static_cast<std::uint32_t>(u16At(operand, 2)) << 16);
    const std::optional<std::uint32_t> there = translate(index);
    putU16(operand, 0, static_cast<std::uint16_t>(there.value_or(0)));
    putU16(operand, 2, static_cast<std::uint16_t>(there.value_or(0) >> 16));
    return there.has_value();
}

bool translateLevelFonts(Bytes& operand, ImportReferences& references) {
    constexpr std::size_t anlvSize = 16;
    constexpr std::size_t fontAt = 6;
    for (std::size_t at = 1 + fontAt; at < 1 + 9 * anlvSize; at += anlvSize) {
        translate16(operand, at, [&](std::uint16_t ftc) { return references.font(ftc); });
    }
    return true;
}

// False when the entry means nothing in the target.
bool translate(Bytes& operand, const SprmFacts& facts, ImportReferences& references) {
    switch (facts.target) {
    case SprmTarget::none:
    case SprmTarget::dataStream: // the reader has put the list itself in its place
        return true;
    case SprmTarget::font:
        return translate16(operand, facts.targetAt,
                           [&](std::uint16_t ftc) { return references.font(ftc); });
    case SprmTarget::characterStyle:
        return translateStyle(operand, StyleKind::character, references);
    case SprmTarget::paragraphStyle:
        return translateStyle(operand, StyleKind::paragraph, references);
    case SprmTarget::tableStyle:
        return translateStyle(operand, StyleKind::table, references);
    case SprmTarget::list:
        return translate16(operand, facts.targetAt, [&](std::uint16_t ilfo) {
            return std::optional(references.list(ilfo));
        });
    case SprmTarget::author:
        return translate16(operand, facts.targetAt,
                           [&](std::uint16_t index) { return references.author(index); });
    case SprmTarget::blob:
        return translate32(operand, [&](std::uint32_t index) { return references.blob(index); });
    case SprmTarget::object:
        return translate32(operand, [&](std::uint32_t index) { return references.object(index); });
    case SprmTarget::bulletPicture:
        return translate32(operand,
                           [&](std::uint32_t index) { return references.bulletPicture(index); });
    case SprmTarget::levelFonts:
        return translateLevelFonts(operand, references);
    case SprmTarget::listInside: // lists inside are one level deep
    case SprmTarget::elsewhere:
        return false;
    }
    return true;
}

// A list inside an entry is of the same group. What it says of pictures, objects and the Data
// stream is still as the file has it, and means nothing.
bool mayStandInside(const SprmView& entry, SprmTarget target, SprmGroup group) {
    return groupOf(entry.opcode) == group && hasSoundOperand(entry) && target != SprmTarget::blob &&
           target != SprmTarget::object && target != SprmTarget::bulletPicture &&
           target != SprmTarget::dataStream;
}

bool translateInside(Bytes& operand, const SprmFacts& outer, ImportReferences& references) {
    const SprmGroup group = groupOf(outer.opcode);
    const auto changed = withListInside(operand, outer.targetAt, [&](const SprmView& entry) {
        const SprmFacts facts = factsOf(entry.opcode);
        Bytes inner(entry.operand.begin(), entry.operand.end());
        return mayStandInside(entry, facts.target, group) && translate(inner, facts, references)
                   ? withSprm({}, entry.opcode, inner)
                   : Bytes();
    });
    operand = changed.value_or(Bytes());
    return changed.has_value();
}

bool translateEntry(Bytes& operand, const SprmFacts& facts, ImportReferences& references) {
    return facts.target == SprmTarget::listInside ? translateInside(operand, facts, references)
                                                  : translate(operand, facts, references);
}

// Marks of an object, which mean nothing without one.
bool marksObject(SprmOpcode opcode) { return opcode == sprm::CFOle2 || opcode == sprm::CFObj; }

bool bringsObject(const ParsedSprms& parsed, ImportReferences& references) {
    return std::any_of(parsed.sprms.begin(), parsed.sprms.end(), [&](const SprmView& entry) {
        return entry.opcode == sprm::CObjLocation &&
               references.object(LittleEndianReader(entry.operand, "sprmCObjLocation").u32());
    });
}

// What makes a bullet a picture, which means nothing without one.
bool isOfBulletPicture(SprmOpcode opcode) {
    return opcode == sprm::CPbiGrf || opcode == sprm::CPbiIBullet;
}

bool showsBulletPicture(ByteView list, ImportReferences& references) {
    constexpr unsigned isPicture = 1; // fPicBullet of PbiGrfOperand
    const auto kind = findSprm(list, sprm::CPbiGrf);
    const auto picture = findSprm(list, sprm::CPbiIBullet);
    return kind && picture && (kind->operand[0] & isPicture) != 0 &&
           references.bulletPicture(LittleEndianReader(picture->operand, "sprmCPbiIBullet").u32());
}

} // namespace

PropertyListId PropertyRewriter::rewritten(PropertyListId id) {
    std::optional<PropertyListId>& known = known_.at(static_cast<std::size_t>(id));
    if (!known) {
        known = PropertyListId::empty; // what a damaged file makes a list of itself ends here
        known = rewrite(source_[id]);
    }
    return *known;
}

PropertyListId PropertyRewriter::rewrite(ByteView list) {
    const ParsedSprms parsed = parseSprms(list);
    const bool object = bringsObject(parsed, references_);
    const bool bullet = showsBulletPicture(list, references_);
    Bytes result;
    result.reserve(list.size());
    for (const SprmView& entry : parsed.sprms) {
        if ((!object && marksObject(entry.opcode)) ||
            (!bullet && isOfBulletPicture(entry.opcode))) {
            continue;
        }
        Bytes operand(entry.operand.begin(), entry.operand.end());
        if (translateEntry(operand, factsOf(entry.opcode), references_)) {
            result.insert(result.end(), entry.whole.begin(), entry.whole.begin() + 2);
            result.insert(result.end(), operand.begin(), operand.end());
        }
    }
    return target_.intern(result);
}

} // namespace qvnd::word
