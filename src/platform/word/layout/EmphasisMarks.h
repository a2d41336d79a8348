#pragma once

#include "platform/word/layout/CharacterPlacement.h"

namespace qvnd::layout {

// Adds the emphasis mark of a character above or below it. It is a shape and no text; a blank has
// none.
void addEmphasis(const CharacterPlace& place, FontMetrics& fonts, Layer& layer);

} // namespace qvnd::layout
