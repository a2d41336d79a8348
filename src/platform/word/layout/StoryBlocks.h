#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/formatting/FormatResolver.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
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
    std::deque<TableRow> rows; // references stay valid while rows are added
};

// Splits a story into paragraphs and tables; nested tables are in the blocks of their cells. A row
// without an end mark is kept as separate paragraphs. Outside tables, adjacent paragraphs with
// equal frames share one frame.
// The story is read only as far as blocks and rows are asked for: the first page of a long document
// does not wait for the rest. Nested tables are read as a whole.
class StoryBlocks {
public:
    // Both must outlive the object.
    StoryBlocks(const word::Story& story, word::FormatResolver& formats);

    bool has(std::size_t block);
    // A block that has() was asked for. References stay valid.
    const Block& operator[](std::size_t block) const { return blocks_[block]; }
    // The block that a paragraph begins, of those that has() was asked for.
    std::size_t blockOf(std::size_t paragraph) const;
    // Of a table of this story.
    bool hasRow(const Table& table, std::size_t row);
    // The position of the first character of a block; the end of the story for none.
    word::Cp beginOf(std::size_t block) {
        return has(block) ? startOf(blocks_[block].paragraph) : story_.size();
    }
    // The position of a paragraph's first character.
    word::Cp startOf(std::size_t paragraph) const { return starts_[paragraph]; }

private:
    // A table that is being read: its whole rows, and the row under way.
    struct OpenTable {
        std::shared_ptr<Table> table = std::make_shared<Table>();
        std::vector<Blocks> cells; // whole ones of the row being read
        Blocks cell;               // the one being read
    };

    bool readParagraph();
    void take(std::size_t paragraph, const word::TablePlace& place);
    void takeOutside(std::size_t paragraph);
    void endRow(std::size_t mark);
    void closeDeeperThan(std::size_t depth);
    void add(Block block);

    const word::Story& story_;
    word::FormatResolver& formats_;
    std::vector<word::Cp> starts_; // by paragraph
    std::size_t next_ = 0;         // the next paragraph to read
    bool isWhole_ = false;
    std::deque<Block> blocks_;
    std::vector<OpenTable> open_;               // by depth of nesting
    std::optional<word::ParagraphFrame> frame_; // of the last paragraph outside tables
};

// Whether the next paragraph begins a table within the text: not a frame, and deeper than the
// paragraph itself. `end`: where the next paragraph begins.
bool precedesTable(const word::Story& story, std::size_t paragraph, word::Cp end,
                   word::FormatResolver& formats);

// Whether a paragraph ends at that character in the office suite: behind a mark, or at a break that
// does not stand behind a paragraph's end itself.
bool endsParagraph(std::u16string_view text, word::Cp at);

} // namespace qvnd::layout
