#include "platform/word/layout/BlockComposer.h"

#include "platform/word/layout/FloatComposer.h"
#include "platform/word/layout/VerticalText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qvnd::layout {

namespace {

constexpr int deepestTable = 16;  // tables nested deeper are left out
constexpr double narrowest = 200; // twips that a cell's text has at least

// Most cells hold one paragraph, whose lines are all that there are.
void append(Strips& strips, Strips more) {
    if (strips.empty()) {
        strips = std::move(more);
    } else {
        std::move(more.begin(), more.end(), std::back_inserter(strips));
    }
}

// Cuts off what the cells that end in a row of exact height do not hold.
void cutCells(const std::vector<ComposedRow>& rows, std::size_t at, Layer& layer, bool office) {
    for (const ComposedCell& cell : rows[at].cells) {
        if (at + 1 == rows.size() || !goesOnIn(cell, rows[at + 1])) {
            layer.cutBelow(rows[at].height, cell.left, cell.right, office);
        }
    }
}

// Space of that width in a line, which makes the line reach so far below its baseline.
TextItem spaceBeside(const TextItem& picture, double width, double below) {
    TextItem space = picture;
    space.picture = nullptr;
    space.width = width;
    space.height = 0;
    space.raised = -below;
    return space;
}

// The picture of a frame in a line of text, below the baseline, with what the frame keeps clear. A
// frame that is placed at a margin keeps nothing clear before it.
std::vector<TextItem> hangingIn(const word::ParagraphFrame& frame, TextItem picture, word::Cp at) {
    using Place = word::ParagraphFrame::Place;
    const bool isAtMargin = frame.placeAcross == Place::start || frame.placeAcross == Place::end;
    const double below = frame.apartDown + picture.height;
    picture.at = at;
    picture.raised = -below;
    return {spaceBeside(picture, isAtMargin ? 0 : frame.apartAcross, 0), picture,
            spaceBeside(picture, frame.apartAcross, below + frame.apartDown)};
}

// Frames stand in front of what refers to notes in the strip itself.
void anchor(const std::vector<AnchoredFloat>& frames, Strip& strip) {
    std::vector<std::uint32_t> notes;
    for (const AnchoredFloat& frame : frames) {
        strip.floats.push_back(frame);
        notes.insert(notes.end(), frame.notes.begin(), frame.notes.end());
    }
    strip.notes.insert(strip.notes.begin(), notes.begin(), notes.end());
}

bool runsAcross(const ComposedCell& cell) { return cell.format.flow == word::TextFlow::across; }

// Pictures stand upright in lines that run downwards or upwards.
void turnPictures(std::vector<TextItem>& items) {
    for (TextItem& item : items) {
        if (item.kind == TextItem::Kind::picture) {
            std::swap(item.width, item.height);
        }
    }
}

// Of the text of a cell.
LineSetting settingWithin(const ComposedCell& cell, const LineSetting& setting) {
    LineSetting inner = setting;
    inner.obstacles.clear();
    inner.grid.linePitch = setting.gridInTables ? setting.grid.linePitch : 0;
    inner.grid.cellWidth = setting.gridInTables ? setting.grid.cellWidth : 0;
    inner.grid.offset = setting.grid.offset + cell.left + cell.format.leftPadding;
    inner.width = std::max(narrowest, cell.right - cell.left - cell.format.leftPadding -
                                          cell.format.rightPadding);
    return inner;
}

} // namespace

BlockComposer::BlockComposer(StoryReader::Shared& shared, const word::Story& story,
                             std::optional<std::uint32_t> note)
    : shared_(shared), story_(story), reader_(shared, story, note), blocks_(story, shared.formats) {
}

Strips BlockComposer::compose(const Block& block, const LineSetting& setting, word::Cp from) {
    if (block.framed > 0) {
        composeFrame(block, setting);
        return {};
    }
    Strips strips = block.table ? composeTable(block, setting)
                                : composeParagraph(block.paragraph, setting, from);
    if (from == 0) {
        anchorFrames(block.paragraph, strips);
    }
    return strips;
}

Strips BlockComposer::composeAll(const LineSetting& setting) {
    Strips strips;
    for (std::size_t i = 0; blocks_.has(i); ++i) {
        append(strips, compose(blocks_[i], setting));
    }
    if (auto last = rest()) {
        strips.push_back(std::move(*last));
    }
    return strips;
}

