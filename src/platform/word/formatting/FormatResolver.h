#pragma once

#include "platform/word/docfile/text/TablePlaces.h"
#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/formatting/ResolvedRow.h"
#include "platform/word/formatting/ResolvedText.h"
#include "platform/word/formatting/StyleResolver.h"

#include <map>
#include <utility>

namespace qvnd::word {

// Resolves the formatting of one document through its styles, each combination once. References
// stay valid as long as the object lives.
class FormatResolver {
public:
    // `tables` must outlive the object.
    explicit FormatResolver(const DocumentTables& tables);

    const ResolvedParagraph& paragraph(StyleIndex style, PropertyListId properties);
    const ResolvedText& text(StyleIndex paragraphStyle, PropertyListId properties);
    // The same with the characters of a list's level laid over it: the look of a label.
    const ResolvedText& label(StyleIndex paragraphStyle, PropertyListId properties,
                              PropertyListId level);
    // Of the row that ends with a mark of these properties.
    const ResolvedRow& row(PropertyListId properties);
    // `mark`: the paragraph's last character.
    TablePlace place(PropertyListId properties, char16_t mark) {
        return places_.of(properties, mark);
    }
    ListLevels& levels() { return levels_; }

private:
    ResolvedProperties resolved(StyleIndex paragraphStyle, PropertyListId properties);

    using Key = std::pair<StyleIndex, PropertyListId>;
    const DocumentTables& tables_;
    ListLevels levels_;
    StyleResolver styles_;
    TablePlaces places_;
    std::map<Key, ResolvedParagraph> paragraphs_;
    std::map<Key, ResolvedText> texts_;
    std::map<std::pair<Key, PropertyListId>, ResolvedText> labels_;
    std::map<PropertyListId, ResolvedRow> rows_;
};

} // namespace qvnd::word
