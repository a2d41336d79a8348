#include "platform/preview/Looks.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/PropertyValues.h"

#include <algorithm>
#include <cmath>

namespace qvnd::preview {

namespace {

using namespace word;

constexpr double twipsPerPoint = 20;
constexpr double ordinarySize = 10.5;
constexpr double farthest = 1584; // no indent or space is larger than the largest paper

double bounded(double points) { return std::clamp(points, -farthest, farthest); }

// In points, or in hundredths of a character, which count when they are there.
double indentOf(const ResolvedProperties& look, SprmOpcode inTwips, SprmOpcode inCharacters) {
    const auto characters = settingOf(look, inCharacters);
    if (characters && signedNumberOf(*characters) != 0) {
        return bounded(signedNumberOf(*characters) / 100.0 * ordinarySize);
    }
    return bounded(signedNumberOf(look, inTwips, 0) / twipsPerPoint);
}

Alignment alignmentOf(std::uint32_t jc) {
    switch (jc) {
    case 1:
        return Alignment::centre;
    case 2:
        return Alignment::right;
    case 3: // both sides
    case 4: // distributed
        return Alignment::justified;
    default:
        return Alignment::left;
    }
}

// LSPD, [MS-DOC] 2.9.134.
void readSpacing(const ResolvedProperties& look, ParagraphLook& result) {
    constexpr double singleLine = 240;
    constexpr double mostLines = 20;
    const std::uint32_t lspd = numberOf(look, sprm::PDyaLine, 0x000100F0);
    const auto line = static_cast<std::int16_t>(lspd & 0xFFFF);
    if (line == 0) {
        return;
    }
    if ((lspd >> 16) == 1) {
        result.line = std::clamp(line / singleLine, 0.1, mostLines);
        return;
    }
    result.spacing = line < 0 ? ParagraphLook::Spacing::exactly : ParagraphLook::Spacing::atLeast;
    result.line = bounded(std::abs(line) / twipsPerPoint);
}

void readTabStops(const ResolvedProperties& look, ParagraphLook& result) {
    constexpr unsigned kindMask = 7; // TBD.jc
    for (const auto& [position, tbd] : look.tabStops()) {
        const unsigned kind = tbd & kindMask;
        if (kind <= 3) { // a bar is no stop
            result.tabStops.push_back(
                {position / twipsPerPoint, kind == 3 ? Alignment::right : alignmentOf(kind)});
        }
    }
}

ParagraphLook paragraphLookOf(const ResolvedProperties& look) {
    constexpr unsigned levels = 9;
    ParagraphLook result;
    result.alignment = alignmentOf(numberOf(look, sprm::PJc80, 0));
    result.left = indentOf(look, sprm::PDxaLeft80, sprm::PDcxaLeft);
    result.right = indentOf(look, sprm::PDxaRight80, sprm::PDcxaRight);
    result.firstLine = indentOf(look, sprm::PDxaLeft180, sprm::PDcxaLeft1);
    result.before = bounded(numberOf(look, sprm::PDyaBefore, 0) / twipsPerPoint);
    result.after = bounded(numberOf(look, sprm::PDyaAfter, 0) / twipsPerPoint);
    readSpacing(look, result);
    readTabStops(look, result);
    const std::uint32_t level = numberOf(look, sprm::POutLvl, levels);
    result.headingLevel = level < levels ? static_cast<int>(level) + 1 : 0;
    result.startsPage = numberOf(look, sprm::PFPageBreakBefore, 0) != 0;
    if (const auto shading = settingOf(look, sprm::PShd80)) {
        result.background = colourOfShading(*shading);
    }
    return result;
}

std::optional<std::uint32_t> textColour(const ResolvedProperties& look) {
    const auto entry = settingOf(look, sprm::CIco);
    if (!entry) {
        return std::nullopt;
    }
    return entry->opcode == sprm::CIco ? colourOfIndex(numberOf(*entry))
                                       : colourOfReference(numberOf(*entry));
}

TextLook textLookOf(const ResolvedProperties& look) {
    constexpr double smallest = 1;
    constexpr double largest = 1638;
    TextLook result;
    result.points = std::clamp(numberOf(look, sprm::CHps, 20) / 2.0, smallest, largest);
    result.bold = look.toggle(sprm::CFBold);
    result.italic = look.toggle(sprm::CFItalic);
    result.underlined = numberOf(look, sprm::CKul, 0) != 0;
    result.struckOut = look.toggle(sprm::CFStrike) || numberOf(look, sprm::CFDStrike, 0) != 0;
    result.capitals = look.toggle(sprm::CFCaps);
    result.hidden = look.toggle(sprm::CFVanish);
    const std::uint32_t script = numberOf(look, sprm::CIss, 0);
    result.script = script == 1   ? TextLook::Script::raised
                    : script == 2 ? TextLook::Script::lowered
                                  : TextLook::Script::normal;
    result.colour = textColour(look);
    if (const auto shading = settingOf(look, sprm::CShd80)) {
        result.background = colourOfShading(*shading);
    }
    if (const auto marker = colourOfIndex(numberOf(look, sprm::CHighlight, 0))) {
        result.background = marker;
    }
    return result;
}

bool isSet(ByteView list, SprmOpcode opcode) {
    const auto entry = findSprm(list, opcode);
    return entry && entry->operand[0] != 0;
}

} // namespace

Looks::Looks(const DocumentTables& tables, std::vector<TextLook>& looks)
    : tables_(tables), looks_(looks), levels_(tables),
      styles_(
          tables.styles, tables.styles.defaultFonts,
          [&tables](PropertyListId id) { return tables.lists[id]; }, levels_) {}

const Looks::OfParagraph& Looks::paragraph(StyleIndex style, PropertyListId properties) {
    const auto [at, isNew] = paragraphs_.try_emplace({style, properties});
    if (isNew) {
        ResolvedProperties look = styles_.paragraph(style);
        look.lay(tables_.lists[properties], levels_);
        at->second = {paragraphLookOf(look), look.list(), look.listLevel()};
    }
    return at->second;
}

ResolvedProperties Looks::resolved(StyleIndex paragraphStyle, PropertyListId properties) {
    const ByteView own = tables_.lists[properties];
    const auto named = findSprm(own, sprm::CIstd);
    const auto style = named ? static_cast<StyleIndex>(numberOf(*named)) : StyleDefinition::none;
    ResolvedProperties look = styles_.character(paragraphStyle, style);
    look.lay(own, levels_);
    return look;
}

std::size_t Looks::text(StyleIndex paragraphStyle, PropertyListId properties) {
    const auto [at, isNew] = texts_.try_emplace({paragraphStyle, properties});
    if (isNew) {
        at->second = keep(resolved(paragraphStyle, properties), tables_.lists[properties]);
    }
    return at->second;
}

std::size_t Looks::label(StyleIndex paragraphStyle, PropertyListId properties,
                         PropertyListId level) {
    const auto [at, isNew] = labels_.try_emplace({{paragraphStyle, properties}, level});
    if (isNew) {
        ResolvedProperties look = resolved(paragraphStyle, properties);
        look.lay(tables_.lists[level], levels_);
        at->second = keep(look, {});
        looks_[at->second].underlined = isSet(tables_.lists[level], sprm::CKul);
        looks_[at->second].background.reset();
    }
    return at->second;
}

std::size_t Looks::keep(const ResolvedProperties& look, ByteView own) {
    TextLook result = textLookOf(look);
    const QString western = fontName(numberOf(look, sprm::CRgFtc0, 0));
    const QString chinese = fontName(numberOf(look, sprm::CRgFtc1, 0));
    result.fonts << western;
    if (chinese != western) {
        result.fonts << chinese;
    }
    result.struckOut = result.struckOut || isSet(own, sprm::CFRMarkDel);
    looks_.push_back(std::move(result));
    return looks_.size() - 1;
}

QString Looks::fontName(std::uint32_t index) const {
    return index < tables_.fonts.size() ? QString::fromStdU16String(tables_.fonts[index].name)
                                        : QString();
}

} // namespace qvnd::preview
