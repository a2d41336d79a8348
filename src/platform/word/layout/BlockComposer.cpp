#include "platform/word/layout/BlockComposer.h"

#include "platform/word/layout/RowComposer.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

constexpr int deepestTable = 16;  // tables nested deeper are left out
constexpr double narrowest = 200; // twips that a cell's text has at least

} // namespace

BlockComposer::BlockComposer(StoryReader::Shared& shared, const word::Story& story,
                             std::optional<std::uint32_t> note)
    : shared_(shared), story_(story), reader_(shared, story, note),
      blocks_(blocksOf(story, shared.formats, starts_)) {}

Strips BlockComposer::compose(const Block& block, const LineSetting& setting) {
    return block.table ? composeTable(*block.table, setting)
                       : composeParagraph(block.paragraph, setting);
}

Strips BlockComposer::composeAll(const LineSetting& setting) {
    return composeCell(blocks_, setting);
}

Strips BlockComposer::composeParagraph(std::size_t paragraph, const LineSetting& setting) {
    const word::ParagraphRun& run = story_.paragraphs[paragraph];
    const word::ResolvedParagraph& format = shared_.formats.paragraph(run.style, run.properties);
    const ParagraphItems items = reader_.read(paragraph, starts_[paragraph], fields_);
    Strips strips = composeLines(items, format, shared_.fonts, setting);
    for (Strip& strip : strips) {
        strip.paragraph = paragraph;
        strip.style = run.style;
        strip.at = std::max(strip.at, starts_[paragraph]);
    }
    anchors_.insert(anchors_.end(), items.anchors.begin(), items.anchors.end());
    return strips;
}

Strips BlockComposer::composeCell(const Blocks& blocks, const LineSetting& setting) {
    Strips strips;
    for (const Block& block : blocks) {
        Strips part = compose(block, setting);
        std::move(part.begin(), part.end(), std::back_inserter(strips));
    }
    return strips;
}

Strips BlockComposer::composeTable(const Table& table, const LineSetting& setting) {
    if (depth_ >= deepestTable) {
        return {};
    }
    ++depth_;
    std::vector<ComposedRow> rows;
    for (const TableRow& row : table.rows) {
        const word::PropertyListId mark = story_.paragraphs[row.mark].properties;
        ComposedRow composed;
        composed.format = shared_.formats.row(mark);
        composed.cells = cellsOf(composed.format, row.cells.size(), setting.width);
        for (std::size_t i = 0; i < composed.cells.size() && i < row.cells.size(); ++i) {
            ComposedCell& cell = composed.cells[i];
            if (cell.format.mergedAbove || cell.format.mergedLeft) {
                continue;
            }
            LineSetting inner = setting;
            inner.grid.linePitch = setting.gridInTables ? setting.grid.linePitch : 0;
            inner.width = std::max(narrowest, cell.right - cell.left - cell.format.leftPadding -
                                                  cell.format.rightPadding);
            cell.strips = composeCell(row.cells[i], inner);
            cell.contentHeight = heightOf(cell.strips, addsSpaces_);
        }
        rows.push_back(std::move(composed));
    }
    --depth_;
    settleHeights(rows);
    Strips strips = stripsOf(rows);
    // Heading rows count only from the table's first row on.
    auto headings = std::make_shared<Strips>();
    for (std::size_t i = 0; i < strips.size(); ++i) {
        strips[i].paragraph = table.rows[i].mark;
        strips[i].style = static_cast<word::StyleIndex>(word::StyleDefinition::none);
        const bool leads = strips[i].isHeading && headings->size() == i;
        strips[i].isHeading = leads;
        if (leads) {
            headings->push_back(strips[i]);
        } else if (!headings->empty()) {
            strips[i].headings = headings;
        }
    }
    return strips;
}

} // namespace qvnd::layout