std::optional<Strip> BlockComposer::rest() {
    if (frames_.empty()) {
        return std::nullopt;
    }
    Strip strip;
    anchor(std::exchange(frames_, {}), strip);
    strip.paragraph = story_.paragraphs.size();
    strip.at = story_.size();
    return strip;
}

void BlockComposer::anchorFrames(std::size_t paragraph, Strips& strips) {
    if (strips.empty()) {
        return;
    }
    if (!frames_.empty()) {
        anchored_ = std::exchange(frames_, {});
        anchoredTo_ = paragraph;
    }
    if (anchoredTo_ == paragraph) {
        anchor(anchored_, strips.front());
    }
}

Strips BlockComposer::composeFramed(const Block& block, const LineSetting& setting) {
    Strips strips;
    for (std::size_t i = 0; i < block.framed; ++i) {
        append(strips, composeParagraph(block.paragraph + i, setting, 0));
    }
    return strips;
}

// Whether it is neither in a frame nor in a table.
bool BlockComposer::isPlain(std::size_t paragraph) {
    if (paragraph >= story_.paragraphs.size() || story_.paragraphs[paragraph].length == 0) {
        return false;
    }
    const word::ParagraphRun& run = story_.paragraphs[paragraph];
    const char16_t mark = story_.text[blocks_.startOf(paragraph) + run.length - 1];
    return shared_.formats.place(run.properties, mark).depth == 0 &&
           !shared_.formats.paragraph(run.style, run.properties).frame;
}

// In the office suite a frame that holds nothing but a picture is none: the picture hangs in the
// first line of the paragraph behind it.
bool BlockComposer::hangsInNextParagraph(const Block& frame) {
    const std::size_t next = frame.paragraph + 1;
    if (!shared_.officeText || frame.framed != 1 || !isPlain(next)) {
        return false;
    }
    const ParagraphItems items =
        reader_.read(frame.paragraph, blocks_.startOf(frame.paragraph), fields_);
    if (items.items.size() != 1 || items.items[0].kind != TextItem::Kind::picture) {
        return false;
    }
    const word::ParagraphRun& run = story_.paragraphs[frame.paragraph];
    hanging_ = hangingIn(*shared_.formats.paragraph(run.style, run.properties).frame,
                         items.items[0], blocks_.startOf(next));
    hangsIn_ = next;
    return true;
}

// A frame without a width of its own is as wide as its text.
void BlockComposer::composeFrame(const Block& block, const LineSetting& setting) {
    if (hangsInNextParagraph(block)) {
        return;
    }
    const word::ParagraphRun& run = story_.paragraphs[block.paragraph];
    const auto& frame = *shared_.formats.paragraph(run.style, run.properties).frame;
    LineSetting inner = setting;
    inner.obstacles.clear();
    inner.width = frame.width > 0 ? frame.width : setting.width;
    Strips strips = composeFramed(block, inner);
    if (frame.width == 0) {
        inner.width = textWidth(strips) + 1;
        strips = composeFramed(block, inner);
    }
    frames_.push_back(framed(frame, inner.width, stacked(strips, shared_.addsSpaces)));
    for (const Strip& strip : strips) {
        auto& notes = frames_.back().notes;
        notes.insert(notes.end(), strip.notes.begin(), strip.notes.end());
    }
}

// Each drawing goes with the line that its anchor stands on.
void BlockComposer::anchorDrawings(const std::vector<word::Cp>& anchors, word::Cp from,
                                   const LineSetting& setting, Strips& strips) {
    FloatComposer floats(shared_);
    for (const word::Cp at : anchors) {
        const auto anchor = std::lower_bound(
            story_.anchors.begin(), story_.anchors.end(), at,
            [](const word::Anchor& a, word::Cp position) { return a.at < position; });
        const bool isDrawing = anchor != story_.anchors.end() && anchor->at == at &&
                               anchor->kind == word::AnchorKind::drawing;
        if (at < from || !isDrawing) {
            continue;
        }
        if (auto floating = floats.drawing(anchor->index, fields_, setting)) {
            const auto strip = std::find_if(strips.rbegin(), strips.rend(),
                                            [&](const Strip& s) { return s.at <= at; });
            (strip == strips.rend() ? strips.front() : *strip)
                .floats.push_back(std::move(*floating));
        }
    }
}

