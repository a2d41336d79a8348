#pragma once

#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// Adds the background and borders of a paragraph to its lines. The space above the first line and
// below the last line grows by the room of the borders. `left` and `right`: edges of the text, from
// the left edge of the strips.
void addBorders(Strips& lines, const word::ResolvedParagraph& format, double left, double right);

} // namespace qvnd::layout
