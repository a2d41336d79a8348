#include "platform/drawing/GlyphMask.h"

#include "platform/drawing/CairoImage.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qvnd::drawing {

namespace {

constexpr double unitsPerPixel = 64;
constexpr double farthestPixel = 30000; // pixels; what is placed farther is on no page

struct Rows {
    unsigned char* coverage = nullptr;
    std::size_t stride = 0;
    int left = 0;
    int top = 0;
};

// Called by FreeType for a row of pixels, counted upwards.
void addSpans(int y, int count, const FT_Span* spans, void* user) {
    const Rows& rows = *static_cast<const Rows*>(user);
    const auto row = static_cast<std::size_t>(-y - 1 - rows.top);
    for (int i = 0; i < count; ++i) {
        const auto column = static_cast<std::size_t>(spans[i].x - rows.left);
        unsigned char* pixel = rows.coverage + row * rows.stride + column;
        for (unsigned short k = 0; k < spans[i].len; ++k, ++pixel) {
            *pixel = static_cast<unsigned char>(std::min(255, *pixel + spans[i].coverage));
        }
    }
}

FT_Pos unitsOf(double pixels) {
    return std::lround(std::clamp(pixels, -farthestPixel, farthestPixel) * unitsPerPixel);
}

} // namespace

void GlyphMask::add(const GlyphOutline& outline, const cairo_matrix_t& place) {
    if (outline.points.empty()) {
        return;
    }
    Glyph& glyph = glyphs_.emplace_back();
    glyph.firstPoint = points_.size();
    glyph.firstEnd = ends_.size();
    glyph.outline.n_points = static_cast<short>(outline.points.size());
    glyph.outline.n_contours = static_cast<short>(outline.ends.size());
    glyph.outline.flags = outline.flags;
    glyph.library = outline.library;
    for (const GlyphOutline::Point& point : outline.points) {
        points_.push_back({unitsOf(place.xx * point.x + place.xy * point.y + place.x0),
                           unitsOf(-(place.yx * point.x + place.yy * point.y + place.y0))});
    }
    tags_.insert(tags_.end(), outline.tags.begin(), outline.tags.end());
    ends_.insert(ends_.end(), outline.ends.begin(), outline.ends.end());
}

void GlyphMask::paint(cairo_t* context) {
    cairo_save(context);
    cairo_identity_matrix(context);
    const Area area = areaWithin(context);
    if (area.left < area.right && area.top < area.bottom) {
        const int width = area.right - area.left;
        const int height = area.bottom - area.top;
        const int stride = cairo_format_stride_for_width(CAIRO_FORMAT_A8, width);
        coverage_.assign(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height), 0);
        for (Glyph& glyph : glyphs_) {
            render(glyph, area, static_cast<std::size_t>(stride));
        }
        const CairoSurface mask(cairo_image_surface_create_for_data(
            coverage_.data(), CAIRO_FORMAT_A8, width, height, stride));
        cairo_mask_surface(context, mask.get(), area.left, area.top);
    }
    cairo_restore(context);
    glyphs_.clear();
    points_.clear();
    tags_.clear();
    ends_.clear();
}

// What all points lie in, as far as it is painted at all. Curves lie within their points.
GlyphMask::Area GlyphMask::areaWithin(cairo_t* context) const {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(context, &left, &top, &right, &bottom);
    FT_BBox box{std::numeric_limits<FT_Pos>::max(), std::numeric_limits<FT_Pos>::max(),
                std::numeric_limits<FT_Pos>::min(), std::numeric_limits<FT_Pos>::min()};
    for (const FT_Vector& point : points_) {
        box.xMin = std::min(box.xMin, point.x);
        box.xMax = std::max(box.xMax, point.x);
        box.yMin = std::min(box.yMin, point.y);
        box.yMax = std::max(box.yMax, point.y);
    }
    const auto pixel = [](double place) { return static_cast<int>(std::floor(place)); };
    const auto behind = [](double place) { return static_cast<int>(std::ceil(place)); };
    if (points_.empty()) {
        return {};
    }
    return {pixel(std::max(left, box.xMin / unitsPerPixel)),
            pixel(std::max(top, -box.yMax / unitsPerPixel)),
            behind(std::min(right, box.xMax / unitsPerPixel)),
            behind(std::min(bottom, -box.yMin / unitsPerPixel))};
}

void GlyphMask::render(Glyph& glyph, const Area& area, std::size_t stride) {
    Rows rows{coverage_.data(), stride, area.left, area.top};
    glyph.outline.points = points_.data() + glyph.firstPoint;
    glyph.outline.tags = tags_.data() + glyph.firstPoint;
    glyph.outline.contours = ends_.data() + glyph.firstEnd;
    FT_Raster_Params params{};
    params.flags = FT_RASTER_FLAG_AA | FT_RASTER_FLAG_DIRECT | FT_RASTER_FLAG_CLIP;
    params.gray_spans = addSpans;
    params.user = &rows;
    params.clip_box = {area.left, -area.bottom, area.right, -area.top};
    FT_Outline_Render(glyph.library, &glyph.outline, &params);
}

} // namespace qvnd::drawing
