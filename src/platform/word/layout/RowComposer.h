#pragma once

#include "platform/word/formatting/ResolvedRow.h"
#include "platform/word/layout/Strips.h"

namespace qvnd::layout {

// A cell of a row ready to be set: its place, and its content in strips of its own. Lengths in
// twips, from the left edge of the column.
struct ComposedCell {
    double left = 0;
    double right = 0;
    word::ResolvedCell format;
    Strips strips; // none in a cell that goes on what stands above it
    double contentHeight = 0;
};

struct ComposedRow {
    word::ResolvedRow format;
    std::vector<ComposedCell> cells;
    double height = 0;
};

// The cells of a row at their places in a column of that width; cells merged to the left join the
// one before. A row without a definition gets cells of one width.
std::vector<ComposedCell> cellsOf(const word::ResolvedRow& row, std::size_t texts,
                                  double columnWidth);

// Sets the heights of all rows of a table: as high as their cells, and cells that reach over
// several rows make the last of these high enough.
void settleHeights(std::vector<ComposedRow>& rows);

// One strip a row, with its borders, backgrounds and content; cells that reach over several rows
// have their content in the first of them.
Strips stripsOf(const std::vector<ComposedRow>& rows);

// The part of a row's strip that fits into `room`, and the rest; nothing when no cell has a line
// that fits, when nothing would be left, or when the row stays whole. `atAnyRate`: one that stays
// whole is parted too, for no page holds it.
struct PartedRow {
    Strip head;
    Strip rest;
};
std::optional<PartedRow> partRow(const Strip& row, double room, bool atAnyRate = false);

} // namespace qvnd::layout
