#include "platform/word/layout/StoryFlow.h"

#include "platform/word/docfile/formatting/SectionPaper.h"
#include "platform/word/layout/FlatStory.h"
#include "platform/word/layout/FormatLookup.h"
#include "platform/word/layout/LineBreaking.h"
#include "platform/word/layout/Pages.h"
#include "platform/word/layout/SectionShape.h"
#include "platform/word/layout/TableRows.h"

#include <algorithm>
#include <numeric>

namespace qvnd::word {

namespace {

struct FlowParagraph {
    Cp start = 0;
    Cp length = 0;
    const ParagraphPlace* place = nullptr;
    std::vector<SizedText> text;
    std::size_t index = 0; // among the placed paragraphs
};

// What waits for the mark of its row: the width of a cell is known only there.
struct CellItem {
    FlowParagraph paragraph;
    int boxHeight = -1; // of a nested row; a paragraph has none
};
using Cell = std::vector<CellItem>;
using Row = std::vector<Cell>;

int sum(const std::vector<int>& values) { return std::accumulate(values.begin(), values.end(), 0); }

class Flow {
public:
    explicit Flow(const DocumentContent& content)
        : content_(content), formats_(content.tables), story_(flatten(content.main)),
          gutterOnTop_(gutterOnTop(content.settings)) {}

    std::vector<PlacedParagraph> run();

private:
    FlowParagraph next(const ParagraphRun& run);
    void enterSections(Cp at);
    void place(const FlowParagraph& paragraph);
    void placeText(const FlowParagraph& paragraph);
    bool holdsPageBreak(const FlowParagraph& paragraph) const;
    void takeIntoTable(const FlowParagraph& paragraph);
    void finishRow(const FlowParagraph& mark, int depth);
    int cellHeight(const Cell& cell, int width) const;
    int rowHeight(const Row& row, const RowShape& shape) const;
    void settleWaiting(int sheet);

