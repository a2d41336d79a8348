#include "platform/word/layout/StoryBlocks.h"

#include "platform/word/docfile/format/SpecialCharacters.h"

#include <utility>

namespace qvnd::layout {

namespace {

// What is open at one depth of nesting: rows that are whole, and the row being read.
struct OpenTable {
    Table table;
    std::vector<Blocks> cells; // whole ones of the row being read
    Blocks cell;               // the one being read
};

class BlockReader {
public:
    Blocks finish() {
        closeDeeperThan(0);
        return std::move(blocks_);
    }

    using Frame = std::optional<word::ParagraphFrame>;

    void take(std::size_t paragraph, const word::TablePlace& place, const Frame& frame) {
        const auto depth = static_cast<std::size_t>(place.depth);
        closeDeeperThan(depth);
        while (open_.size() < depth) {
            open_.emplace_back();
        }
        if (depth == 0) {
            takeOutside(paragraph, frame);
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

private:
    void takeOutside(std::size_t paragraph, const Frame& frame) {
        const bool goesOn =
            frame && !blocks_.empty() && blocks_.back().framed > 0 && frame == frame_;
        if (goesOn) {
            ++blocks_.back().framed;
        } else {
            blocks_.push_back({paragraph, nullptr, frame ? std::size_t{1} : 0});
        }
        frame_ = frame;
    }

    void endRow(std::size_t mark) {
        OpenTable& table = open_.back();
        if (!table.cell.empty()) {
            table.cells.push_back(std::move(table.cell));
            table.cell.clear();
        }
        table.table.rows.push_back({std::move(table.cells), mark});
        table.cells.clear();
    }

    void closeDeeperThan(std::size_t depth) {
        while (open_.size() > depth) {
            OpenTable closed = std::move(open_.back());
            open_.pop_back();
            Blocks& outer = open_.empty() ? blocks_ : open_.back().cell;
            if (!closed.table.rows.empty()) {
                const std::size_t first = firstParagraph(closed.table);
                outer.push_back({first, std::make_shared<const Table>(std::move(closed.table)), 0});
            }
            for (Blocks& cell : closed.cells) {
                outer.insert(outer.end(), cell.begin(), cell.end());
            }
            outer.insert(outer.end(), closed.cell.begin(), closed.cell.end());
        }
    }

    static std::size_t firstParagraph(const Table& table) {
        const TableRow& row = table.rows.front();
        for (const Blocks& cell : row.cells) {
            if (!cell.empty()) {
                return cell.front().paragraph;
            }
        }
        return row.mark;
    }

    Blocks blocks_;
    std::vector<OpenTable> open_;
    Frame frame_; // of the last paragraph outside tables
};

} // namespace

Blocks blocksOf(const word::Story& story, word::FormatResolver& formats,
                std::vector<word::Cp>& starts) {
    BlockReader reader;
    starts.clear();
    starts.reserve(story.paragraphs.size());
    word::Cp at = 0;
    for (std::size_t i = 0; i < story.paragraphs.size(); ++i) {
        const word::ParagraphRun& run = story.paragraphs[i];
        starts.push_back(at);
        at += run.length;
        const char16_t mark = run.length > 0 ? story.text[at - 1] : u'\r';
        reader.take(i, formats.place(run.properties, mark),
                    formats.paragraph(run.style, run.properties).frame);
    }
    return reader.finish();
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
