#pragma once

#include "platform/preview/DocumentReading.h"
#include "platform/word/docfile/document/PropertyLists.h"

#include <vector>

namespace qvnd::preview {

// A row of a table as the text has it: its cells' content, and the properties of its end.
struct TextRow {
    std::vector<std::vector<Block>> cells;
    word::Bytes definition; // the row mark's list; empty for a row that never ended
};

// Puts rows, each with edges of its own, on one grid of columns; cells merged across and down
// become one. Every place of the grid belongs to exactly one cell.
Table tableOf(std::vector<TextRow> rows);

} // namespace qvnd::preview
