#pragma once

#include "platform/word/layout/LineComposer.h"
#include "platform/word/layout/StoryBlocks.h"

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
    // Anchors of drawings in the paragraphs composed since the last call, in their order.
    std::vector<word::Cp> takeAnchors() { return std::exchange(anchors_, {}); }

    // `addsSpaces`: space between paragraphs is the sum of what both ask for, else the larger.
    void setPage(const PageFields& fields, bool addsSpaces) {
        fields_ = fields;
        addsSpaces_ = addsSpaces;
    }

    Strips compose(const Block& block, const LineSetting& setting);
    // All blocks of the story.
    Strips composeAll(const LineSetting& setting);

private:
    Strips composeParagraph(std::size_t paragraph, const LineSetting& setting);
    Strips composeCell(const Blocks& blocks, const LineSetting& setting);
    Strips composeTable(const Table& table, const LineSetting& setting);

    StoryReader::Shared& shared_;
    const word::Story& story_;
    StoryReader reader_;
    std::vector<word::Cp> starts_;
    Blocks blocks_;
    PageFields fields_;
    bool addsSpaces_ = true;
    std::vector<word::Cp> anchors_;
    int depth_ = 0;
};

} // namespace qvnd::layout
