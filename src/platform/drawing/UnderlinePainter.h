#pragma once

#include "platform/word/layout/PageModel.h"

#include <cairo.h>

namespace qvnd::drawing {

// Paints the line below a text whose beginning is the origin, in the colour of the line or else in
// that of the context.
void paintUnderline(cairo_t* context, const layout::PlacedText& text);

} // namespace qvnd::drawing
