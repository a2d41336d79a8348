#pragma once

#include "platform/word/formatting/ResolvedSection.h"
#include "platform/word/layout/ParagraphBorders.h"
#include "platform/word/layout/StoryReader.h"
#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// The document grid of a section.
struct Grid {
    double linePitch = 0;        // twips; 0 for none
    double characterSpacing = 0; // twips added to each character
    // In the office suite text begins at a cell of the grid. 0: there are no cells. `offset`: from
    // the left end of the grid to that of the column.
    double cellWidth = 0;
    double offset = 0;
};

Grid gridOf(const word::ResolvedSection& section);

// Where text begins that may begin at `x`: at the next cell of a grid that has cells.
double atCell(const Grid& grid, double x);

// The layout settings of a paragraph: its column and the settings of the document.
struct LineSetting {
    double width = 0; // of the column, in twips
    Grid grid;
    bool gridInTables = true; // lines in tables are aligned to the grid too
    bool hasLeading = true;   // the leading of fonts is added to the height of lines
    bool compressesPunctuation = false;
    bool expandsBrokenLines = false; // a justified line is stretched though a line break ends it
    bool isTurned = false;           // the lines will be turned
    double defaultTab = 420;
    JoinedBorders borders;
    LayoutOptions options;
    // Areas that lines avoid, relative to the upper left corner of the paragraph's first line.
    std::vector<Obstacle> obstacles{};
};

// Breaks a paragraph into lines and applies indents, tab stops, alignment and line spacing. Returns
// at least one line; the line of an empty paragraph has the height of the paragraph mark. A page
// break within the paragraph ends its line. `from`: composes from this item on, because the lines
// before it are already placed.
Strips composeLines(ParagraphItems paragraph, const word::ResolvedParagraph& format,
                    FontMetrics& fonts, const LineSetting& setting, std::size_t from = 0);

} // namespace qvnd::layout
