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

    void add(double above, double below) {
        ascent = std::max(ascent, above);
        descent = std::max(descent, below);
    }
    double sum() const { return ascent + descent; }
};

// The height that the items of a line need. A line without items has the height of the paragraph's
// mark. `isLast`: the mark stands on the line.
ContentHeights contentOf(std::span<const TextItem> items, const ParagraphItems& paragraph,
                         bool isLast, FontMetrics& fonts, const LineSetting& setting);

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

} // namespace qvnd::layout
