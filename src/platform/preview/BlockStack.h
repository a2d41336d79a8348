#pragma once

#include "platform/preview/TableGrid.h"
#include "platform/word/docfile/text/TablePlaces.h"

#include <vector>

namespace qvnd::preview {

// Puts paragraphs, as they come in the text, into the tables and cells that they stand in.
class BlockStack {
public:
    // `definition`: the properties of the paragraph, which count at the end of a row.
    void add(Paragraph paragraph, const word::TablePlace& place, word::ByteView definition);
    // A block behind the last paragraph, in the cell that is open or else outside of tables.
    void add(Block block);
    // Whether the text could be cut here without tearing a row.
    bool isBetweenRows() const;
    // Closes what is open.
    std::vector<Block> finish();

private:
    struct Level {
        std::vector<TextRow> rows;
        TextRow row;
        std::vector<Block> cell;
    };

    void setDepth(std::size_t depth);
    void endCell();
    void endRow(word::ByteView definition);
    std::vector<Block>& container();

    std::vector<Block> outside_;
    std::vector<Level> levels_;
};

} // namespace qvnd::preview
