#pragma once

#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/layout/LineComposer.h"

#include <algorithm>
#include <span>

namespace qvnd::layout {

// The height of a line's content above and below the baseline, in twips.
struct ContentHeights {
    double ascent = 0;
    double descent = 0;
    // Beyond what the text of the line needs, because of pictures.
    double pictures = 0;

    void add(double above, double below) {
        ascent = std::max(ascent, above);
        descent = std::max(descent, below);
    }
    double sum() const { return ascent + descent; }
    // The part that a multiple applies to.
    double text() const { return sum() - pictures; }
};

// The height that the items of a line need. A line without items has the height of the paragraph's
// mark. `isLast`: the mark stands on the line.
ContentHeights contentOf(std::span<const TextItem> items, const ParagraphItems& paragraph,
                         bool isLast, FontMetrics& fonts, const LineSetting& setting);

// The heights of a face of that size as the office suite measures them: whole twips, with the
// leading above the text where the document has one.
ContentHeights officeHeights(FaceHeights face, double size, bool hasLeading);

// Raised or lowered text: its size, and how far it stands above the baseline. In twips.
struct ScriptText {
    double size = 0;
    double raised = 0;
};

// Of text of that size in the office suite: what is raised ends where the text around it ends
// above, what is lowered ends where it ends below.
ScriptText officeScript(FaceHeights face, double size, bool isRaised, bool hasLeading);

// The height of a line and the distance of its baseline from its top. `spare` is the part of the
// height, at the lower end, that may extend beyond the end of a column. In twips.
struct LineRoom {
    double height = 0;
    double foot = 0;
    double spare = 0;
};

// The position of a line in its paragraph.
struct LineOrder {
    bool isFirst = false;
    bool isLast = false;
};

// The height of a line, from the line spacing of its paragraph and from the document grid.
LineRoom roomOf(const ContentHeights& content, const word::ResolvedParagraph& format,
                const LineSetting& setting, const LineOrder& order);

// The space above or below a paragraph. Lines count before twips.
struct ParagraphSpace {
    int twips = 0;
    int lines = 0;          // hundredths of a line, that of the grid where there is one
    bool automatic = false; // as pages of the web have it
};

double spaceAround(const ParagraphSpace& space, const Grid& grid);

} // namespace qvnd::layout
