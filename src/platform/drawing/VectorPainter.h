#pragma once

#include "platform/drawing/GlyphPainter.h"
#include "platform/drawing/metafile/VectorPicture.h"

namespace qvnd::drawing {

// A rectangle of a page, in twips.
struct PaintedArea {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

// Paints the drawing so that it fills the area, on a context whose unit is the twip. What reaches
// beyond the area is cut off but for a fiftieth, which outlines at its edge need.
void paint(cairo_t* context, const VectorPicture& picture, const PaintedArea& area,
           GlyphPainter& glyphs);

// Makes the path the context's current one, in place of what it was.
void trace(cairo_t* context, const layout::Path& path);

// The image as a surface, which the caller destroys; nothing where memory is too small.
cairo_surface_t* surfaceOf(const PixelImage& image);

} // namespace qvnd::drawing
