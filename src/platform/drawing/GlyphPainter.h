#pragma once

#include "platform/drawing/FontFaces.h"

#include <cairo.h>

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string_view>

namespace qvnd::drawing {

class GlyphMask;
class GlyphOutlines;

// How characters are shown: as text that a reader of a PDF finds, or as shapes that are none, their
// areas filled or their edges drawn.
enum class Ink : std::uint8_t { text, areas, edges };

// Characters of one face, side by side.
struct GlyphRun {
    layout::FaceId face = 0;
    double size = 0;    // of the font, in units of the context
    double stretch = 1; // of the characters' width
    std::u16string_view text;
    std::span<const float> advances; // a code unit each; 0 for the second of a pair
    Ink ink = Ink::text;
};

// Shows characters with the faces that were measured, each with the text that it stands for, so
// that a reader of a PDF finds it again.
class GlyphPainter {
public:
    // Must outlive the object.
    explicit GlyphPainter(FontFaces& fonts);
    ~GlyphPainter();
    GlyphPainter(const GlyphPainter&) = delete;
    GlyphPainter& operator=(const GlyphPainter&) = delete;

    // In the context's colour (edges with its lines), from its origin on along its first axis.
    // Where the layout went by another face than the one that is painted, a wider glyph is narrowed
    // to its character's room, and a narrower one stands in the middle of it.
    void show(cairo_t* context, const GlyphRun& run);

    FontFaces& fonts() { return fonts_; }

private:
    class Batch;
    struct Glyph {
        unsigned number = 0;
        double x = 0;     // in the context's units
        double width = 1; // against that of its face
    };
    bool addToMask(cairo_t* context, const GlyphRun& run, const Glyph& glyph);
    cairo_font_face_t* fontFace(layout::FaceId id);

    FontFaces& fonts_;
    std::map<layout::FaceId, cairo_font_face_t*> faces_;
    std::unique_ptr<GlyphOutlines> outlines_;
    std::unique_ptr<GlyphMask> mask_;
    bool isOdd_ = false; // the last run shown
};

// The character that begins at that code unit.
char32_t characterAt(std::u16string_view text, std::size_t at);

} // namespace qvnd::drawing
