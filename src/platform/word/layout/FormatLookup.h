#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <cstdint>
#include <map>
#include <utility>

namespace qvnd::word {

// What of a run's formatting bears on its size. Lengths in twips.
struct CharacterSize {
    int halfPoints = 20;
    bool hidden = false;
    bool special = false; // the character stands for something else (sprmCFSpec)
    int pictureWidth = 0; // of the picture that a character U+0001 stands for
    int pictureHeight = 0;
};

// What of a paragraph's formatting bears on its place. Lengths in twips.
struct ParagraphPlace {
    int left = 0;
    int right = 0;
    int firstLine = 0;
    int before = 0;
    int after = 0;
    int lineValue = 240; // LSPD.dyaLine
    bool lineIsMultiple = true;
    bool pageBreakBefore = false;
    bool keepWithNext = false;
    bool framed = false; // out of the flow
    int tableDepth = 0;
    bool endsRow = false; // the row mark of depth 1 (sprmPFTtp) or deeper (sprmPFInnerTtp)
    bool endsInnerCell = false;
    PropertyListId properties = PropertyListId::empty; // its own list, with the row's definition
};

// Resolves formatting through the style sheet, each combination once.
class FormatLookup {
public:
    explicit FormatLookup(const DocumentTables& tables) : tables_(tables) {}

    const ParagraphPlace& paragraph(StyleIndex style, PropertyListId properties);
    const CharacterSize& character(StyleIndex paragraphStyle, PropertyListId properties);

private:
    using Key = std::pair<StyleIndex, PropertyListId>;

    void applyStyle(ParagraphPlace& place, StyleIndex style, int depth) const;
    void applyStyle(CharacterSize& size, StyleIndex style, int depth) const;
    void apply(CharacterSize& size, ByteView list) const;
    void measurePicture(CharacterSize& size, std::uint32_t blob) const;

    const DocumentTables& tables_;
    std::map<Key, ParagraphPlace> paragraphs_;
    std::map<Key, CharacterSize> characters_;
};

} // namespace qvnd::word
