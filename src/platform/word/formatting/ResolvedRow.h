#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/formatting/ResolvedParagraph.h"

#include <optional>
#include <vector>

namespace qvnd::word {

enum class VerticalAlignment : std::uint8_t { top, centre, bottom };

// A cell of a row. Lengths in twips.
struct ResolvedCell {
    int left = 0; // edges, from the margin of the text
    int right = 0;
    bool mergedLeft = false;  // goes on what stands left of it
    bool mergedAbove = false; // goes on what stands above it
    VerticalAlignment alignment = VerticalAlignment::top;
    Border topSide;
    Border leftSide;
    Border bottomSide;
    Border rightSide;
    std::optional<std::uint32_t> background;
    int leftPadding = 108;
    int rightPadding = 108;
    int topPadding = 0;
    int bottomPadding = 0;
};

// What the properties of a row's end say of the row. Lengths in twips.
struct ResolvedRow {
    std::vector<ResolvedCell> cells; // from left to right, without gaps; empty for a row undefined
    LineAlignment alignment = LineAlignment::left; // of the table between the margins
    int height = 0;                                // at least, or exactly
    bool exactHeight = false;
    bool staysWhole = false; // not parted by the end of a page
    bool isHeading = false;  // shown again on each further page
};

// `properties`: the list of the row's mark. The table style that it names gives borders that the
// row itself does not.
ResolvedRow resolvedRowOf(ByteView properties, const DocumentTables& tables);

} // namespace qvnd::word
