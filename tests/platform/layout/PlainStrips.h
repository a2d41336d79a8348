#pragma once

#include "platform/word/layout/Strips.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace qvnd::test {

inline constexpr double lineHeight = 100;

// A paragraph of lines of 100 twips.
inline layout::Strips paragraph(std::size_t index, std::size_t lines) {
    layout::Strips strips(lines);
    for (std::size_t i = 0; i < lines; ++i) {
        strips[i].height = lineHeight;
        strips[i].paragraph = index;
        strips[i].line = i;
        strips[i].lines = lines;
        strips[i].controlsWidows = true;
    }
    return strips;
}

// A row with one cell that holds these strips.
inline layout::Strip rowWith(layout::Strips strips) {
    layout::RowParts parts;
    parts.height = heightOf(strips, true);
    layout::RowParts::Cell cell;
    cell.width = 1000;
    cell.strips = layout::SharedStrips(std::move(strips));
    parts.cells.push_back(std::move(cell));
    layout::Strip row;
    row.height = parts.height;
    row.row = std::make_shared<const layout::RowParts>(std::move(parts));
    return row;
}

} // namespace qvnd::test
