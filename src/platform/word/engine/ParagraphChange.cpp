#include "platform/word/engine/ParagraphChange.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/formatting/FormatResolver.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

namespace qvnd::word {

namespace {

constexpr std::array tablePlace{sprm::PFInTable, sprm::PFTtp, sprm::PItap, sprm::PFInnerTableCell,
                                sprm::PFInnerTtp};

bool isRowMark(ByteView list) {
    return sprmValue(list, sprm::PFTtp, 0) != 0 || sprmValue(list, sprm::PFInnerTtp, 0) != 0;
}

Bytes only(ByteView list, const std::vector<SprmOpcode>& opcodes) {
    Bytes kept;
    for (const SprmView& entry : parseSprms(list).sprms) {
        if (std::find(opcodes.begin(), opcodes.end(), entry.opcode) != opcodes.end()) {
            kept.insert(kept.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    return kept;
}

Bytes withIndent(ByteView list, int twips, std::optional<int> hundredths) {
    constexpr int limit = 31680; // the format's widest page
    const auto operand = static_cast<std::uint16_t>(std::clamp(twips, -limit, limit));
    Bytes result = withSprm16(list, sprm::PDxaLeft80, operand);
    result = withSprm16(result, sprm::PDxaLeft, operand);
    result = withoutSprm(result, sprm::PDcxaLeft);
    if (hundredths) {
        result = withSprm16(result, sprm::PDcxaLeft, static_cast<std::uint16_t>(*hundredths));
    }
    return result;
}

} // namespace

LookChange alignmentChange(PropertyLists& lists, Alignment alignment) {
    return [&lists, alignment](const ParagraphLook& look) {
        if (isRowMark(lists[look.properties])) {
            return look;
        }
        const auto operand = static_cast<unsigned>(alignment);
        const Bytes list = withSprm8(lists[look.properties], sprm::PJc80, operand);
        return ParagraphLook{look.style, lists.intern(withSprm8(list, sprm::PJc, operand))};
    };
}

LookChange indentChange(DocumentTables& tables, int count, int characterWidth) {
    const auto formats = std::make_shared<FormatResolver>(tables);
    return [&tables, formats, count, characterWidth](const ParagraphLook& look) {
        const ByteView list = tables.lists[look.properties];
        if (count == 0 || isRowMark(list)) {
            return look;
        }
        const Indent indent = formats->paragraph(look.style, look.properties).left;
        // An indent in characters overrules one in twips, so it is set only where it says it all.
        const bool saysAll = indent.characters != 0 || indent.twips == 0;
        constexpr int hundredthsPerCharacter = 100;
        const int changed = indent.characters + count * hundredthsPerCharacter;
        const Bytes result = withIndent(list, indent.twips + count * characterWidth,
                                        saysAll ? std::optional(changed) : std::nullopt);
        return ParagraphLook{look.style, tables.lists.intern(result)};
    };
}

LookChange styleChange(PropertyLists& lists, StyleIndex style) {
    return [&lists, style](const ParagraphLook& look) {
        std::vector<SprmOpcode> kept(tablePlace.begin(), tablePlace.end());
        kept.push_back(sprm::PFPageBreakBefore);
        const ByteView list = lists[look.properties];
        if (isRowMark(list)) {
            return look;
        }
        return ParagraphLook{style, lists.intern(only(list, kept))};
    };
}

bool hasPageBreak(const PropertyLists& lists, const ParagraphLook& look) {
    return sprmValue(lists[look.properties], sprm::PFPageBreakBefore, 0) != 0;
}

ParagraphLook withPageBreak(PropertyLists& lists, const ParagraphLook& look, bool pageBreak) {
    const ByteView list = lists[look.properties];
    return {look.style, lists.intern(pageBreak ? withSprm8(list, sprm::PFPageBreakBefore, 1)
                                               : withoutSprm(list, sprm::PFPageBreakBefore))};
}

ParagraphLook nextLook(DocumentTables& tables, const ParagraphLook& look) {
    const auto& styles = tables.styles.styles;
    const StyleIndex next =
        look.style < styles.size() && styles[look.style] ? styles[look.style]->next : look.style;
    if (next == look.style || next >= styles.size() || !styles[next]) {
        return withPageBreak(tables.lists, look, false);
    }
    return withPageBreak(tables.lists, styleChange(tables.lists, next)(look), false);
}

} // namespace qvnd::word
