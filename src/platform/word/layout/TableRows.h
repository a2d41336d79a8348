#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <vector>

namespace qvnd::word {

// A cell of a row as its definition (sprmTDefTable) gives it. Lengths in twips.
struct RowCell {
    int width = 0;
    bool continuesAbove = false; // vertically merged into the cell above
};

struct RowShape {
    std::vector<RowCell> cells;
    int leastHeight = 0; // from sprmTDyaRowHeight
    bool exactHeight = false;
    int cellMargins = 216; // left and right together
};

// The shape of the row that a row mark's property list describes; no cells when it says nothing.
RowShape rowShape(ByteView properties);

} // namespace qvnd::word
