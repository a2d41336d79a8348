#pragma once

#include "platform/word/docfile/formatting/CharacterPages.h"
#include "platform/word/docfile/formatting/ParagraphPages.h"
#include "platform/word/docfile/writer/FileProperties.h"
#include "platform/word/docfile/writer/FragmentPlaces.h"

#include <functional>
#include <vector>

namespace qvnd::word {

// The formatting of ranges that are written one behind the other. Neighbouring characters with
// equal properties become one run. A paragraph whose mark stands in a later range is joined with
// it where the document continues there, and has the properties of the mark's part. Where the
// document goes on elsewhere, one more character has to follow in the file, covered by the
// formatting but by no piece: a paragraph whose last character is the piece's last would end
// there ([MS-DOC] 2.4.2). Runs are told one by one: a document may have one for each character.
class RangeFormatting {
public:
    // All outlive the object.
    RangeFormatting(const std::vector<TextRange>& ranges, const std::vector<Cp>& sectionEnds,
                    FileProperties& properties);

    // The views live as long as the properties and their tables.
    void tellCharacters(const std::function<void(const FormattedCharacters&)>& take) const;
    void tellParagraphs(const std::function<void(const FormattedParagraph&)>& take) const;
    // By range: whether the character follows that keeps its last paragraph open.
    const std::vector<bool>& leftOpen() const { return leftOpen_; }

private:
    // Tells each paragraph in its full length; answers leftOpen().
    std::vector<bool> walkParagraphs(const std::function<void(const ParagraphRun&)>& take) const;
    bool endsParagraph(const TextRange& range, Cp runEnd) const;
    bool continues(std::size_t range) const;

    const std::vector<TextRange>& ranges_;
    const std::vector<Cp>& sectionEnds_;
    FileProperties& properties_;
    std::vector<bool> leftOpen_;
};

} // namespace qvnd::word
