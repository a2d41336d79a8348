#pragma once

#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// Draws a paragraph's background and borders into its lines, which keep room for them above and
// below. `left` and `right`: edges of its text, from the strips' left edge.
void addBorders(Strips& lines, const word::ResolvedParagraph& format, double left, double right);

} // namespace qvnd::layout
