#include "platform/word/layout/FormatLookup.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr int deepestStyle = 16; // a chain of bases longer than this is a cycle
constexpr int roman10 = 20;      // half-points of a run that says nothing

std::uint32_t value(const SprmView& sprm) {
    std::uint32_t result = 0;
    for (std::size_t i = 0; i < std::min<std::size_t>(sprm.operand.size(), 4); ++i) {
        result |= std::uint32_t{sprm.operand[i]} << (8 * i);
    }
    return result;
}

int signedValue(const SprmView& sprm) { return static_cast<std::int16_t>(value(sprm)); }

void applyIndentOrSpacing(ParagraphPlace& place, const SprmView& sprm) {
    switch (sprm.opcode) {
    case sprm::PDxaLeft80:
    case sprm::PDxaLeft:
        place.left = signedValue(sprm);
        break;
    case sprm::PDxaRight80:
    case sprm::PDxaRight:
        place.right = signedValue(sprm);
        break;
    case sprm::PDxaLeft180:
    case sprm::PDxaLeft1:
        place.firstLine = signedValue(sprm);
        break;
    case sprm::PDyaBefore:
        place.before = static_cast<int>(value(sprm));
        break;
    case sprm::PDyaAfter:
        place.after = static_cast<int>(value(sprm));
        break;
    case sprm::PDyaLine:
        place.lineValue = signedValue(sprm);
        place.lineIsMultiple = (value(sprm) >> 16) == 1;
        break;
    default:
        break;
    }
}

void applyFlow(ParagraphPlace& place, const SprmView& sprm) {
    constexpr SprmOpcode keepFollow = 0x2406;
    switch (sprm.opcode) {
    case sprm::PFPageBreakBefore:
        place.pageBreakBefore = value(sprm) != 0;
        break;
    case keepFollow:
        place.keepWithNext = value(sprm) != 0;
        break;
    case sprm::PDxaAbs:
    case sprm::PDyaAbs:
    case sprm::PDxaWidth:
        place.framed = true;
        break;
    case sprm::PFInTable:
        place.tableDepth = std::max(place.tableDepth, value(sprm) != 0 ? 1 : 0);
        break;
    case sprm::PItap:
        place.tableDepth = static_cast<int>(std::min<std::uint32_t>(value(sprm), 32));
        break;
    case sprm::PFTtp:
    case sprm::PFInnerTtp:
        place.endsRow = value(sprm) != 0;
        break;
    case sprm::PFInnerTableCell:
        place.endsInnerCell = value(sprm) != 0;
        break;
    default:
        break;
    }
}

void apply(ParagraphPlace& place, ByteView list) {
    for (const SprmView& sprm : parseSprms(list).sprms) {
        applyIndentOrSpacing(place, sprm);
        applyFlow(place, sprm);
    }
}

const StyleDefinition* find(const DocumentTables& tables, StyleIndex style) {
    const auto& styles = tables.styles.styles;
    return style < styles.size() && styles[style] ? &*styles[style] : nullptr;
}

} // namespace

void FormatLookup::applyStyle(ParagraphPlace& place, StyleIndex style, int depth) const {
    const StyleDefinition* definition = find(tables_, style);
    if (definition == nullptr || depth > deepestStyle) {
        return;
    }
    applyStyle(place, definition->basedOn, depth + 1);
    word::apply(place, tables_.lists[definition->paragraph]);
}

void FormatLookup::applyStyle(CharacterSize& size, StyleIndex style, int depth) const {
    const StyleDefinition* definition = find(tables_, style);
    if (definition == nullptr || depth > deepestStyle) {
        return;
    }
    applyStyle(size, definition->basedOn, depth + 1);
    apply(size, tables_.lists[definition->character]);
}

const ParagraphPlace& FormatLookup::paragraph(StyleIndex style, PropertyListId properties) {
    const auto [at, isNew] = paragraphs_.try_emplace({style, properties});
    if (isNew) {
        applyStyle(at->second, style, 0);
        word::apply(at->second, tables_.lists[properties]);
        at->second.properties = properties;
    }
    return at->second;
}

const CharacterSize& FormatLookup::character(StyleIndex paragraphStyle, PropertyListId properties) {
    const auto [at, isNew] = characters_.try_emplace({paragraphStyle, properties});
    if (isNew) {
        at->second.halfPoints = roman10;
        applyStyle(at->second, paragraphStyle, 0);
        const ByteView list = tables_.lists[properties];
        if (const auto style = findSprm(list, sprm::CIstd)) {
            applyStyle(at->second, static_cast<StyleIndex>(value(*style)), 0);
        }
        apply(at->second, list);
    }
    return at->second;
}

void FormatLookup::apply(CharacterSize& size, ByteView list) const {
    for (const SprmView& sprm : parseSprms(list).sprms) {
        switch (sprm.opcode) {
        case sprm::CHps:
            size.halfPoints = static_cast<int>(std::clamp<std::uint32_t>(value(sprm), 2, 3276));
            break;
        case sprm::CFVanish:
            size.hidden = value(sprm) == 1;
            break;
        case sprm::CFSpec:
            size.special = value(sprm) == 1;
            break;
        case sprm::CPicLocation:
            measurePicture(size, value(sprm));
            break;
        default:
            break;
        }
    }
}

// The size that a PICF gives: its natural size times the scaling in thousandths.
void FormatLookup::measurePicture(CharacterSize& size, std::uint32_t blob) const {
    constexpr std::size_t goalAt = 0x1C; // PICMID after lcb, cbHeader and MFPF
    if (blob >= tables_.blobs.size() || !tables_.blobs[blob] ||
        tables_.blobs[blob]->size() < goalAt + 8) {
        return;
    }
    LittleEndianReader reader(*tables_.blobs[blob], "PICF");
    reader.seek(goalAt);
    const int width = reader.i16();
    const int height = reader.i16();
    const int scaleX = reader.u16();
    const int scaleY = reader.u16();
    size.pictureWidth = std::max(0, width) * scaleX / 1000;
    size.pictureHeight = std::max(0, height) * scaleY / 1000;
}

} // namespace qvnd::word
