#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/formatting/FormatResolver.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace qvnd::layout {

struct Table;

// A paragraph, or a table that stands between paragraphs.
struct Block {
    std::size_t paragraph = 0; // index into the story's paragraphs; of a table its first
    std::shared_ptr<const Table> table;
    std::size_t framed = 0; // so many paragraphs from this one on stand in one frame
};

using Blocks = std::vector<Block>;

struct TableRow {
    std::vector<Blocks> cells;
    std::size_t mark = 0; // the paragraph that ends the row and holds its definition
};

struct Table {
    std::vector<TableRow> rows;
};

// A story cut into paragraphs and tables, nested tables within their cells. A row without its mark
// stays as the paragraphs that it holds. Outside tables, paragraphs that follow each other in equal
// frames share one. `starts` gets the position at which each paragraph
// begins.
Blocks blocksOf(const word::Story& story, word::FormatResolver& formats,
                std::vector<word::Cp>& starts);

} // namespace qvnd::layout
