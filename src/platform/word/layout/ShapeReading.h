#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/layout/FloatPlace.h"
#include "platform/word/layout/PageModel.h"
#include "platform/word/layout/ShapeOutlines.h"

#include <optional>
#include <vector>

namespace qvnd::layout {

// A part of a drawing that is seen: its place from the drawing's upper left corner, and what of
// it is painted. Lengths in twips.
struct ShapePart {
    PageArea area;
    unsigned kind = 0; // MSOSPT
    Path outline;      // of a shape with points of its own
    ShapeTurn turn;
    std::optional<std::uint32_t> fill{};
    double opacity = 1; // of the fill
    bool hasLine = false;
    double lineWidth = 15;
    std::optional<std::uint32_t> lineColour{};
    bool isDashed = false;
    bool startsWithArrow = false; // a line
    bool endsWithArrow = false;
    std::u16string artText; // of text art
    FaceRequest artFace;
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
