#include "platform/word/engine/PropertyRewriter.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// What an operand names, and where in the operand the name stands.
enum class Reference {
    none,
    font,
    characterStyle,
    paragraphStyle,
    tableStyle,
    list,
    blob,
    object,
    author,
    levelFonts, // OLST: nine ANLV with a font each
    elsewhere,  // into something that does not travel: the entry is dropped
};

struct ReferencePlace {
    Reference kind = Reference::none;
    std::size_t at = 0;
};

ReferencePlace placeOfCharacter(SprmOpcode opcode) {
    switch (opcode) {
    case sprm::CRgFtc0:
    case sprm::CRgFtc1:
    case sprm::CRgFtc2:
    case sprm::CFtcBi:
    case sprm::CFtc:
    case sprm::CSymbol:
        return {Reference::font, 0};
    case sprm::CIstd:
        return {Reference::characterStyle, 0};
    case sprm::CPicLocation:
        return {Reference::blob, 0};
    case sprm::CIbstRMark:
    case sprm::CIbstRMarkDel:
        return {Reference::author, 0};
    case sprm::CPropRMark90:
    case sprm::CPropRMark:
    case sprm::CDispFldRMark:
        return {Reference::author, 2}; // behind the length and a flag
    case sprm::CObjLocation:
        return {Reference::object, 0};
    case sprm::CPbiIBullet:
    case sprm::CPbiGrf:
    case sprm::CIstdPermute:
        return {Reference::elsewhere, 0};
    default:
        return {};
    }
}

ReferencePlace placeOfOther(SprmOpcode opcode) {
    switch (opcode) {
    case sprm::PIstd:
        return {Reference::paragraphStyle, 0};
    case sprm::TIstd:
        return {Reference::tableStyle, 0};
    case sprm::PIlfo:
        return {Reference::list, 0};
    case sprm::PNumRM:
        return {Reference::author, 3}; // ibstNumRM of NumRM
    case sprm::PPropRMark90:
    case sprm::PPropRMark:
    case sprm::SPropRMark90:
    case sprm::SPropRMark:
    case sprm::TPropRMark:
        return {Reference::author, 2};
    case sprm::PAnld80:
        return {Reference::font, 7}; // ftc of the ANLV, behind the length
    case sprm::SOlstAnm80:
        return {Reference::levelFonts, 0};
    case sprm::PIstdPermute:
        return {Reference::elsewhere, 0};
    default:
        return {};
    }
}

ReferencePlace placeOf(SprmOpcode opcode) {
    return groupOf(opcode) == SprmGroup::character ? placeOfCharacter(opcode)
                                                   : placeOfOther(opcode);
}

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
bool translate(Bytes& operand, ReferencePlace place, ImportReferences& references) {
    switch (place.kind) {
    case Reference::none:
        return true;
    case Reference::font:
        return translate16(operand, place.at,
                           [&](std::uint16_t ftc) { return references.font(ftc); });
    case Reference::characterStyle:
        return translateStyle(operand, StyleKind::character, references);
    case Reference::paragraphStyle:
        return translateStyle(operand, StyleKind::paragraph, references);
    case Reference::tableStyle:
        return translateStyle(operand, StyleKind::table, references);
    case Reference::list:
        return translate16(operand, place.at, [&](std::uint16_t ilfo) {
            return std::optional(references.list(ilfo));
        });
    case Reference::author:
        return translate16(operand, place.at,
                           [&](std::uint16_t index) { return references.author(index); });
    case Reference::blob:
        return translate32(operand, [&](std::uint32_t index) { return references.blob(index); });
    case Reference::object:
        return translate32(operand, [&](std::uint32_t index) { return references.object(index); });
    case Reference::levelFonts:
        return translateLevelFonts(operand, references);
    case Reference::elsewhere:
        return false;
    }
    return true;
}

// Marks of an object, which mean nothing without one.
bool marksObject(SprmOpcode opcode) { return opcode == sprm::CFOle2 || opcode == sprm::CFObj; }

bool bringsObject(const ParsedSprms& parsed, ImportReferences& references) {
    return std::any_of(parsed.sprms.begin(), parsed.sprms.end(), [&](const SprmView& entry) {
        return entry.opcode == sprm::CObjLocation &&
               references.object(LittleEndianReader(entry.operand, "sprmCObjLocation").u32());
    });
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
    Bytes result;
    result.reserve(list.size());
    for (const SprmView& entry : parsed.sprms) {
        const ReferencePlace place = placeOf(entry.opcode);
        if (!object && marksObject(entry.opcode)) {
            continue;
        }
        Bytes operand(entry.operand.begin(), entry.operand.end());
        if (translate(operand, place, references_)) {
            result.insert(result.end(), entry.whole.begin(), entry.whole.begin() + 2);
            result.insert(result.end(), operand.begin(), operand.end());
        }
    }
    return target_.intern(result);
}

} // namespace qvnd::word
