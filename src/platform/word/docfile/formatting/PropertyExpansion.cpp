#include "platform/word/docfile/formatting/PropertyExpansion.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/format/SprmFacts.h"
#include "platform/word/docfile/formatting/ParagraphPages.h"
#include "platform/word/docfile/formatting/SoundSprms.h"
#include "platform/word/docfile/text/PieceTable.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// What is behind the last whole entry, unless it is padding.
bool brokenOff(ByteView list, const ParsedSprms& parsed) {
    std::size_t used = 0;
    for (const SprmView& entry : parsed.sprms) {
        used += entry.whole.size();
    }
    const ByteView rest = list.subspan(used);
    return rest.size() > 1 && std::any_of(rest.begin(), rest.end(), [](auto b) { return b != 0; });
}

std::uint32_t number(ByteView operand) { return LittleEndianReader(operand, "sprm operand").u32(); }

bool isOn(ByteView list, SprmOpcode opcode) {
    const auto found = findSprm(list, opcode);
    return found && found->operand[0] != 0;
}

constexpr StyleIndex firstHeading = 1;
constexpr StyleIndex lastHeading = 9;

StyleIndex withLevel(StyleIndex style, std::int8_t change) {
    const bool heading = style >= firstHeading && style <= lastHeading;
    return heading
               ? static_cast<StyleIndex>(std::clamp<int>(style + change, firstHeading, lastHeading))
               : style;
}

// SPPOperand: from and to a style, then what each of them becomes.
StyleIndex permuted(StyleIndex style, ByteView operand) {
    LittleEndianReader reader(operand, "sprmPIstdPermute");
    if (operand.size() < 7) {
        return style;
    }
    reader.skip(3);
    const StyleIndex first = reader.u16();
    const StyleIndex last = reader.u16();
    const std::size_t place = style - std::size_t{first};
    if (style < first || style > last || reader.remaining() < (place + 1) * 2) {
        return style;
    }
    reader.skip(place * 2);
    return reader.u16();
}

// Whether the entry is one that changes the style, and then the change.
bool changesStyle(const SprmView& entry, StyleIndex& style) {
    switch (entry.opcode) {
    case sprm::PIstd:
        style = LittleEndianReader(entry.operand, "sprmPIstd").u16();
        return true;
    case sprm::PIncLvl:
        style = withLevel(style, static_cast<std::int8_t>(entry.operand[0]));
        return true;
    case sprm::PIstdPermute:
        style = permuted(style, entry.operand);
        return true;
    default:
        return false;
    }
}

bool refersToData(SprmOpcode opcode) { return factsOf(opcode).target == SprmTarget::dataStream; }

std::uint64_t key(PropertyListId list, std::uint16_t modifier, StyleIndex style = 0) {
    return (std::uint64_t{static_cast<std::uint32_t>(list)} << 32) |
           (std::uint64_t{modifier} << 16) | style;
}

} // namespace

PropertyExpansion::PropertyExpansion(const Streams& streams, const EmbeddedObjects& objects,
                                     DocumentTables& tables)
    : dataStream_(streams.data), objects_(objects), tables_(tables),
      blobs_(streams.data, tables.blobs), budget_(2 * streams.mainSize),
      // Lists that differ may refer to one record.
      referredBudget_(4 * streams.data.size()) {}

PropertyListId PropertyExpansion::characters(ByteView list) {
    if (list.empty()) {
        return PropertyListId::empty;
    }
    std::string content(list.begin(), list.end());
    if (const auto known = characters_.find(content); known != characters_.end()) {
        return known->second;
    }
    if (!budget_.take(list.size())) {
        ++damagedLists_;
        return PropertyListId::empty;
    }
    const PropertyListId id = expandedCharacters(list);
    characters_.emplace(std::move(content), id);
    return id;
}

PropertyListId PropertyExpansion::expandedCharacters(ByteView list) {
    const ParsedSprms parsed = parseSprms(list);
    bool damaged = brokenOff(list, parsed);
    const bool object = isOn(list, sprm::CFOle2) || isOn(list, sprm::CFObj);
    Bytes result;
    for (const SprmView& entry : parsed.sprms) {
        if (groupOf(entry.opcode) != SprmGroup::character) {
            damaged = true;
        } else if (entry.opcode == sprm::CObjLocation) {
            continue; // of older writers: leads nowhere in these files
        } else if (entry.opcode != sprm::CPicLocation) {
            append(result, entry.whole);
        } else if (object) {
            if (const auto index = objectIndex(number(entry.operand))) {
                append(result, withSprm32({}, sprm::CObjLocation, *index));
            }
        } else if (const auto index = blobs_.indexOf(number(entry.operand))) {
            append(result, withSprm32({}, sprm::CPicLocation, *index));
        }
    }
    damagedLists_ += damaged ? 1 : 0;
    return tables_.lists.intern(result);
}

