#pragma once

#include "platform/word/formatting/ResolvedSection.h"
#include "platform/word/layout/StoryReader.h"
#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// The document grid that lines and characters of a section keep to.
struct Grid {
    double linePitch = 0;        // twips; 0 for none
    double characterSpacing = 0; // twips added to each character
};

Grid gridOf(const word::ResolvedSection& section);

// Where a paragraph is set: the room of its column and what holds for the document.
struct LineSetting {
    double width = 0; // twips
    Grid grid;
    bool gridInTables = true; // lines in tables keep to the grid too
    bool hasLeading = true;   // faces' leading counts for the height of lines
    bool compressesPunctuation = false;
    double defaultTab = 420;
    LayoutOptions options;
    // What lines keep clear of, from the upper left corner of the paragraph's first line.
    std::vector<Obstacle> obstacles{};
};

// Breaks one paragraph into lines and sets each: indents, tab stops, alignment, line heights. At
// least one line, as high as the paragraph's mark where it holds nothing. A page break within the
// paragraph ends its line. `from`: the item that the first line begins with, where the lines before
// stand already.
Strips composeLines(const ParagraphItems& paragraph, const word::ResolvedParagraph& format,
                    FontMetrics& fonts, const LineSetting& setting, std::size_t from = 0);

} // namespace qvnd::layout
