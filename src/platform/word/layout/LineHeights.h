#pragma once

#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/layout/LineComposer.h"

#include <algorithm>

namespace qvnd::layout {

// The room that what stands on a line takes above and below its foot, in twips.
struct ContentHeights {
    double ascent = 0;
    double descent = 0;

    void add(double above, double below) {
        ascent = std::max(ascent, above);
        descent = std::max(descent, below);
    }
    double sum() const { return ascent + descent; }
};

// A line's height, the distance of its foot from its top, and how much of the height, at its
// lower end, may reach beyond the end of a column. In twips.
struct LineRoom {
    double height = 0;
    double foot = 0;
    double spare = 0;
};

// Which line of its paragraph one is.
struct LineOrder {
    bool isFirst = false;
    bool isLast = false;
};

// The room of a line by its paragraph's line spacing and by the document grid.
LineRoom roomOf(const ContentHeights& content, const word::ResolvedParagraph& format,
                const LineSetting& setting, const LineOrder& order);

} // namespace qvnd::layout
