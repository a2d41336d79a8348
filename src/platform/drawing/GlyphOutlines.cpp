#include "platform/drawing/GlyphOutlines.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cstddef>
#include <utility>

namespace qvnd::drawing {

namespace {

constexpr std::size_t mostKept = 4096; // two megabytes of Chinese characters

// As Cairo makes a face bold or oblique.
void change(FT_Outline& outline, const DrawnFace& drawn) {
    constexpr FT_Pos partOfBold = 24;
    constexpr FT_Fixed one = 0x10000;
    constexpr FT_Fixed slope = 0x0366A;
    if (drawn.embolden) {
        const FT_Pos strength = drawn.face->units_per_EM / partOfBold;
        FT_Outline_EmboldenXY(&outline, strength, strength);
    }
    if (drawn.slant) {
        const FT_Matrix oblique{one, slope, 0, one};
        FT_Outline_Transform(&outline, &oblique);
    }
}

} // namespace

const GlyphOutline* GlyphOutlines::of(layout::FaceId face, unsigned glyph) {
    const std::uint64_t key = (std::uint64_t{face} << 32U) | glyph;
    auto known = kept_.find(key);
    if (known == kept_.end()) {
        if (kept_.size() >= mostKept) {
            kept_.clear();
        }
        known = kept_.emplace(key, read(face, glyph)).first;
    }
    return known->second.isThere ? &known->second.outline : nullptr;
}

// In the units of the font: the size that Cairo has set stays, and the turn does not count.
GlyphOutlines::Kept GlyphOutlines::read(layout::FaceId face, unsigned glyph) const {
    const DrawnFace drawn = fonts_.drawn(face);
    constexpr FT_Int32 flags =
        FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP | FT_LOAD_IGNORE_TRANSFORM;
    Kept kept;
    if (FT_Load_Glyph(drawn.face, glyph, flags) != 0 ||
        drawn.face->glyph->format != FT_GLYPH_FORMAT_OUTLINE || drawn.face->units_per_EM == 0) {
        return kept;
    }
    FT_Outline& from = drawn.face->glyph->outline;
    change(from, drawn);
    GlyphOutline& outline = kept.outline;
    const auto points = static_cast<std::size_t>(from.n_points);
    const auto unit = static_cast<float>(drawn.face->units_per_EM);
    outline.points.reserve(points);
    for (std::size_t i = 0; i < points; ++i) {
        outline.points.push_back({static_cast<float>(from.points[i].x) / unit,
                                  static_cast<float>(from.points[i].y) / unit});
    }
    outline.tags.assign(from.tags, from.tags + points);
    outline.ends.assign(from.contours, from.contours + from.n_contours);
    outline.flags = from.flags;
    outline.library = drawn.face->glyph->library;
    kept.isThere = true;
    return kept;
}

} // namespace qvnd::drawing
