#pragma once

#include "platform/drawing/GlyphPainter.h"
#include "platform/word/layout/PageModel.h"

namespace qvnd::drawing {

// Paints the texts of a page with their effects and lines, on a context whose unit is the twip.
class TextPainter {
public:
    // Must outlive the object.
    explicit TextPainter(GlyphPainter& glyphs) : glyphs_(glyphs) {}

    void paint(cairo_t* context, const layout::PlacedText& text);

private:
    struct Show;
    void paintBehind(cairo_t* context, const layout::PlacedText& text);
    void show(cairo_t* context, const layout::PlacedText& text, const Show& how);

    GlyphPainter& glyphs_;
};

} // namespace qvnd::drawing
