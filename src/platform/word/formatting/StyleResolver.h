#pragma once

#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/ResolvedProperties.h"

#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace qvnd::word {

// What the styles of one style sheet come to, base styles and document defaults included
// ([MS-DOC] 2.4.6.5), each worked out once.
class StyleResolver {
public:
    // The list that a style's property list is in terms of the tables that `levels` knows.
    using ListOf = std::function<ByteView(PropertyListId)>;

    // `defaultFonts` in the same terms: rgftcStandardChpStsh and ftcBi.
    StyleResolver(const StyleSheet& sheet, const std::array<std::uint16_t, 4>& defaultFonts,
                  ListOf listOf, ListLevels& levels);

    // Both answers are good until the next call.
    // Of paragraphs in that style. An index without a paragraph style: the defaults.
    const ResolvedProperties& paragraph(StyleIndex style);
    // Of characters in a paragraph of that style, and in a character style over it
    // (StyleDefinition::none for none).
    const ResolvedProperties& character(StyleIndex paragraphStyle,
                                        StyleIndex characterStyle = StyleDefinition::none);

private:
    // The style and what it is based on, root first; a circle ends where it closes.
    std::vector<StyleIndex> chain(StyleIndex style, StyleKind kind) const;
    const StyleDefinition* definition(StyleIndex style, StyleKind kind) const;

    const StyleSheet& sheet_;
    ResolvedProperties defaults_; // of characters
    ListOf listOf_;
    ListLevels& levels_;
    std::map<StyleIndex, ResolvedProperties> paragraphs_;
    std::map<std::pair<StyleIndex, StyleIndex>, ResolvedProperties> characters_;
};

} // namespace qvnd::word