    const DocumentContent& content_;
    FormatLookup formats_;
    FlatStory story_;
    bool gutterOnTop_;
    Pages pages_;
    std::vector<PlacedParagraph> placed_;
    std::vector<Row> rows_;            // the open row of each depth, outermost first
    std::vector<std::size_t> waiting_; // paragraphs of the open outermost row
    std::size_t run_ = 0;              // the character run at which the next paragraph starts
    Cp runUsed_ = 0;
    std::size_t section_ = 0;
    Cp sectionEnd_ = 0;
    bool breakPending_ = false;
    Cp at_ = 0;
};

std::vector<PlacedParagraph> Flow::run() {
    placed_.reserve(story_.paragraphs.size());
    for (const ParagraphRun& run : story_.paragraphs) {
        enterSections(at_);
        const FlowParagraph paragraph = next(run);
        placed_.push_back({paragraph.start, pages_.sheet(), pages_.sheet()});
        if (paragraph.place->tableDepth > 0) {
            takeIntoTable(paragraph);
        } else {
            place(paragraph);
        }
        at_ += run.length;
    }
    return std::move(placed_);
}

FlowParagraph Flow::next(const ParagraphRun& run) {
    FlowParagraph paragraph{
        at_, run.length, &formats_.paragraph(run.style, run.properties), {}, placed_.size()};
    Cp left = run.length;
    Cp at = at_;
    while (left > 0 && run_ < story_.characters.size()) {
        const CharacterRun& characters = story_.characters[run_];
        const Cp part = std::min(left, characters.length - runUsed_);
        if (part > 0) {
            paragraph.text.push_back({story_.text.data() + at, part,
                                      &formats_.character(run.style, characters.properties)});
        }
        at += part;
        left -= part;
        runUsed_ += part;
        if (runUsed_ == characters.length) {
            ++run_;
            runUsed_ = 0;
        }
    }
    return paragraph;
}

void Flow::enterSections(Cp at) {
    while (at >= sectionEnd_ && section_ < content_.sections.size()) {
        const SectionRun& section = content_.sections[section_];
        const SectionShape shape =
            sectionShape(content_.tables.lists[section.properties], gutterOnTop_);
        if (section_ > 0 && shape.startsPage) {
            pages_.breakPage();
        }
        pages_.begin(shape.page);
        sectionEnd_ += section.length;
        ++section_;
    }
}

void Flow::place(const FlowParagraph& paragraph) {
    rows_.clear(); // a row without its mark: what it held has been counted at its place
    waiting_.clear();
    if (paragraph.place->pageBreakBefore || breakPending_) {
        breakPending_ = false;
        pages_.breakPage();
    }
    if (!paragraph.place->framed) {
        placeText(paragraph);
    }
    placed_[paragraph.index].lastSheet = pages_.sheet();
    breakPending_ = holdsPageBreak(paragraph);
}

// A page break character inside; the one that ends a section is no page break.
bool Flow::holdsPageBreak(const FlowParagraph& paragraph) const {
    const Cp end = paragraph.start + paragraph.length;
    const auto begin = story_.text.begin();
    const auto at = std::find(begin + paragraph.start, begin + end, u'\f');
    const auto found = static_cast<Cp>(at - begin);
    return found < end && found + 1 != sectionEnd_;
}

void Flow::placeText(const FlowParagraph& paragraph) {
    const ParagraphPlace& place = *paragraph.place;
    const std::vector<int> lines = lineHeights(paragraph.text, place, pages_.shape().textWidth);
    const int keptBelow = place.keepWithNext ? 2 * lines.back() : 0;
    placed_[paragraph.index].sheet = pages_.addLines(lines, place.before, place.after, keptBelow);
}

void Flow::takeIntoTable(const FlowParagraph& paragraph) {
    const auto depth = static_cast<std::size_t>(paragraph.place->tableDepth);
    rows_.resize(std::max(rows_.size(), depth));
    waiting_.push_back(paragraph.index);
    if (paragraph.place->endsRow) {
        finishRow(paragraph, static_cast<int>(depth));
        return;
    }
    Row& row = rows_[depth - 1];
    if (row.empty()) {
        row.emplace_back();
    }
    row.back().push_back({paragraph, -1});
    const bool endsCell = paragraph.place->endsInnerCell ||
                          story_.text[paragraph.start + paragraph.length - 1] == u'\a';
    if (endsCell) {
        row.emplace_back();
    }
}

void Flow::finishRow(const FlowParagraph& mark, int depth) {
    const RowShape shape = rowShape(content_.tables.lists[mark.place->properties]);
    const int height = rowHeight(rows_[depth - 1], shape);
    rows_.resize(depth - 1);
    if (depth > 1) {
        Row& outer = rows_.back();
        if (outer.empty()) {
            outer.emplace_back();
        }
        outer.back().push_back({{}, height});
        return;
    }
    settleWaiting(pages_.addBox(height));
}

int Flow::cellHeight(const Cell& cell, int width) const {
    int height = 0;
    for (const CellItem& item : cell) {
        if (item.boxHeight >= 0) {
            height += item.boxHeight;
        } else {
            const ParagraphPlace& place = *item.paragraph.place;
            height +=
                sum(lineHeights(item.paragraph.text, place, width)) + place.before + place.after;
        }
    }
    return height;
}

int Flow::rowHeight(const Row& row, const RowShape& shape) const {
    if (shape.exactHeight) {
        return shape.leastHeight;
    }
    const int evenWidth =
        pages_.shape().textWidth / static_cast<int>(std::max<std::size_t>(1, row.size()));
    int height = shape.leastHeight;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const bool known = i < shape.cells.size();
        if (!known || !shape.cells[i].continuesAbove) {
            const int width = known ? shape.cells[i].width : evenWidth;
            height = std::max(height, cellHeight(row[i], width - shape.cellMargins));
        }
    }
    return height;
}

void Flow::settleWaiting(int sheet) {
    for (const std::size_t index : waiting_) {
        placed_[index].sheet = sheet;
        placed_[index].lastSheet = pages_.sheet();
    }
    waiting_.clear();
}

} // namespace

std::vector<PlacedParagraph> layOut(const DocumentContent& content) { return Flow(content).run(); }

} // namespace qvnd::word
