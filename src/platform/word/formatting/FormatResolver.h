#pragma once

#include "platform/word/docfile/text/TablePlaces.h"
#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/formatting/ResolvedRow.h"
#include "platform/word/formatting/ResolvedText.h"
#include "platform/word/formatting/StyleResolver.h"

#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

namespace qvnd::word {

// Resolves the formatting of one document: styles, list levels and direct formatting together. Each
// combination is resolved once and cached. Returned references stay valid for the object's
// lifetime.
class FormatResolver {
public:
    // `tables` must outlive the object. `office`: as the office suite does: see
    // StyleResolver; a paragraph whose list level gives its indents has no right indent.
    explicit FormatResolver(const DocumentTables& tables, bool office = false);

    // `properties`: the direct formatting over the style.
    const ResolvedParagraph& paragraph(StyleIndex style, PropertyListId properties);
    const ResolvedText& text(StyleIndex paragraphStyle, PropertyListId properties);
    // The formatting of a list label: that of the text, with the character properties of the list
    // level applied on top.
    const ResolvedText& label(StyleIndex paragraphStyle, PropertyListId properties,
                              PropertyListId level);
    // `properties`: those of the row's end mark.
    const ResolvedRow& row(PropertyListId properties);
    // Where a paragraph stands in tables. `mark`: the paragraph's last character.
    TablePlace place(PropertyListId properties, char16_t mark) {
        return places_.of(properties, mark);
    }
    ListLevels& levels() { return levels_; }

private:
    ResolvedProperties resolved(StyleIndex paragraphStyle, PropertyListId properties);

    // A style and the direct formatting over it.
    using Key = std::uint64_t;
    static Key keyOf(StyleIndex style, PropertyListId properties) {
        constexpr unsigned bitsOfStyle = 16;
        return Key{static_cast<std::uint32_t>(properties)} << bitsOfStyle | style;
    }

    const DocumentTables& tables_;
    const bool office_;
    ListLevels levels_;
    StyleResolver styles_;
    TablePlaces places_;
    std::unordered_map<Key, ResolvedParagraph> paragraphs_;
    std::unordered_map<Key, ResolvedText> texts_;
    std::map<std::pair<Key, PropertyListId>, ResolvedText> labels_;
    std::unordered_map<PropertyListId, ResolvedRow> rows_;
};

} // namespace qvnd::word
