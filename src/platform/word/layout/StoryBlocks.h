#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/formatting/FormatResolver.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace qvnd::layout {

struct Table;

// A paragraph or a table.
struct Block {
    std::size_t paragraph = 0; // index of the paragraph, or of a table's first paragraph
    std::shared_ptr<const Table> table;
    std::size_t framed = 0; // number of paragraphs, from this one on, in the same frame
};

using Blocks = std::vector<Block>;

struct TableRow {
    std::vector<Blocks> cells;
    std::size_t mark = 0; // the paragraph of the row's end mark, which has the table definition
};

struct Table {
    std::vector<TableRow> rows;
};

// Splits a story into paragraphs and tables; nested tables are in the blocks of their cells. A row
// without an end mark is kept as separate paragraphs. Outside tables, adjacent paragraphs with
// equal frames share one frame. `starts` receives the start position of each paragraph.
Blocks blocksOf(const word::Story& story, word::FormatResolver& formats,
                std::vector<word::Cp>& starts);

// Whether the next paragraph begins a table within the text: not a frame, and deeper than the
// paragraph itself. `end`: where the next paragraph begins.
bool precedesTable(const word::Story& story, std::size_t paragraph, word::Cp end,
                   word::FormatResolver& formats);

// Whether a paragraph ends at that character in the office suite: behind a mark, or at a break that
// does not stand behind a paragraph's end itself.
bool endsParagraph(std::u16string_view text, word::Cp at);

} // namespace qvnd::layout
