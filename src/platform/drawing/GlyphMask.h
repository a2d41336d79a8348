#pragma once

#include "platform/drawing/GlyphOutlines.h"

#include <cairo.h>

#include <ft2build.h>
#include FT_OUTLINE_H

#include <cstddef>
#include <vector>

namespace qvnd::drawing {

// Glyphs as a mask of pixels, each where it is put, between two pixels too. FreeType finds several
// times as fast as Cairo what an outline covers.
class GlyphMask {
public:
    // `place`: from parts of the font size, upwards, to pixels, downwards.
    void add(const GlyphOutline& outline, const cairo_matrix_t& place);
    // Paints what was added in the context's colour and forgets it.
    void paint(cairo_t* context);

private:
    struct Glyph {
        std::size_t firstPoint = 0;
        std::size_t firstEnd = 0;
        FT_Outline outline{};
        FT_Library library = nullptr;
    };
    // Pixels, from the upper left corner of the target.
    struct Area {
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
    };
    Area areaWithin(cairo_t* context) const;
    void render(Glyph& glyph, const Area& area, std::size_t stride);

    std::vector<Glyph> glyphs_;
    std::vector<FT_Vector> points_; // in parts of 64 of a pixel, upwards
    std::vector<char> tags_;
    std::vector<short> ends_;
    std::vector<unsigned char> coverage_;
};

} // namespace qvnd::drawing
