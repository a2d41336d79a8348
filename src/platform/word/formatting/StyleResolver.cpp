#include "platform/word/formatting/StyleResolver.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/BuiltInStyles.h"
#include "platform/word/formatting/StyleProperties.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// Of documents that people write a few dozen are in use. A damaged one may use every pair of
// thousands of styles, of which none can be kept for long.
constexpr std::size_t mostKept = 1024;

template <class Known>
void makeRoom(Known& known) {
    if (known.size() >= mostKept) {
        known.clear();
    }
}

} // namespace

StyleResolver::StyleResolver(const StyleSheet& sheet,
                             const std::array<std::uint16_t, 4>& defaultFonts, ListOf listOf,
                             ListLevels& levels, bool office)
    : sheet_(sheet), office_(office), listOf_(std::move(listOf)), levels_(levels) {
    constexpr unsigned bareHalfPoints = 24;
    constexpr std::array<SprmOpcode, 4> fonts{sprm::CRgFtc0, sprm::CRgFtc1, sprm::CRgFtc2,
                                              sprm::CFtcBi};
    for (std::size_t i = 0; i < fonts.size(); ++i) {
        defaults_.set(entry16(fonts[i], defaultFonts[i]));
        bareDefaults_.set(entry16(fonts[i], bareStyleFont));
    }
    bareDefaults_.set(entry16(sprm::CHps, bareHalfPoints));
}

const StyleDefinition* StyleResolver::definition(StyleIndex style, StyleKind kind) const {
    const bool there =
        style < sheet_.styles.size() && sheet_.styles[style] && sheet_.styles[style]->kind == kind;
    return there ? &*sheet_.styles[style] : nullptr;
}

std::vector<StyleIndex> StyleResolver::chain(StyleIndex style, StyleKind kind) const {
    std::vector<StyleIndex> result;
    std::set<StyleIndex> seen;
    while (definition(style, kind) != nullptr && seen.insert(style).second) {
        result.push_back(style);
        const StyleDefinition& found = *sheet_.styles[style];
        style = lacksBase(found) ? StyleDefinition::none : found.basedOn;
    }
    std::reverse(result.begin(), result.end());
    return result;
}

bool StyleResolver::lacksBase(const StyleDefinition& style) const {
    return office_ && style.namesCharacterBase;
}

const ResolvedProperties& StyleResolver::defaultsOf(StyleIndex root) const {
    return lacksBase(*sheet_.styles[root]) ? bareDefaults_ : defaults_;
}

ResolvedProperties StyleResolver::paragraphAbove(std::span<const ByteView> below,
                                                 StyleIndex style) {
    ResolvedProperties look;
    const auto layers = chain(style, StyleKind::paragraph);
    if (!layers.empty() && lacksBase(*sheet_.styles[layers.front()])) {
        look.set(entry8(sprm::PFWidowControl, 0));
    }
    for (const ByteView list : below) {
        look.lay(list, levels_);
    }
    for (const StyleIndex layer : layers) {
        const StyleDefinition& definition = *sheet_.styles[layer];
        if (definition.sti >= sti::heading1 && definition.sti < sti::heading1 + 9) {
            // Word's own headings are at their level without saying so.
            look.set(entry8(sprm::POutLvl, definition.sti - sti::heading1));
        }
        look.lay(listOf_(definition.paragraph), levels_);
    }
    return look;
}

const ResolvedProperties& StyleResolver::paragraph(StyleIndex style) {
    if (const auto known = paragraphs_.find(style); known != paragraphs_.end()) {
        return known->second;
    }
    ResolvedProperties look = paragraphAbove({}, style);
    makeRoom(paragraphs_);
    return paragraphs_.emplace(style, std::move(look)).first->second;
}

void StyleResolver::layCharacters(StyleIndex style, StyleKind kind, ResolvedProperties& look) {
    for (const StyleIndex layer : chain(style, kind)) {
        look.lay(listOf_(sheet_.styles[layer]->character), levels_);
    }
}

ResolvedProperties StyleResolver::characterAbove(std::span<const ByteView> below,
                                                 StyleIndex paragraphStyle,
                                                 StyleIndex characterStyle) {
    const auto layers = chain(paragraphStyle, StyleKind::paragraph);
    ResolvedProperties look = layers.empty() ? defaults_ : defaultsOf(layers.front());
    for (const ByteView list : below) {
        look.lay(list, levels_);
    }
    layCharacters(paragraphStyle, StyleKind::paragraph, look);
    layCharacters(characterStyle, StyleKind::character, look);
    return look;
}

const ResolvedProperties& StyleResolver::character(StyleIndex paragraphStyle,
                                                   StyleIndex characterStyle) {
    const std::pair key(paragraphStyle, characterStyle);
    if (const auto known = characters_.find(key); known != characters_.end()) {
        return known->second;
    }
    const bool above = characterStyle != StyleDefinition::none;
    ResolvedProperties look = above ? character(paragraphStyle)
                                    : characterAbove({}, paragraphStyle, StyleDefinition::none);
    if (above) {
        layCharacters(characterStyle, StyleKind::character, look);
    }
    makeRoom(characters_);
    return characters_.emplace(key, std::move(look)).first->second;
}

} // namespace qvnd::word
