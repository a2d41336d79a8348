#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/layout/FloatPlace.h"
#include "platform/word/layout/PageModel.h"

#include <optional>
#include <vector>

namespace qvnd::layout {

// A part of a drawing that is seen: its place from the drawing's upper left corner, and what of
// it is painted. Lengths in twips.
struct ShapePart {
    PageArea area;
    std::optional<std::uint32_t> fill{};
    bool hasLine = false;
    double lineWidth = 15;
    std::optional<std::uint32_t> lineColour{};
    bool isLine = false; // from its upper left to its lower right corner
    word::DataBlob picture;
    std::optional<std::uint32_t> text{}; // of DocumentTables::shapeTexts
    PageArea padding{144, 72, 144, 72};  // of the text
    bool growsWithText = false;
};

// A drawing as it stands on a page.
struct ShapeReading {
    FloatPlace place;
    std::vector<ShapePart> parts; // from the lowest to the uppermost
};

// Nothing for a drawing that is hidden or has no size. What its records do not say is as
// [MS-ODRAW] 2.3 says.
std::optional<ShapeReading> readShapes(const word::Drawing& drawing,
                                       const word::DocumentTables& tables);

} // namespace qvnd::layout
