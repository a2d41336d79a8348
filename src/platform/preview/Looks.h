#pragma once

#include "platform/preview/DocumentReading.h"
#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/formatting/ListNumbers.h"
#include "platform/word/formatting/StyleResolver.h"

#include <map>

namespace qvnd::preview {

// Resolves formatting through the styles, each combination once.
class Looks {
public:
    // `looks` takes the looks of text that come up. Both must outlive the object.
    Looks(const word::DocumentTables& tables, std::vector<TextLook>& looks);

    // What paragraphs of that style with those properties come to, and the list they are in.
    struct OfParagraph {
        ParagraphLook look;
        std::uint16_t list = 0; // operand of sprmPIlfo
        std::uint8_t listLevel = 0;
    };
    const OfParagraph& paragraph(word::StyleIndex style, word::PropertyListId properties);
    // Index of the look of characters.
    std::size_t text(word::StyleIndex paragraphStyle, word::PropertyListId properties);
    // The same with the characters of a list's level laid over it: the look of a label.
    std::size_t label(word::StyleIndex paragraphStyle, word::PropertyListId properties,
                      word::PropertyListId level);

    word::ListLevels& levels() { return levels_; }
    QString fontName(std::uint32_t index) const;

private:
    word::ResolvedProperties resolved(word::StyleIndex paragraphStyle,
                                      word::PropertyListId properties);
    std::size_t keep(const word::ResolvedProperties& look, word::ByteView own);

    const word::DocumentTables& tables_;
    std::vector<TextLook>& looks_;
    word::ListLevels levels_;
    word::StyleResolver styles_;
    using Key = std::pair<word::StyleIndex, word::PropertyListId>;
    std::map<Key, OfParagraph> paragraphs_;
    std::map<Key, std::size_t> texts_;
    std::map<std::pair<Key, word::PropertyListId>, std::size_t> labels_;
};

} // namespace qvnd::preview
