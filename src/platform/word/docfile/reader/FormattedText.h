#pragma once

#include "platform/word/docfile/formatting/PropertyExpansion.h"
#include "platform/word/docfile/reader/OpenedDocument.h"
#include "platform/word/docfile/text/PieceTable.h"

#include <span>

namespace qvnd::word {

// The text of all stories of a file one after another, with its formatting: what the piece table,
// the pages of formatting and the pieces' modifiers come to ([MS-DOC] 2.4.1, 2.4.2, 2.4.6).
struct FormattedText {
    std::u16string text;
    std::vector<CharacterRun> characters; // lengths add up to text.size()
    // The same. Each ends in a paragraph mark (0x0D), a cell mark (0x07) or a break (0x0C) that
    // ends a paragraph, but perhaps the last.
    std::vector<ParagraphRun> paragraphs;

    Cp size() const { return static_cast<Cp>(text.size()); }
    // The part as a story of its own, without its fields. What is cut through goes on to the cut.
    Story part(Cp start, Cp length) const;
    // Fills what part() needs for parts that do not start at 0; call after the vectors are
    // complete.
    void index();

private:
    std::vector<Cp> characterStarts_;
    std::vector<Cp> paragraphStarts_;
};

// The pieces of the document. Where there is no table of pieces, one is made of what the FIB says
// of the text. Throws FormatError (damaged) when that leads nowhere.
PieceTable readPieceTable(const OpenedDocument& document, Remarks& remarks);

// `sectionEnds`: positions behind the break of each section, ascending. Everything unreadable is
// named in `remarks`; the invariants hold whatever the file says.
FormattedText readFormattedText(const OpenedDocument& document, const PieceTable& table,
                                std::span<const Cp> sectionEnds, PropertyExpansion& expansion,
                                PropertyLists& lists, Remarks& remarks);

} // namespace qvnd::word
