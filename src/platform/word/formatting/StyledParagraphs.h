#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/formatting/ResolvedSection.h"

#include <array>
#include <string>
#include <vector>

namespace qvnd::word {

// The text of a page by the positions of its first and its last line.
struct PageText {
    Cp begin = 0;
    Cp end = 0;
};

// What fields elsewhere show of a paragraph.
struct StyledParagraph {
    Cp at = 0;
    std::u16string text;       // that is seen, without its label
    std::u16string label;      // the number or bullet in front of it
    std::u16string numbers;    // those of the label, with what stands between them
    bool hasAllLevels = false; // the label has the numbers of the levels above its own
};

// The paragraphs of a story that are seen, by their styles.
class StyledParagraphs {
public:
    StyledParagraphs(const DocumentTables& tables, const Story& story);

    // In the order of the text.
    const std::vector<StyledParagraph>& of(StyleIndex style) const;
    // The number of the chapter that page numbers have in front, with the sign between them, as a
    // section wants it: that of the nearest heading of its level or, where this has none, of a
    // higher one (ISO 29500-1, 17.6.12). Nothing without a number.
    std::u16string chapter(const ResolvedSection& section, PageText page) const;

private:
    const std::vector<StyledParagraph>& headings(unsigned level) const;

    std::vector<std::vector<StyledParagraph>> paragraphs_; // by style
    std::array<StyleIndex, 9> headings_{};                 // by level
};

// The first or last one that begins on a page, else the last one before it; null for none.
const StyledParagraph* nearest(const std::vector<StyledParagraph>& paragraphs, PageText page,
                               bool last = false);

} // namespace qvnd::word
