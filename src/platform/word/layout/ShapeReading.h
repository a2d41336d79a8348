#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/formatting/ResolvedRow.h"
#include "platform/word/layout/FloatPlace.h"
#include "platform/word/layout/PageModel.h"
#include "platform/word/layout/Path.h"
#include "platform/word/layout/ShapeTurn.h"

#include <optional>
#include <vector>

namespace qvnd::layout {

// A visible shape of a drawing. Its area is relative to the upper left corner of the drawing.
// Lengths in twips.
struct ShapePart {
    PageArea area;
    unsigned kind = 0; // MSOSPT
    Path outline;      // of a shape with custom geometry
    ShapeTurn turn;
    std::optional<std::uint32_t> fill{};
    double opacity = 1; // of the fill
    bool hasLine = false;
    double lineWidth = 15;
    std::optional<std::uint32_t> lineColour{};
    bool isDashed = false;
    bool startsWithArrow = false; // of a line
    bool endsWithArrow = false;
    std::u16string artText; // the text of text art
    FaceRequest artFace;
    word::DataBlob picture;
    std::optional<std::uint32_t> text{}; // index into DocumentTables::shapeTexts
    PageArea padding{144, 72, 144, 72};  // of the text
    bool growsWithText = false;
    word::TextFlow textFlow = word::TextFlow::across;
};

// A drawing: its position and its shapes.
struct ShapeReading {
    FloatPlace place;
    std::vector<ShapePart> parts; // in painting order
};

// Reads the shapes of a drawing. Nothing for a drawing that is hidden or has no size. Missing
// properties have the defaults of [MS-ODRAW] 2.3.
std::optional<ShapeReading> readShapes(const word::Drawing& drawing,
                                       const word::DocumentTables& tables);

} // namespace qvnd::layout
