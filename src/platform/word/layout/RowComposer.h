#pragma once

#include "platform/word/formatting/ResolvedRow.h"
#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// A table cell with its position and its composed content. Lengths in twips, from the left edge of
// the column.
struct ComposedCell {
    double left = 0;
    double right = 0;
    word::ResolvedCell format;
    Strips strips; // empty in a cell that continues the cell above
    double contentHeight = 0;
};

struct ComposedRow {
    word::ResolvedRow format;
    std::vector<ComposedCell> cells;
    double height = 0;
};

// Whether the cell goes on in a vertically merged one of the row below. A cell without width, which
// some writers leave at the edge of another, is no part of that one.
bool goesOnIn(const ComposedCell& cell, const ComposedRow& below);

// The height that the content of a cell has in all the rows that the cell reaches over, of which
// `first` is the uppermost.
double roomWithin(const std::vector<ComposedRow>& rows, std::size_t first,
                  const ComposedCell& cell);

// The cells of a row and their positions in a column of that width. Cells that are merged to the
// left are joined with the previous cell. A row without a table definition gets cells of equal
// width.
std::vector<ComposedCell> cellsOf(const word::ResolvedRow& row, std::size_t texts,
                                  double columnWidth);

// Sets the heights of all rows of a table. A row is as high as its highest cell; the last row of a
// vertically merged cell is extended to fit that cell. `holdBorders`: the least height of a row
// includes its upper border, as in the office suite; otherwise the border is added to it.
void settleHeights(std::vector<ComposedRow>& rows, bool holdBorders);

// The thickness of the widest border below the row, in twips.
double borderBelow(const ComposedRow& row);

// One strip for each row, with borders, backgrounds and content. A line of a vertically merged cell
// is in the row beside which it stands, so that it goes to the page of that row. Takes the content
// of the cells out of the rows.
Strips stripsOf(std::vector<ComposedRow>& rows, const CellRules& rules);

// A row that is split at the end of a page. The rest lacks its content: it may go over many pages,
// each of which would make the content of all behind it anew.
struct PartedRow {
    Strip head;
    Strip rest;
};
// A row with its content.
Strip completed(Strip row);
// Splits the strip of a row so that the first part fits into `room`. Nothing when the first lines
// of a cell do not fit, when the rest would be empty, or when the row must not be split.
// `atAnyRate`: the row is higher than a page, so it is split even where rows or lines stay
// together.
std::optional<PartedRow> partRow(const Strip& row, double room, bool atAnyRate = false);

} // namespace qvnd::layout
