#pragma once

#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// The neighbours with which a paragraph shares one box.
struct JoinedBorders {
    bool above = false;
    bool below = false;
};

// Whether two adjacent paragraphs share one box: they have borders, the same ones, and the same
// indents (ISO 29500-1, 17.3.1.24). Between them stands the border for this place, if any.
bool shareBox(const word::ResolvedParagraph& one, const word::ResolvedParagraph& other);

// The edges of a paragraph's text, from the left edge of its strips.
struct TextEdges {
    double left = 0;
    double right = 0;
};

// Adds the background and borders of a paragraph to its lines. The space above the first line and
// below the last line grows by the room of the borders.
void addBorders(Strips& lines, const word::ResolvedParagraph& format, const TextEdges& edges,
                const JoinedBorders& joined);

} // namespace qvnd::layout
