#pragma once

#include "platform/drawing/GlyphPainter.h"
#include "platform/drawing/metafile/VectorPicture.h"
#include "platform/word/layout/FloatPlace.h"

namespace qvnd::drawing {

// Paints the drawing so that it fills the area, on a context whose unit is the twip. What reaches
// beyond the area is cut off but for a fiftieth, which outlines at its edge need. Damaged drawings
// take no longer than others: coordinates far outside count as at some distance, lines of very many
// dashes are solid, characters larger than any page are left out.
void paint(cairo_t* context, const VectorPicture& picture, const layout::PageArea& area,
           GlyphPainter& glyphs);

// Makes the path the context's current one, in place of what it was.
void trace(cairo_t* context, const layout::Path& path);

// The drawing on white, in pixels, 96 to the inch. Throws as paintedImage does.
PixelImage imageOf(const VectorPicture& picture, int width, int height, FontFaces& fonts);

} // namespace qvnd::drawing
