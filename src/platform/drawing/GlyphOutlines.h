#pragma once

#include "platform/drawing/FontFaces.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

struct FT_LibraryRec_;

namespace qvnd::drawing {

// The outline of a glyph in parts of the font size, upwards from the baseline.
struct GlyphOutline {
    struct Point {
        float x = 0;
        float y = 0;
    };
    std::vector<Point> points;
    std::vector<char> tags;  // of the points, as FreeType has them
    std::vector<short> ends; // the last point of each contour
    int flags = 0;           // as FreeType has them
    FT_LibraryRec_* library = nullptr;
};

// The outlines of glyphs with what is done to their faces, kept from one use to the next.
class GlyphOutlines {
public:
    // Must outlive the object.
    explicit GlyphOutlines(const FontFaces& fonts) : fonts_(fonts) {}

    // Null for a glyph that has no outline but pixels. Valid up to the next call.
    const GlyphOutline* of(layout::FaceId face, unsigned glyph);

private:
    struct Kept {
        GlyphOutline outline;
        bool isThere = false;
    };
    Kept read(layout::FaceId face, unsigned glyph) const;

    const FontFaces& fonts_;
    std::unordered_map<std::uint64_t, Kept> kept_; // by face and glyph
};

} // namespace qvnd::drawing
