#pragma once

#include "platform/word/layout/LineComposer.h"

#include <optional>

namespace qvnd::layout {

// The tab stop for a tab at this distance from the left edge of the text: a stop of the paragraph,
// the left indent of a paragraph with a hanging indent, or a default stop. Lengths in twips.
word::TabStop stopBehind(double at, const word::ResolvedParagraph& format,
                         const word::ParagraphIndents& indents, double defaultTab);

// The leader characters of a tab at `x`; nothing without a leader. `wholeTwips`: rounds the widths
// of the tab and of a leader character to whole twips.
std::optional<PlacedText> leaderOf(const TextItem& tab, double x, double foot, FontMetrics& fonts,
                                   bool wholeTwips);

} // namespace qvnd::layout