// Whether a paragraph and the next one stand in one box, both in the text or in one cell.
bool BlockComposer::sharesBoxWithNext(std::size_t paragraph) const {
    if (paragraph + 1 >= story_.paragraphs.size()) {
        return false;
    }
    const word::ParagraphRun& own = story_.paragraphs[paragraph];
    const word::ParagraphRun& next = story_.paragraphs[paragraph + 1];
    const word::Cp end = blocks_.startOf(paragraph) + own.length;
    if (own.length == 0 || next.length == 0 || story_.text[end - 1] != u'\r') {
        return false;
    }
    word::FormatResolver& formats = shared_.formats;
    return shareBox(formats.paragraph(own.style, own.properties),
                    formats.paragraph(next.style, next.properties)) &&
           formats.place(own.properties, u'\r').depth ==
               formats.place(next.properties, story_.text[end + next.length - 1]).depth;
}

JoinedBorders BlockComposer::bordersOf(std::size_t paragraph) const {
    return {paragraph > 0 && sharesBoxWithNext(paragraph - 1), sharesBoxWithNext(paragraph)};
}

Strips BlockComposer::composeParagraph(std::size_t paragraph, const LineSetting& setting,
                                       word::Cp from) {
    const word::ParagraphRun& run = story_.paragraphs[paragraph];
    const auto& format = shared_.formats.paragraph(run.style, run.properties, cell_);
    ParagraphItems items = reader_.read(paragraph, blocks_.startOf(paragraph), fields_);
    if (hangsIn_ == paragraph) {
        items.isLeftOut = false;
        items.items.insert(items.items.begin(), hanging_.begin(), hanging_.end());
    }
    if (items.isLeftOut) {
        return {};
    }
    if (setting.isTurned) {
        turnPictures(items.items);
    }
    const auto first = std::find_if(items.items.begin(), items.items.end(),
                                    [&](const TextItem& item) { return item.at >= from; });
    const auto begin = static_cast<std::size_t>(first - items.items.begin());
    const JoinedBorders borders = bordersOf(paragraph);
    LineSetting joined;
    if (borders.above || borders.below) {
        joined = setting;
        joined.borders = borders;
    }
    const LineSetting& own = borders.above || borders.below ? joined : setting;
    const std::vector<word::Cp> anchors = std::move(items.anchors);
    Strips strips = composeLines(std::move(items), format, shared_.fonts, own, begin);
    for (Strip& strip : strips) {
        strip.paragraph = paragraph;
        strip.style = run.style;
        strip.at = std::max(strip.at, blocks_.startOf(paragraph));
    }
    if (from == 0 && !strips.empty()) {
        strips.front().at = blocks_.startOf(paragraph); // though its first characters are not seen
    }
    anchorDrawings(anchors, from, setting, strips);
    return strips;
}

Strips BlockComposer::composeCell(const Blocks& blocks, word::CellLook look,
                                  const LineSetting& setting) {
    const word::CellLook outer = std::exchange(cell_, look);
    reader_.setCell(cell_);
    Strips strips;
    for (const Block& block : blocks) {
        append(strips, compose(block, setting));
    }
    cell_ = outer;
    reader_.setCell(cell_);
    return strips;
}

word::CellLook BlockComposer::lookOf(const Table& table, std::size_t row, std::size_t cell) {
    const std::size_t cells = table.rows[row].cells.size();
    const word::PropertyListId mark = story_.paragraphs[table.rows[row].mark].properties;
    return shared_.formats.cellLook(
        shared_.formats.row(mark).style,
        {row, cell, !blocks_.hasRow(table, row + 1), cell + 1 == cells});
}

Strips BlockComposer::composeTable(const Block& block, const LineSetting& setting) {
    Strips strips;
    TableCursor next;
    while (blocks_.hasRow(*block.table, next.row)) {
        append(strips, composeRows(block, setting, next));
    }
    return strips;
}

