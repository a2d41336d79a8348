#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/formatting/ResolvedSection.h"
#include "platform/word/formatting/StyledParagraphs.h"

#include <optional>
#include <string>
#include <vector>

namespace qvnd::word {

// The start positions of the sections of the main story, ascending from 0.
std::vector<Cp> sectionStarts(const std::vector<SectionRun>& sections);

// The number of the page on which a section begins. A continuous section begins on the page of the
// text above it, so a number that it starts with is that of this page (ISO 29500-1, 17.6.12).
// `counted`: the number of that page if the numbering goes on.
int firstNumberOf(const ResolvedSection& section, int counted);
// Whether a section that begins on an even or odd page leaves the page of that number empty.
bool skipsPage(const ResolvedSection& section, int number);

// Whether a section goes on under the text of the one above it, or in the next column of its page
// if there is one.
bool goesOnBelow(const ResolvedSection& above, const ResolvedSection& section);
bool beginsColumn(const ResolvedSection& above, const ResolvedSection& section);
bool hasOneColumnWidth(const ResolvedSection& section);

// Converts page indexes (0, 1, 2, ...) into page numbers, for pages that another program has made.
// That program leaves out the empty pages in front of sections on even and odd pages.
class PageNumbering {
public:
    // `firstSheets`: for each section the index of the page on which it starts.
    PageNumbering(const DocumentContent& content, const std::vector<int>& firstSheets);

    // The page number of the page with index `sheet` for a position of the main story on it, in
    // the number form of its section, with its chapter.
    std::u16string shown(Cp position, int sheet) const;

private:
    struct Count {
        Cp from = 0;   // position from which this count applies
        int sheet = 0; // index of the page with `number`
        int number = 1;
        ResolvedSection section{}; // its form and chapters
    };
    std::vector<Count> counts_;
    std::optional<StyledParagraphs> headings_; // where a section shows chapters
};

} // namespace qvnd::word
