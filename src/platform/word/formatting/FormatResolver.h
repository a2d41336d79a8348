#pragma once

#include "platform/word/docfile/text/TablePlaces.h"
#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/formatting/ResolvedRow.h"
#include "platform/word/formatting/ResolvedText.h"
#include "platform/word/formatting/StyleResolver.h"
#include "platform/word/formatting/TableStyles.h"

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

namespace qvnd::word {

// What the style of a table says of a cell; none outside tables.
enum class CellLook : std::uint16_t { none };

// Resolves the formatting of one document: styles, list levels and direct formatting together. Each
// combination is resolved once and cached. Returned references stay valid for the object's
// lifetime.
class FormatResolver {
public:
    // `tables` must outlive the object. `office`: as the office suite does: see
    // StyleResolver; a paragraph whose list level gives its indents has no right indent; the style
    // of a table says nothing of its text.
    explicit FormatResolver(const DocumentTables& tables, bool office = false);

    // `properties`: the direct formatting over the style.
    const ResolvedParagraph& paragraph(StyleIndex style, PropertyListId properties,
                                       CellLook cell = CellLook::none);
    const ResolvedText& text(StyleIndex paragraphStyle, PropertyListId properties,
                             CellLook cell = CellLook::none);
    // The formatting of a list label: that of the text, with the character properties of the list
    // level applied on top.
    const ResolvedText& label(StyleIndex paragraphStyle, PropertyListId properties,
                              PropertyListId level, CellLook cell = CellLook::none);
    CellLook cellLook(const TableStyle& table, const CellPlace& cell);
    // The background that the style of its table gives to a cell.
    std::optional<std::uint32_t> background(CellLook cell) const;
    // `properties`: those of the row's end mark.
    const ResolvedRow& row(PropertyListId properties);
    // Where a paragraph stands in tables. `mark`: the paragraph's last character.
    TablePlace place(PropertyListId properties, char16_t mark) {
        return places_.of(properties, mark);
    }
    ListLevels& levels() { return levels_; }

private:
    ResolvedProperties resolved(StyleIndex paragraphStyle, PropertyListId properties,
                                CellLook cell);
    const TableStyles::Layers& layersOf(CellLook cell) const;

    // A style, the direct formatting over it, and what is below it.
    using Key = std::uint64_t;
    static Key keyOf(StyleIndex style, PropertyListId properties, CellLook cell) {
        constexpr unsigned bitsOfStyle = 16;
        constexpr unsigned bitsOfBoth = 48;
        return Key{static_cast<std::uint16_t>(cell)} << bitsOfBoth |
               Key{static_cast<std::uint32_t>(properties)} << bitsOfStyle | style;
    }

    const DocumentTables& tables_;
    const bool office_;
    ListLevels levels_;
    StyleResolver styles_;
    TablePlaces places_;
    TableStyles tableStyles_;
    std::map<std::pair<StyleIndex, unsigned>, CellLook> cells_; // by style and parts
    std::deque<TableStyles::Layers> layers_;                    // by CellLook, from 1 on
    std::unordered_map<Key, ResolvedParagraph> paragraphs_;
    std::unordered_map<Key, ResolvedText> texts_;
    std::map<std::pair<Key, PropertyListId>, ResolvedText> labels_;
    std::unordered_map<PropertyListId, ResolvedRow> rows_;
};

} // namespace qvnd::word
