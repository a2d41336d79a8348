#pragma once

#include "platform/word/layout/LineComposer.h"
#include "platform/word/layout/RowComposer.h"
#include "platform/word/layout/StoryBlocks.h"

#include <memory>
#include <optional>

namespace qvnd::layout {

// How far a table has been composed.
struct TableCursor {
    std::size_t row = 0; // the next row
    // The rows that are repeated at the top of each page; none in a table of nothing but such rows.
    std::shared_ptr<const Strips> headings;
};

// Composes the blocks of one story into strips: paragraphs line by line, tables row by row.
class BlockComposer {
public:
    // All must outlive the object. `note`: as for StoryReader.
    BlockComposer(StoryReader::Shared& shared, const word::Story& story,
                  std::optional<std::uint32_t> note = std::nullopt);

    // What the story consists of, read as far as it is asked for.
    StoryBlocks& blocks() { return blocks_; }
    void setPage(const PageFields& fields) { fields_ = fields; }

    // Composes one block. Floating objects are attached to the strips that they are anchored in. A
    // frame yields no strips: it is attached to the first strip of the next block. `from`: the
    // paragraph is composed from this character on, because the lines before it are already placed.
    Strips compose(const Block& block, const LineSetting& setting, word::Cp from = 0);
    // Composes the next rows of a table: one, or as many as a vertically merged cell joins. The
    // first ones are all the heading rows. Advances `next`.
    Strips composeRows(const Block& block, const LineSetting& setting, TableCursor& next);
    // A strip of no height that carries the frames at the end of the story; nothing without frames.
    std::optional<Strip> rest();
    // Forgets frames that no paragraph holds yet, because their blocks are composed again.
    void forgetFrames() { frames_.clear(); }
    // All blocks of the story.
    Strips composeAll(const LineSetting& setting);

private:
    bool sharesBoxWithNext(std::size_t paragraph) const;
    JoinedBorders bordersOf(std::size_t paragraph) const;
    Strips composeParagraph(std::size_t paragraph, const LineSetting& setting, word::Cp from);
    void composeFrame(const Block& block, const LineSetting& setting);
    bool hangsInNextParagraph(const Block& frame);
    bool isPlain(std::size_t paragraph);
    Strips composeFramed(const Block& block, const LineSetting& setting);
    void anchorDrawings(const std::vector<word::Cp>& anchors, word::Cp from,
                        const LineSetting& setting, Strips& strips);
    void anchorFrames(std::size_t paragraph, Strips& strips);
    Strips composeTable(const Block& block, const LineSetting& setting);
    ComposedRow composeRow(const Table& table, std::size_t index, const LineSetting& setting);
    void composeTurned(const Table& table, std::size_t first, std::vector<ComposedRow>& rows,
                       const LineSetting& setting);
    word::CellLook lookOf(const Table& table, std::size_t row, std::size_t cell);
    // Composes the text of a cell that has this look.
    Strips composeCell(const Blocks& blocks, word::CellLook look, const LineSetting& setting);
    std::size_t headingRowsOf(const Table& table);
    std::size_t endOfMerged(const Table& table, std::size_t least);

    StoryReader::Shared& shared_;
    const word::Story& story_;
    StoryReader reader_;
    StoryBlocks blocks_;
    PageFields fields_;
    std::vector<AnchoredFloat> frames_; // for the next strip
    // The frames attached to the paragraph of `anchoredTo_`. They are kept because a paragraph is
    // composed again when it has to wrap around them.
    std::vector<AnchoredFloat> anchored_;
    std::optional<std::size_t> anchoredTo_;
    // The picture of a frame that begins the paragraph of `hangsIn_`, with the space around it.
    std::vector<TextItem> hanging_;
    std::optional<std::size_t> hangsIn_;
    word::CellLook cell_ = word::CellLook::none; // of the cell being composed
    int depth_ = 0;
};

} // namespace qvnd::layout
