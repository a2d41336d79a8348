#include "platform/drawing/CairoImage.h"

#include "platform/error/RunTimeError.h"

#include <algorithm>

namespace qvnd::drawing {

void setColour(cairo_t* context, std::uint32_t rgb) {
    cairo_set_source_rgb(context, ((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0,
                         (rgb & 0xFF) / 255.0);
}

void keepMeasures(cairo_t* context) {
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_set_font_options(context, options);
    cairo_font_options_destroy(options);
}

CairoSurface surfaceOf(const PixelImage& image) {
    CairoSurface surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width, image.height));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        return nullptr;
    }
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
    unsigned char* to = cairo_image_surface_get_data(surface.get());
    const std::size_t row = static_cast<std::size_t>(image.width) * 4;
    for (std::size_t y = 0; y < static_cast<std::size_t>(image.height); ++y) {
        std::copy_n(image.pixels.data() + y * row, row, to + y * stride);
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

PixelImage paintedImage(int width, int height, const std::function<void(cairo_t*)>& paint) {
    PixelImage image{std::max(1, width), std::max(1, height), {}};
    const CairoSurface surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width, image.height));
    const CairoContext context(cairo_create(surface.get()));
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) {
        throw RunTimeError(7, u"页面图片太大，内存不够。");
    }
    setColour(context.get(), 0xFFFFFF);
    cairo_paint(context.get());
    keepMeasures(context.get());
    paint(context.get());
    cairo_surface_flush(surface.get());
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
    const unsigned char* from = cairo_image_surface_get_data(surface.get());
    for (std::size_t y = 0; y < static_cast<std::size_t>(image.height); ++y) {
        image.pixels.insert(image.pixels.end(), from + y * stride,
                            from + y * stride + static_cast<std::size_t>(image.width) * 4);
    }
    return image;
}

} // namespace qvnd::drawing
