#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/layout/FloatPlace.h"
#include "platform/word/layout/Path.h"
#include "platform/word/layout/ShapeTurn.h"

namespace qvnd::layout {

// The area of a shape or a picture before it is turned. The area told of one that lies rather on
// its side than upright is the area that it takes on its side ([MS-ODRAW] 2.3.18.5).
PageArea uprightArea(const PageArea& area, double angle);

// The outline of a predefined shape (MSOSPT, [MS-ODRAW] 2.4.24) with its default adjustments. Empty
// for rectangles and for unsupported shapes, which are drawn as rectangles. Connectors and arcs
// have open outlines.
Path shapeOutline(unsigned kind, const PageArea& area, const ShapeTurn& turn);

// Custom geometry of a shape ([MS-ODRAW] 2.3.6): the stored arrays of points and path segments, and
// the coordinate range of the shape's area.
struct ShapeGeometry {
    PageArea room{0, 0, 21600, 21600};
    word::Bytes vertices;
    word::Bytes segments; // empty: a closed polygon through the points
};

// The outline of custom geometry. It ends before the first elliptical segment and where an array is
// truncated. Empty without points.
Path ownOutline(const ShapeGeometry& geometry, const PageArea& area, const ShapeTurn& turn);

// Whether the shape has an open outline, which is never filled.
bool isOpenShape(unsigned kind);
// Whether the shape is text art (WordArt).
bool isTextArt(unsigned kind);

// An arrowhead at `tip`, for a line that starts at `from`.
Path arrowHead(PathPoint from, PathPoint tip, double lineWidth);

} // namespace qvnd::layout
