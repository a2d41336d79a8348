#include "platform/word/layout/StoryBlocks.h"

#include "platform/word/docfile/format/SpecialCharacters.h"

#include <algorithm>
#include <utility>

namespace qvnd::layout {

namespace {

std::size_t firstParagraph(const Table& table) {
    const TableRow& row = table.rows.front();
    for (const Blocks& cell : row.cells) {
        if (!cell.empty()) {
            return cell.front().paragraph;
        }
    }
    return row.mark;
}

} // namespace

StoryBlocks::StoryBlocks(const word::Story& story, word::FormatResolver& formats)
    : story_(story), formats_(formats) {
    starts_.reserve(story.paragraphs.size());
    word::Cp at = 0;
    for (const word::ParagraphRun& run : story.paragraphs) {
        starts_.push_back(at);
        at += run.length;
    }
}

// How many paragraphs share a frame is known where the next block begins.
bool StoryBlocks::has(std::size_t block) {
    const auto isKnown = [&] {
        return block + 1 < blocks_.size() || (block < blocks_.size() && blocks_[block].framed == 0);
    };
    while (!isKnown() && readParagraph()) {
    }
    return block < blocks_.size();
}

std::size_t StoryBlocks::blockOf(std::size_t paragraph) const {
    const auto behind =
        std::upper_bound(blocks_.begin(), blocks_.end(), paragraph,
                         [](std::size_t p, const Block& block) { return p < block.paragraph; });
    return static_cast<std::size_t>(behind - blocks_.begin()) - 1;
}

bool StoryBlocks::hasRow(const Table& table, std::size_t row) {
    const auto isOpen = [&] { return !open_.empty() && open_.front().table.get() == &table; };
    while (row >= table.rows.size() && isOpen() && readParagraph()) {
    }
    return row < table.rows.size();
}

// False at the end of the story.
bool StoryBlocks::readParagraph() {
    if (isWhole_) {
        return false;
    }
    if (next_ == story_.paragraphs.size()) {
        closeDeeperThan(0);
        isWhole_ = true;
        return true;
    }
    const word::ParagraphRun& run = story_.paragraphs[next_];
    const char16_t mark = run.length > 0 ? story_.text[starts_[next_] + run.length - 1] : u'\r';
    take(next_, formats_.place(run.properties, mark));
    ++next_;
    return true;
}

void StoryBlocks::take(std::size_t paragraph, const word::TablePlace& place) {
    const auto depth = static_cast<std::size_t>(place.depth);
    closeDeeperThan(depth);
    while (open_.size() < depth) {
        open_.emplace_back();
    }
    if (depth == 0) {
        takeOutside(paragraph);
    } else if (place.rowEnd) {
        endRow(paragraph);
    } else {
        OpenTable& table = open_.back();
        table.cell.push_back({paragraph, nullptr, 0});
        if (place.cellEnd) {
            table.cells.push_back(std::move(table.cell));
            table.cell.clear();
        }
    }
}

void StoryBlocks::takeOutside(std::size_t paragraph) {
    const word::ParagraphRun& run = story_.paragraphs[paragraph];
    const auto& frame = formats_.paragraph(run.style, run.properties).frame;
    const bool goesOn = frame && !blocks_.empty() && blocks_.back().framed > 0 && frame == frame_;
    if (goesOn) {
        ++blocks_.back().framed;
    } else {
        blocks_.push_back({paragraph, nullptr, frame ? std::size_t{1} : 0});
    }
    frame_ = frame;
}

// A table outside others is a block from its first row on.
void StoryBlocks::endRow(std::size_t mark) {
    OpenTable& open = open_.back();
    if (!open.cell.empty()) {
        open.cells.push_back(std::move(open.cell));
        open.cell.clear();
    }
    open.table->rows.push_back({std::move(open.cells), mark});
    open.cells.clear();
    if (open_.size() == 1 && open.table->rows.size() == 1) {
        blocks_.push_back({firstParagraph(*open.table), open.table, 0});
    }
}

void StoryBlocks::closeDeeperThan(std::size_t depth) {
    while (open_.size() > depth) {
        const OpenTable closed = std::move(open_.back());
        open_.pop_back();
        if (!open_.empty() && !closed.table->rows.empty()) {
            add({firstParagraph(*closed.table), closed.table, 0});
        }
        for (const Blocks& cell : closed.cells) {
            std::for_each(cell.begin(), cell.end(), [this](const Block& block) { add(block); });
        }
        std::for_each(closed.cell.begin(), closed.cell.end(),
                      [this](const Block& block) { add(block); });
    }
}

// To the innermost cell that is being read, or to the story.
void StoryBlocks::add(Block block) {
    if (open_.empty()) {
        blocks_.push_back(std::move(block));
    } else {
        open_.back().cell.push_back(std::move(block));
    }
}

bool precedesTable(const word::Story& story, std::size_t paragraph, word::Cp end,
                   word::FormatResolver& formats) {
    if (paragraph + 1 >= story.paragraphs.size()) {
        return false;
    }
    const word::ParagraphRun& own = story.paragraphs[paragraph];
    const word::ParagraphRun& next = story.paragraphs[paragraph + 1];
    const int depth = formats.place(own.properties, story.text[end - 1]).depth;
    const char16_t mark = story.text[end + next.length - 1];
    return formats.place(next.properties, mark).depth > depth &&
           !formats.paragraph(next.style, next.properties).frame;
}

bool endsParagraph(std::u16string_view text, word::Cp at) {
    constexpr word::Cp mostBreaks = 64;
    word::Cp breaks = 0;
    while (breaks <= at && breaks < mostBreaks && text[at - breaks] == word::special::pageBreak) {
        ++breaks;
    }
    const char16_t before = breaks <= at ? text[at - breaks] : u'\0';
    const bool isBehindMark = before == u'\r' || before == u'\a';
    return (breaks % 2 != 0) != isBehindMark;
}

} // namespace qvnd::layout
