#pragma once

#include "platform/word/docfile/formatting/SectionPaper.h"
#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// The reference areas for floating objects: the paper, its margins, and a column at that position.
FloatFrame frameOn(const word::SectionPaper& paper, double columnLeft, double columnWidth,
                   double anchorTop);

// Adds a floating object to the page. `frame`: the reference areas of the strip that it is anchored
// in. The strip's left edge is the left edge of the column.
void putOn(Page& page, const AnchoredFloat& floating, FloatFrame frame);

// Adds a header or footer and its floating objects to the page.
void putOn(Page& page, const Stack& stack, const word::SectionPaper& paper, double top);

} // namespace qvnd::layout
