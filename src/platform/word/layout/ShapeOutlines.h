#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/layout/FloatPlace.h"
#include "platform/word/layout/Path.h"

namespace qvnd::layout {

// How a shape is turned within its area.
struct ShapeTurn {
    bool flippedAcross = false;
    bool flippedDown = false;
    double angle = 0; // radians, clockwise, around the middle
};

// The outline of a shape of that kind (MSOSPT, [MS-ODRAW] 2.4.24) in its usual proportions. Empty
// for rectangles and for kinds that are shown as one. Connectors and arcs have open outlines.
Path shapeOutline(unsigned kind, const PageArea& area, const ShapeTurn& turn);

// The geometry of a shape with points of its own ([MS-ODRAW] 2.3.6): arrays of points and of the
// segments between them as they are stored, and the coordinates that its area has.
struct ShapeGeometry {
    PageArea room{0, 0, 21600, 21600};
    word::Bytes vertices;
    word::Bytes segments; // none: lines from point to point, closed
};

// Its outline; of segments that turn around ellipses, and of arrays that are shorter than they say,
// what stands before. Empty without points.
Path ownOutline(const ShapeGeometry& geometry, const PageArea& area, const ShapeTurn& turn);

// Whether the kind has an open outline, which is never filled.
bool isOpenShape(unsigned kind);
// Whether the kind is text set into a form (WordArt).
bool isTextArt(unsigned kind);

// The head of an arrow at the end of a line that comes from `from`.
Path arrowHead(PathPoint from, PathPoint tip, double lineWidth);

} // namespace qvnd::layout