Strips BlockComposer::composeRows(const Block& block, const LineSetting& setting,
                                  TableCursor& next) {
    const Table& table = *block.table;
    const std::size_t first = next.row;
    const std::size_t headings = first == 0 ? headingRowsOf(table) : 0;
    next.row = endOfMerged(table, std::max(first + 1, headings));
    if (depth_ >= deepestTable) {
        return {};
    }
    ++depth_;
    std::vector<ComposedRow> rows;
    for (std::size_t i = first; i < next.row; ++i) {
        rows.push_back(composeRow(table, i, setting));
    }
    settleHeights(rows, setting.options.officeLines);
    composeTurned(table, first, rows, setting);
    --depth_;
    const bool office = setting.options.officeLines;
    Strips strips = stripsOf(rows, {shared_.addsSpaces, !office});
    if (office && !blocks_.hasRow(table, next.row)) {
        strips.back().height += borderBelow(rows.back()); // of the table
    }
    for (std::size_t i = 0; i < strips.size(); ++i) {
        if (rows[i].format.exactHeight) {
            cutCells(rows, i, strips[i].layer, office);
        }
        // In the office suite what stays with the next row stays whole.
        strips[i].keepsLines = strips[i].keepsLines || (office && strips[i].keepsWithNext);
        strips[i].paragraph = table.rows[first + i].mark;
        strips[i].style = static_cast<word::StyleIndex>(word::StyleDefinition::none);
        strips[i].isHeading = i < headings;
    }
    if (headings > 0) {
        const auto behind = strips.begin() + static_cast<std::ptrdiff_t>(headings);
        next.headings = std::make_shared<const Strips>(strips.begin(), behind);
    }
    for (std::size_t i = headings; i < strips.size(); ++i) {
        strips[i].headings = next.headings;
    }
    return strips;
}

ComposedRow BlockComposer::composeRow(const Table& table, std::size_t index,
                                      const LineSetting& setting) {
    const bool isLast = !blocks_.hasRow(table, index + 1);
    const TableRow& row = table.rows[index];
    ComposedRow composed;
    composed.format = shared_.formats.row(story_.paragraphs[row.mark].properties);
    word::putOuterBorders(composed.format, index == 0, isLast);
    composed.cells = cellsOf(composed.format, row.cells.size(), setting.width);
    for (std::size_t i = 0; i < composed.cells.size() && i < row.cells.size(); ++i) {
        ComposedCell& cell = composed.cells[i];
        const word::CellLook look = lookOf(table, index, i);
        if (!composed.format.tellsBackgrounds && !cell.format.background) {
            cell.format.background = shared_.formats.background(look);
        }
        if (cell.format.mergedAbove || cell.format.mergedLeft || !runsAcross(cell)) {
            continue;
        }
        const LineSetting inner = settingWithin(cell, setting);
        cell.strips = composeCell(row.cells[i], look, inner);
        cell.contentHeight = heightOf(cell.strips, shared_.addsSpaces);
    }
    return composed;
}

// Text that runs downwards or upwards adds nothing to the height of its row; its lines are as long
// as the rows are high that the cell reaches over.
void BlockComposer::composeTurned(const Table& table, std::size_t first,
                                  std::vector<ComposedRow>& rows, const LineSetting& setting) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const TableRow& row = table.rows[first + i];
        for (std::size_t k = 0; k < rows[i].cells.size() && k < row.cells.size(); ++k) {
            ComposedCell& cell = rows[i].cells[k];
            if (runsAcross(cell) || cell.format.mergedAbove || cell.format.mergedLeft) {
                continue;
            }
            LineSetting inner = settingWithin(cell, setting);
            const double width = inner.width;
            inner.grid = {};
            inner.isTurned = true;
            inner.width = std::max(narrowest, roomWithin(rows, i, cell));
            const word::CellLook look = lookOf(table, first + i, k);
            cell.strips = {turnedText(composeCell(row.cells[k], look, inner),
                                      {width, inner.width, cell.format.alignment, cell.format.flow},
                                      shared_.fonts, shared_.addsSpaces)};
            cell.format.alignment = word::VerticalAlignment::top;
        }
    }
}

// Heading rows count from the table's first row on, and only above other rows: a table of nothing
// but headings is an ordinary one.
std::size_t BlockComposer::headingRowsOf(const Table& table) {
    for (std::size_t row = 0; blocks_.hasRow(table, row); ++row) {
        const std::size_t mark = table.rows[row].mark;
        if (!shared_.formats.row(story_.paragraphs[mark].properties).isHeading) {
            return row;
        }
    }
    return 0;
}

// The first row from `least` on that no cell above it reaches into.
std::size_t BlockComposer::endOfMerged(const Table& table, std::size_t least) {
    const auto goesOn = [&](const TableRow& row) {
        const auto& cells = shared_.formats.row(story_.paragraphs[row.mark].properties).cells;
        return std::any_of(cells.begin(), cells.end(),
                           [](const word::ResolvedCell& cell) { return cell.mergedAbove; });
    };
    std::size_t end = least;
    while (blocks_.hasRow(table, end) && goesOn(table.rows[end])) {
        ++end;
    }
    return end;
}

} // namespace qvnd::layout
