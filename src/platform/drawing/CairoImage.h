#pragma once

#include "platform/drawing/PixelImage.h"

#include <cairo.h>

#include <functional>
#include <memory>

// Cairo's objects, freed with what owns them, and its images as plain pixels.
namespace qvnd::drawing {

struct CairoFreed {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using CairoContext = std::unique_ptr<cairo_t, CairoFreed>;
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoFreed>;

// 0xRRGGBB.
void setColour(cairo_t* context, std::uint32_t rgb);

// Measures stay as the layout has them: no hints, no rounding.
void keepMeasures(cairo_t* context);

// The image as a surface; nothing where memory is too small.
CairoSurface surfaceOf(const PixelImage& image);

// What `paint` paints on white, in pixels (1 at the least each way). Throws RunTimeError (7) for an
// image larger than memory allows.
PixelImage paintedImage(int width, int height, const std::function<void(cairo_t*)>& paint);

} // namespace qvnd::drawing
