#pragma once

#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/ResolvedProperties.h"

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <utility>
#include <vector>

namespace qvnd::word {

// The font of text whose style names none and has no base, in the office suite: an index of no
// font.
inline constexpr std::uint16_t bareStyleFont = 0xFFFF;

// Resolves the styles of one style sheet, including base styles and document defaults ([MS-DOC]
// 2.4.6.5). Each style is resolved once and cached.
class StyleResolver {
public:
    // Returns the property list of an id, with its references in terms of the tables of `levels`.
    using ListOf = std::function<ByteView(PropertyListId)>;

    // `defaultFonts`: rgftcStandardChpStsh and ftcBi, as indexes into the same tables. The style
    // sheet and `levels` must outlive the object. `office`: as in the office suite a style of
    // paragraphs that names one of characters as its base has none, 12 points and no widow control.
    StyleResolver(const StyleSheet& sheet, const std::array<std::uint16_t, 4>& defaultFonts,
                  ListOf listOf, ListLevels& levels, bool office = false);

    // Returned references stay valid until the next call.
    // The paragraph formatting of a style; the defaults for an index without a paragraph style.
    const ResolvedProperties& paragraph(StyleIndex style);
    // The character formatting of a paragraph style with a character style on top;
    // StyleDefinition::none stands for no character style.
    const ResolvedProperties& character(StyleIndex paragraphStyle,
                                        StyleIndex characterStyle = StyleDefinition::none);
    // The same above lists that lie below all styles of paragraphs. They are not cached.
    ResolvedProperties paragraphAbove(std::span<const ByteView> below, StyleIndex style);
    ResolvedProperties characterAbove(std::span<const ByteView> below, StyleIndex paragraphStyle,
                                      StyleIndex characterStyle);

private:
    // The style and its base styles, root first. A cycle of base styles is cut where it closes.
    std::vector<StyleIndex> chain(StyleIndex style, StyleKind kind) const;
    const StyleDefinition* definition(StyleIndex style, StyleKind kind) const;
    bool lacksBase(const StyleDefinition& style) const;
    void layCharacters(StyleIndex style, StyleKind kind, ResolvedProperties& look);
    // What the character formatting of a paragraph style begins with.
    const ResolvedProperties& defaultsOf(StyleIndex root) const;

    const StyleSheet& sheet_;
    bool office_;
    ResolvedProperties defaults_;     // of characters
    ResolvedProperties bareDefaults_; // of characters of a style without its base
    ListOf listOf_;
    ListLevels& levels_;
    std::map<StyleIndex, ResolvedProperties> paragraphs_;
    std::map<std::pair<StyleIndex, StyleIndex>, ResolvedProperties> characters_;
};

} // namespace qvnd::word
