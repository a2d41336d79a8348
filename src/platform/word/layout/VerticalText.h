#pragma once

#include "platform/word/layout/FontMetrics.h"
#include "platform/word/layout/RowComposer.h"

#include <cstdint>

namespace qvnd::layout {

// The room of a text whose lines are as long as it is high.
struct TurnedRoom {
    double width = 0;
    double height = 0;
    word::VerticalAlignment alignment = word::VerticalAlignment::top; // of the first line's side
    word::TextFlow flow = word::TextFlow::down;
};

// One strip that holds the lines of a text that does not run across, without a height.
// `addsSpaces`: see gapBetween().
Strip turnedText(const Strips& lines, const TurnedRoom& room, FontMetrics& fonts, bool addsSpaces);

// The flow of the text of a shape (MSOTXFL).
word::TextFlow flowOfShape(std::uint32_t txfl);

} // namespace qvnd::layout
