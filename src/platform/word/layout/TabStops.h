#pragma once

#include "platform/word/layout/LineComposer.h"

#include <optional>
#include <span>

namespace qvnd::layout {

// The tab stop for a tab at this distance from the left edge of the text: a stop of the paragraph,
// the left indent of a paragraph with a hanging indent, or a default stop. Lengths in twips.
word::TabStop stopBehind(double at, const word::ResolvedParagraph& format,
                         const word::ParagraphIndents& indents, double defaultTab);

// Items with the space behind each of them, in twips.
struct SpacedItems {
    std::span<const TextItem> items;
    std::span<const double> gaps;
};

// The width of what stands behind a tab, up to the next tab or the end of the line.
double behindTab(const SpacedItems& all, std::size_t tab);
// The width of what of it stands in front of a stop of that kind.
double beforeStop(word::TabStop::Kind kind, const SpacedItems& all, std::size_t tab);

// The leader characters of a tab at `x`; nothing without a leader. `office`: as in the office
// suite they are spread over the whole tab, as many as fit by widths of whole twips; of underscores
// one more, so that no gap stays between them.
std::optional<PlacedText> leaderOf(const TextItem& tab, double x, double foot, FontMetrics& fonts,
                                   bool office);

} // namespace qvnd::layout
