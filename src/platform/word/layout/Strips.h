#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/layout/FloatPlace.h"
#include "platform/word/layout/PageModel.h"

#include <memory>
#include <vector>

namespace qvnd::layout {

struct RowParts;

// Something that floats, and the strip that it is anchored in.
struct AnchoredFloat {
    FloatPlace place;
    Layer layer;  // from its upper left corner
    double x = 0; // of its column and its anchor, from the strip's upper left corner
    double y = 0;
    double columnWidth = 0; // of a cell; 0: the strip stands in a column of the page
};

// A horizontal strip of content: a line of text, a row of a table or a part of one. Places in
// `layer` count from the strip's upper left corner; its left edge is that of the column.
struct Strip {
    double before = 0; // space above it, which falls away at the top of a page
    double after = 0;  // space below it
    double height = 0;
    double spare = 0; // of the height, which may reach beyond the end of a column
    Layer layer;
    std::vector<AnchoredFloat> floats;
    std::vector<std::uint32_t> notes; // footnotes that it refers to, by index
    word::Cp at = 0;                  // its first character

    std::size_t paragraph = 0; // of the story, told apart from those beside it
    word::StyleIndex style = 0;
    std::size_t line = 0; // of the paragraph
    std::size_t lines = 1;
    bool keepsLines = false;
    bool keepsWithNext = false;
    bool controlsWidows = false;
    bool contextual = false;
    bool startsPage = false;
    bool endsPage = false;               // a page break stands behind it
    bool endsColumn = false;             // a column break
    std::shared_ptr<const RowParts> row; // what can be parted by the end of a page
    // Rows that are shown again above it when it begins a page.
    std::shared_ptr<const std::vector<Strip>> headings;
    bool isHeading = false;
    bool besideFloats = false; // composed for the place where it stood first
};

using Strips = std::vector<Strip>;

// A row of a table as its cells: each has strips of its own.
struct RowParts {
    struct Cell {
        double x = 0; // of its content
        double width = 0;
        double above = 0; // padding
        double below = 0;
        Strips strips;
    };
    std::vector<Cell> cells;
    Layer frame; // fills and borders at the height of `height`
    double height = 0;
};

// Strips one under the other as one piece, from its upper left corner.
struct Stack {
    Layer layer;
    std::vector<AnchoredFloat> floats;
    double height = 0;
};
Stack stacked(const Strips& strips, bool addsSpaces);

// The memory that they take, in bytes; what strips share is counted for each of them.
std::size_t sizeOf(const Layer& layer);
std::size_t sizeOf(const Strip& strip);

// The height of strips one under the other, spaces between them included.
double heightOf(const Strips& strips, bool addsSpaces);
// Space between two strips: the sum of both, or the larger of them.
double gapBetween(const Strip& above, const Strip& below, bool addsSpaces);

} // namespace qvnd::layout
