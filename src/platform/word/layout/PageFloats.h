#pragma once

#include "platform/word/docfile/formatting/SectionPaper.h"
#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// What floats on a page is counted from these: the paper, and a column of that place and width.
FloatFrame frameOn(const word::SectionPaper& paper, double columnLeft, double columnWidth,
                   double anchorTop);

// Puts something that floats onto the page. `frame`: of the strip that it is anchored in, whose
// left edge is that of the column.
void putOn(Page& page, const AnchoredFloat& floating, FloatFrame frame);

// Puts a header or footer onto the page, with what floats in it.
void putOn(Page& page, const Stack& stack, const word::SectionPaper& paper, double top);

} // namespace qvnd::layout
