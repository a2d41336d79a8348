#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/formatting/TableStyles.h"

#include <optional>
#include <vector>

namespace qvnd::word {

enum class VerticalAlignment : std::uint8_t { top, centre, bottom };

// How the lines of a text run. Downwards they follow from right to left, Chinese characters upright
// or turned with all others; upwards from left to right.
enum class TextFlow : std::uint8_t { across, down, downTurned, up };

// A cell of a row. Lengths in twips.
struct ResolvedCell {
    int left = 0; // edges, measured from the text margin
    int right = 0;
    bool mergedLeft = false;  // continues the cell to its left
    bool mergedAbove = false; // continues the cell above
    TextFlow flow = TextFlow::across;
    VerticalAlignment alignment = VerticalAlignment::top;
    Border topSide;
    Border leftSide;
    Border bottomSide;
    Border rightSide;
    bool ownTop = false; // the side above is told for the cell, not for the table
    bool ownBottom = false;
    std::optional<std::uint32_t> background;
    int leftPadding = 108;
    int rightPadding = 108;
    int topPadding = 0;
    int bottomPadding = 0;
};

// The formatting of a table row. Lengths in twips.
struct ResolvedRow {
    std::vector<ResolvedCell> cells; // from left to right, without gaps; empty without definition
    LineAlignment alignment = LineAlignment::left; // of the table between the margins
    int height = 0;                                // minimum, or exact with `exactHeight`
    bool exactHeight = false;
    bool staysWhole = false; // does not break across pages
    bool isHeading = false;  // repeated at the top of each further page
    TableStyle style;
    bool tellsBackgrounds = false; // itself, and not its style
    Border tableTop;
    Border tableBottom;
};

// `properties`: the property list of the row's end mark. Borders that the list does not set come
// from its table style; above and below are those between two rows of the table.
ResolvedRow resolvedRowOf(ByteView properties, const DocumentTables& tables);

// Puts the outer borders of the table on its first row and on its last one.
void putOuterBorders(ResolvedRow& row, bool isFirst, bool isLast);

} // namespace qvnd::word