std::optional<std::uint32_t> PropertyExpansion::objectIndex(std::uint32_t number) {
    const auto found = objects_.find(number);
    if (found == objects_.end()) {
        return std::nullopt;
    }
    const auto next = static_cast<std::uint32_t>(tables_.objects.size());
    const auto [known, isNew] = objectIndexes_.try_emplace(number, next);
    if (isNew) {
        tables_.objects.push_back(found->second);
    }
    return known->second;
}

PropertyExpansion::Paragraph PropertyExpansion::paragraph(StyleIndex style, ByteView list) {
    std::string content(list.begin(), list.end());
    content.push_back(static_cast<char>(style));
    content.push_back(static_cast<char>(style >> 8));
    if (const auto known = paragraphs_.find(content); known != paragraphs_.end()) {
        return known->second;
    }
    if (!budget_.take(list.size())) {
        ++damagedLists_;
        return {style, PropertyListId::empty};
    }
    Bytes result;
    appendParagraphEntries(result, style, list, true);
    const Paragraph paragraph{style, tables_.lists.intern(result)};
    paragraphs_.emplace(std::move(content), paragraph);
    return paragraph;
}

void PropertyExpansion::appendParagraphEntries(Bytes& result, StyleIndex& style, ByteView list,
                                               bool outer) {
    const ParsedSprms parsed = parseSprms(list);
    bool damaged = brokenOff(list, parsed);
    for (const SprmView& entry : parsed.sprms) {
        const SprmGroup group = groupOf(entry.opcode);
        if ((group != SprmGroup::paragraph && group != SprmGroup::table) ||
            !hasSoundOperand(entry)) {
            damaged = true;
        } else if (refersToData(entry.opcode)) {
            // A record that refers on would run in circles.
            damaged = damaged || !outer;
            if (outer) {
                appendReferred(result, style, number(entry.operand));
            }
        } else if (!changesStyle(entry, style)) {
            append(result, entry.whole);
        }
    }
    damagedLists_ += damaged ? 1 : 0;
}

void PropertyExpansion::appendReferred(Bytes& result, StyleIndex& style, std::uint32_t offset) {
    try {
        const ByteView list = decodePrcData(dataStream_, offset);
        if (referredBudget_.take(list.size())) {
            appendParagraphEntries(result, style, list, false);
            return;
        }
    } catch (const FormatError&) {
        // Counted below: the paragraph keeps what else it has.
    }
    ++damagedLists_;
}

PropertyListId PieceModifiers::characters(PropertyListId properties, std::uint16_t modifier) {
    if (modifier == 0) {
        return properties;
    }
    const auto known = joined_.find(key(properties, modifier));
    if (known != joined_.end()) {
        return known->second;
    }
    const PropertyListId added = modifierOf(modifier).characters;
    const PropertyListId result = added == PropertyListId::empty
                                      ? properties
                                      : lists_.intern(joined(properties, lists_[added]));
    joined_.emplace(key(properties, modifier), result);
    return result;
}

PropertyExpansion::Paragraph PieceModifiers::paragraph(PropertyExpansion::Paragraph paragraph,
                                                       std::uint16_t modifier) {
    if (modifier == 0) {
        return paragraph;
    }
    const std::uint64_t wanted = key(paragraph.properties, modifier, paragraph.style);
    const auto known = joinedParagraphs_.find(wanted);
    if (known != joinedParagraphs_.end()) {
        return known->second;
    }
    Bytes added;
    for (const SprmView& entry : parseSprms(modifierOf(modifier).all).sprms) {
        const SprmGroup group = groupOf(entry.opcode);
        if (group == SprmGroup::paragraph || group == SprmGroup::table) {
            append(added, entry.whole);
        }
    }
    const auto result =
        added.empty() ? paragraph
                      : expansion_.paragraph(paragraph.style, joined(paragraph.properties, added));
    joinedParagraphs_.emplace(wanted, result);
    return result;
}

const PieceModifiers::Modifier& PieceModifiers::modifierOf(std::uint16_t modifier) {
    const auto known = modifiers_.find(modifier);
    if (known != modifiers_.end()) {
        return known->second;
    }
    Modifier result;
    result.all = modifierProperties(complexModifiers_, modifier);
    Bytes characters;
    for (const SprmView& entry : parseSprms(result.all).sprms) {
        if (groupOf(entry.opcode) == SprmGroup::character) {
            append(characters, entry.whole);
        }
    }
    result.characters = expansion_.characters(characters);
    return modifiers_.emplace(modifier, std::move(result)).first->second;
}

// Many lists times a long modifier could outgrow any memory: then the modifier is left out.
Bytes PieceModifiers::joined(PropertyListId properties, ByteView added) {
    const ByteView own = lists_[properties];
    Bytes result(own.begin(), own.end());
    if (budget_.take(own.size() + added.size())) {
        append(result, added);
    }
    return result;
}

} // namespace qvnd::word
