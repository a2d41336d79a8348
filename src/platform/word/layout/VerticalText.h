#pragma once

#include "platform/word/formatting/ResolvedRow.h"
#include "platform/word/layout/FontMetrics.h"
#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// The lines of a cell whose text runs downwards, set from right to left within `width`, as one
// strip. Chinese characters stand upright, all others and brackets are turned clockwise.
// `alignment`: where the lines stand across the cell; top is at the right.
Strip runningDown(const Strips& lines, double width, word::VerticalAlignment alignment,
                  FontMetrics& fonts, bool addsSpaces);

} // namespace qvnd::layout
