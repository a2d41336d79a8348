#include "platform/preview/BlockStack.h"

#include <algorithm>

namespace qvnd::preview {

namespace {

constexpr int deepestDrawn = 8; // what is nested deeper stands in the eighth table

} // namespace

std::vector<Block>& BlockStack::container() {
    return levels_.empty() ? outside_ : levels_.back().cell;
}

void BlockStack::setDepth(std::size_t depth) {
    while (levels_.size() > depth) {
        endRow({});
        Table table = tableOf(std::move(levels_.back().rows));
        levels_.pop_back();
        if (!table.rows.empty()) {
            container().push_back({std::move(table)});
        }
    }
    levels_.resize(depth);
}

void BlockStack::endCell() {
    Level& level = levels_.back();
    level.row.cells.push_back(std::move(level.cell));
    level.cell.clear();
}

void BlockStack::endRow(word::ByteView definition) {
    Level& level = levels_.back();
    if (!level.cell.empty()) {
        endCell();
    }
    if (!level.row.cells.empty()) {
        level.row.definition.assign(definition.begin(), definition.end());
        level.rows.push_back(std::move(level.row));
    }
    level.row = {};
}

void BlockStack::add(Paragraph paragraph, const word::TablePlace& place,
                     word::ByteView definition) {
    setDepth(static_cast<std::size_t>(std::min(place.depth, deepestDrawn)));
    if (place.rowEnd) {
        if (!paragraph.runs.empty()) {
            container().push_back({std::move(paragraph)});
        }
        endRow(definition);
        return;
    }
    container().push_back({std::move(paragraph)});
    if (place.cellEnd) {
        endCell();
    }
}

void BlockStack::add(Block block) {
    if (!levels_.empty() && levels_.back().cell.empty() && !levels_.back().row.cells.empty()) {
        levels_.back().row.cells.back().push_back(std::move(block)); // its cell has just ended
        return;
    }
    container().push_back(std::move(block));
}

bool BlockStack::isBetweenRows() const {
    return levels_.empty() || (levels_.size() == 1 && levels_.front().row.cells.empty() &&
                               levels_.front().cell.empty());
}

std::vector<Block> BlockStack::finish() {
    setDepth(0);
    return std::move(outside_);
}

} // namespace qvnd::preview
