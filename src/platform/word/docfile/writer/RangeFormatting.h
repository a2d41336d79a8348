#pragma once

#include "platform/word/docfile/formatting/CharacterPages.h"
#include "platform/word/docfile/formatting/ParagraphPages.h"
#include "platform/word/docfile/writer/FileProperties.h"
#include "platform/word/docfile/writer/FragmentPlaces.h"

#include <set>
#include <vector>

namespace qvnd::word {

// The formatting of ranges that are written one behind the other. Neighbouring characters with
// equal properties become one run. A paragraph whose mark stands in a later range is joined with
// it where the document continues there, and has the properties of the mark's part. Where the
// document goes on elsewhere, one more character has to follow in the file, covered by the
// formatting but by no piece: a paragraph whose last character is the piece's last would end
// there ([MS-DOC] 2.4.2).
class RangeFormatting {
public:
    // The answers refer to `properties` and to its tables.
    RangeFormatting(const std::vector<TextRange>& ranges, const std::set<Cp>& sectionEnds,
                    FileProperties& properties);

    const std::vector<FormattedCharacters>& characters() const { return characters_; }
    const std::vector<FormattedParagraph>& paragraphs() const { return paragraphs_; }
    // By range: whether the character follows that keeps its last paragraph open.
    const std::vector<bool>& leftOpen() const { return leftOpen_; }

private:
    void addCharacters(const TextRange& range);
    void addParagraphs(const TextRange& range);
    bool endsParagraph(const TextRange& range, Cp runEnd) const;
    void finishParagraph();
    void leaveOpen();

    const std::set<Cp>& sectionEnds_;
    FileProperties& properties_;
    std::vector<FormattedCharacters> characters_;
    PropertyListId lastCharacters_ = PropertyListId::empty;
    std::vector<FormattedParagraph> paragraphs_;
    FormattedParagraph open_;
    std::vector<bool> leftOpen_;
};

} // namespace qvnd::word
