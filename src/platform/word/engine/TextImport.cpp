#include "platform/word/engine/TextImport.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/formatting/ParagraphPages.h"
#include "platform/word/docfile/text/StoryRepair.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr StyleIndex normalTable = 11; // the style of rows that name none

void add(std::vector<CharacterRun>& runs, Cp length, PropertyListId properties) {
    if (!runs.empty() && runs.back().properties == properties) {
        runs.back().length += length;
    } else {
        runs.push_back({length, properties});
    }
}

bool hasStyle(const StyleSheet& sheet, StyleIndex style, StyleKind kind) {
    return style < sheet.styles.size() && sheet.styles[style] && sheet.styles[style]->kind == kind;
}

} // namespace

TextImport::RunFacts TextImport::read(ByteView list) const {
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
            const std::uint32_t index = operand.u32();
            facts.pictureThere = index < source_.blobs.size() && source_.blobs[index];
        } else if (entry.opcode == sprm::CObjLocation) {
            LittleEndianReader operand(entry.operand, "sprmCObjLocation");
            const std::uint32_t index = operand.u32();
            facts.objectThere = index < source_.objects.size() && source_.objects[index];
        } else if (entry.opcode == sprm::CIstd) {
            LittleEndianReader operand(entry.operand, "sprmCIstd");
            facts.characterStyle = operand.u16();
        }
    }
    if (!hasStyle(source_.styles, facts.characterStyle, StyleKind::character)) {
        facts.characterStyle = StyleDefinition::none;
    }
    return facts;
}

const TextImport::RunFacts& TextImport::facts(PropertyListId list) {
    auto& known = facts_.at(static_cast<std::size_t>(list));
    if (!known) {
        known = read(source_.lists[list]);
    }
    return *known;
}

StyleIndex TextImport::effectiveStyle(StyleIndex style) const {
    return hasStyle(source_.styles, style, StyleKind::paragraph) ? style : StyleIndex{0};
}

Story TextImport::importedText(const Story& story) {
    Story result;
    result.text = story.text;
    result.fields = story.fields;
    result.anchors = story.anchors;
    result.paragraphs.reserve(story.paragraphs.size());
    auto run = story.characters.begin();
    Cp leftOfRun = run != story.characters.end() ? run->length : 0;
    for (const ParagraphRun& paragraph : story.paragraphs) {
        result.paragraphs.push_back(imported(paragraph));
        Cp left = paragraph.length;
        while (left > 0 && run != story.characters.end()) {
            const Cp part = std::min(left, leftOfRun);
            add(result.characters, part, importedRun(paragraph.style, run->properties));
            left -= part;
            leftOfRun -= part;
            if (leftOfRun == 0 && ++run != story.characters.end()) {
                leftOfRun = run->length;
            }
        }
    }
    return result;
}

ParagraphRun TextImport::imported(const ParagraphRun& paragraph) {
    StyleImport& styles = tables_.styles();
    const StyleIndex style = effectiveStyle(paragraph.style);
    const auto [direct, isNew] = directs_.try_emplace(paragraph.properties, PropertyListId::empty);
    if (isNew) {
        direct->second = withTableStyle(paragraph.properties,
                                        tables_.rewriter().rewritten(paragraph.properties));
    }
    return {paragraph.length, styles.paragraphStyle(style),
            fitted(styles.paragraph(style, direct->second))};
}

PropertyListId TextImport::importedRun(StyleIndex paragraphStyle, PropertyListId list) {
    return fitted(tables_.styles().character(effectiveStyle(paragraphStyle),
                                             facts(list).characterStyle,
                                             tables_.rewriter().rewritten(list)));
}

// The list itself where a file has room for it, else what of it there is room for.
PropertyListId TextImport::fitted(PropertyListId list) {
    const ByteView whole = target_.lists[list];
    if (whole.size() <= longestPrcData) {
        return list;
    }
    const auto [known, isNew] = fitted_.try_emplace(list, list);
    if (isNew) {
        ++longFormats_;
        known->second = target_.lists.intern(cutSprms(whole, longestPrcData).list);
    }
    return known->second;
}

Story TextImport::imported(const Story& story) {
    Story result = importedText(story);
    markSpecial(result, target_.lists);
    return result;
}

// A row that names no table style has the normal one; where the target defines that otherwise,
// the row has to name its own.
PropertyListId TextImport::withTableStyle(PropertyListId list, PropertyListId rewritten) {
    const ByteView entries = source_.lists[list];
    const bool rowWithoutStyle =
        findSprm(entries, sprm::TDefTable) && !findSprm(entries, sprm::TIstd);
    if (!rowWithoutStyle) {
        return rewritten;
    }
    const auto there = tables_.style(normalTable, StyleKind::table);
    if (!there || *there == normalTable) {
        return rewritten;
    }
    Bytes named;
    named = withSprm16(named, sprm::TIstd, *there);
    const ByteView rest = target_.lists[rewritten];
    named.insert(named.end(), rest.begin(), rest.end());
    return target_.lists.intern(named);
}

} // namespace qvnd::word
