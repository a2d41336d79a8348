#pragma once

#include "platform/preview/DocumentReading.h"
#include "platform/word/docfile/container/Bytes.h"

#include <optional>
#include <vector>

namespace qvnd::preview {

// What the properties of a row's end say of it. Lengths in twips.
struct RowDefinition {
    struct Cell {
        bool mergedLeft = false;  // goes on what stands left of it
        bool mergedAbove = false; // goes on what stands above it
        Borders borders;
        bool isMiddle = false; // content halfway down, or at the bottom
        std::optional<std::uint32_t> background;
    };

    std::vector<int> edges; // one more than cells, never descending; or none
    std::vector<Cell> cells;
    Alignment alignment = Alignment::left;
    int padding = 108;     // left and right in each cell
    bool bordered = false; // borders of the table as a whole, or a table style
};

RowDefinition rowDefinition(word::ByteView properties);

} // namespace qvnd::preview
