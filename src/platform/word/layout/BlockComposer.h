#pragma once

#include "platform/word/layout/LineComposer.h"
#include "platform/word/layout/StoryBlocks.h"

#include <optional>

namespace qvnd::layout {

// Composes the blocks of one story into strips: paragraphs line by line, tables row by row.
class BlockComposer {
public:
    // All must outlive the object. `note`: as for StoryReader.
    BlockComposer(StoryReader::Shared& shared, const word::Story& story,
                  std::optional<std::uint32_t> note = std::nullopt);

    const Blocks& blocks() const { return blocks_; }
    // The first character of a block.
    word::Cp startOf(const Block& block) const { return starts_[block.paragraph]; }
    // `addsSpaces`: space between paragraphs is the sum of what both ask for, else the larger.
    void setPage(const PageFields& fields, bool addsSpaces) {
        fields_ = fields;
        addsSpaces_ = addsSpaces;
    }

    // What floats is anchored in the strips; of a frame come no strips, it goes along with those of
    // the block composed next. `from`: the character that a paragraph's first line begins with,
    // where the lines before stand already.
    Strips compose(const Block& block, const LineSetting& setting, word::Cp from = 0);
    // A strip without height for frames that nothing follows; nothing where there are none.
    std::optional<Strip> rest();
    // All blocks of the story.
    Strips composeAll(const LineSetting& setting);

private:
    Strips composeParagraph(std::size_t paragraph, const LineSetting& setting, word::Cp from);
    void composeFrame(const Block& block, const LineSetting& setting);
    Strips composeFramed(const Block& block, const LineSetting& setting);
    void anchorDrawings(const ParagraphItems& items, word::Cp from, const LineSetting& setting,
                        Strips& strips);
    void anchorFrames(std::size_t paragraph, Strips& strips);
    Strips composeCell(const Blocks& blocks, const LineSetting& setting);
    Strips composeTable(const Table& table, const LineSetting& setting);

    StoryReader::Shared& shared_;
    const word::Story& story_;
    StoryReader reader_;
    std::vector<word::Cp> starts_;
    Blocks blocks_;
    PageFields fields_;
    bool addsSpaces_ = true;
    std::vector<AnchoredFloat> frames_; // for the next strip
    // Those that the block of a paragraph has got, which is composed again where they are in its
    // way.
    std::vector<AnchoredFloat> anchored_;
    std::optional<std::size_t> anchoredTo_;
    int depth_ = 0;
};

} // namespace qvnd::layout
