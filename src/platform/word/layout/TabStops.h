#pragma once

#include "platform/word/layout/LineComposer.h"

#include <optional>

namespace qvnd::layout {

// The stop that a tab at this distance from the text's left edge leads to: one of the paragraph's,
// the indent of a hanging paragraph, or a default one. Lengths in twips.
word::TabStop stopBehind(double at, const word::ResolvedParagraph& format, double left,
                         double firstLine, double defaultTab);

// The characters that fill the gap of a tab at `x`; nothing for one without a leader. `wholeTwips`:
// their width is known in whole twips.
std::optional<PlacedText> leaderOf(const TextItem& tab, double x, double foot, FontMetrics& fonts,
                                   bool wholeTwips);

} // namespace qvnd::layout
