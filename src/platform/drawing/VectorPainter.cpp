#include "platform/drawing/VectorPainter.h"

#include "platform/word/layout/CharacterClasses.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace qvnd::drawing {

namespace {

constexpr double finestLine = 5;                   // twips
constexpr double margin = 0.02;                    // of the area, that outlines may reach beyond it
constexpr std::size_t mostClipPoints = 10'000'000; // of all clips that are set for one drawing

void setColour(cairo_t* context, std::uint32_t rgb) {
    cairo_set_source_rgb(context, ((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0,
                         (rgb & 0xFF) / 255.0);
}

class Painting {
public:
    Painting(cairo_t* context, const VectorPicture& picture, const PaintedArea& area,
             GlyphPainter& glyphs)
        : context_(context), glyphs_(glyphs), scaleX_(area.width / picture.width),
          scaleY_(area.height / picture.height), originX_(area.x - picture.left * scaleX_),
          originY_(area.y - picture.top * scaleY_) {}

    void paint(const VectorElement& element) {
        if (element.clip.get() != clip_) {
            changeClip(element.clip.get());
        }
        if (!isTooCostly()) {
            cairo_save(context_);
            std::visit([this](const auto& what) { show(what); }, element.what);
            cairo_restore(context_);
        }
    }

private:
    VectorPoint onPage(VectorPoint p) const {
        return {originX_ + p.x * scaleX_, originY_ + p.y * scaleY_};
    }

    static cairo_fill_rule_t ruleOf(bool winding) {
        return winding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD;
    }

    // Elements that follow each other mostly have one clip.
    void changeClip(const VectorClip* clip) {
        cairo_restore(context_);
        cairo_save(context_);
        clip_ = clip;
        for (; clip != nullptr && !isTooCostly(); clip = clip->around.get()) {
            clipPoints_ += clip->path.points.size();
            trace(clip->path);
            cairo_set_fill_rule(context_, ruleOf(clip->winding));
            cairo_clip(context_);
        }
    }

    // A drawing that goes to and fro between large clips ends before it takes minutes.
    bool isTooCostly() const { return clipPoints_ > mostClipPoints; }

    void trace(VectorPath path) {
        std::transform(path.points.begin(), path.points.end(), path.points.begin(),
                       [this](VectorPoint point) { return onPage(point); });
        drawing::trace(context_, path);
    }

    void show(const VectorShape& shape) {
        trace(shape.path);
        if (shape.fill) {
            setColour(context_, *shape.fill);
            cairo_set_fill_rule(context_, ruleOf(shape.winding));
            cairo_fill_preserve(context_);
        }
        if (shape.pen) {
            stroke(*shape.pen);
        }
        cairo_new_path(context_);
    }

    void stroke(const VectorPen& pen) {
        const double width =
            std::max(finestLine, pen.width * std::sqrt(std::abs(scaleX_ * scaleY_)));
        setColour(context_, pen.colour);
        cairo_set_line_width(context_, width);
        cairo_set_line_cap(context_, pen.isRound ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
        cairo_set_line_join(context_, pen.isRound ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
        std::vector<double> dashes;
        for (const double part : pen.dashes) {
            dashes.push_back(part * std::max(width, 2 * finestLine));
        }
        cairo_set_dash(context_, dashes.data(), static_cast<int>(dashes.size()), 0);
        cairo_stroke_preserve(context_);
    }

    // Neighbouring characters of one face.
    struct Part {
        layout::FaceId face = 0;
        std::u16string text;
        std::vector<float> advances;
    };

    layout::FaceId faceOf(const VectorText& text, char32_t c) {
        FontFaces& fonts = glyphs_.fonts();
        const bool eastAsian = layout::isEastAsian(c);
        return fonts.shownBy(fonts.face({text.font, text.bold, text.italic, eastAsian}), c);
    }

    // `size` of the font and the advances, on the page.
    std::vector<Part> partsOf(const VectorText& text, double size) {
        std::vector<Part> parts;
        for (std::size_t i = 0; i < text.text.size(); ++i) {
            const char32_t c = characterAt(text.text, i);
            const layout::FaceId face = faceOf(text, c);
            if (parts.empty() || parts.back().face != face) {
                parts.push_back({face, {}, {}});
            }
            const double advance = i < text.advances.size()
                                       ? text.advances[i] * scaleX_
                                       : glyphs_.fonts().advance(face, c) * size;
            parts.back().text += text.text[i];
            parts.back().advances.push_back(static_cast<float>(advance));
            if (c >= 0x10000) {
                parts.back().text += text.text[++i];
                parts.back().advances.push_back(0);
            }
        }
        return parts;
    }

    void show(const VectorText& text) {
        const layout::FaceHeights heights =
            glyphs_.fonts().heights(faceOf(text, characterAt(text.text, 0)));
        const double line = heights.ascent + heights.descent;
        double size = text.size * std::abs(scaleY_);
        size /= text.isLineHeight && line > 0 ? line : 1;
        const std::vector<Part> parts = partsOf(text, size);
        double length = 0;
        for (const Part& part : parts) {
            length = std::accumulate(part.advances.begin(), part.advances.end(), length);
        }
        const VectorPoint at = onPage(text.at);
        cairo_translate(context_, at.x, at.y);
        cairo_rotate(context_, -text.angle);
        cairo_translate(context_,
                        text.across == VectorText::Across::centre  ? -length / 2
                        : text.across == VectorText::Across::right ? -length
                                                                   : 0,
                        text.down == VectorText::Down::top      ? heights.ascent * size
                        : text.down == VectorText::Down::bottom ? -heights.descent * size
                                                                : 0);
        setColour(context_, text.colour);
        strike(text, size, length);
        for (const Part& part : parts) {
            glyphs_.show(context_, {part.face, size, 1, part.text, part.advances});
            cairo_translate(context_,
                            std::accumulate(part.advances.begin(), part.advances.end(), 0.0), 0);
        }
    }

    void strike(const VectorText& text, double size, double length) {
        constexpr double below = 0.12; // of the size
        constexpr double through = -0.28;
        const double thickness = std::max(finestLine, size / 18);
        for (const auto& [wanted, part] :
             {std::pair{text.underlined, below}, std::pair{text.struckOut, through}}) {
            if (wanted) {
                cairo_rectangle(context_, 0, part * size, length, thickness);
                cairo_fill(context_);
            }
        }
    }

    void show(const VectorImage& image) {
        cairo_surface_t* surface = surfaceOf(image.image);
        if (surface == nullptr) {
            return;
        }
        const VectorPoint corner = onPage(image.corner);
        cairo_matrix_t matrix;
        cairo_matrix_init(&matrix, image.across.x * scaleX_ / image.image.width,
                          image.across.y * scaleY_ / image.image.width,
                          image.down.x * scaleX_ / image.image.height,
                          image.down.y * scaleY_ / image.image.height, corner.x, corner.y);
        cairo_matrix_t inverse = matrix;
        if (cairo_matrix_invert(&inverse) == CAIRO_STATUS_SUCCESS) {
            cairo_transform(context_, &matrix);
            cairo_set_operator(context_, operatorOf(image.blend));
            cairo_set_source_surface(context_, surface, 0, 0);
            cairo_pattern_set_extend(cairo_get_source(context_), CAIRO_EXTEND_PAD);
            cairo_rectangle(context_, 0, 0, image.image.width, image.image.height);
            cairo_fill(context_);
        }
        cairo_surface_destroy(surface);
    }

    static cairo_operator_t operatorOf(VectorBlend blend) {
        switch (blend) {
        case VectorBlend::darken:
            return CAIRO_OPERATOR_MULTIPLY;
        case VectorBlend::lighten:
            return CAIRO_OPERATOR_SCREEN;
        case VectorBlend::invert:
            return CAIRO_OPERATOR_DIFFERENCE;
        default:
            return CAIRO_OPERATOR_OVER;
        }
    }

    cairo_t* context_;
    GlyphPainter& glyphs_;
    double scaleX_;
    double scaleY_;
    double originX_;
    double originY_;
    const VectorClip* clip_ = nullptr;
    std::size_t clipPoints_ = 0;
};

} // namespace

void paint(cairo_t* context, const VectorPicture& picture, const PaintedArea& area,
           GlyphPainter& glyphs) {
    if (picture.width <= 0 || picture.height <= 0 || area.width <= 0 || area.height <= 0) {
        return;
    }
    cairo_save(context);
    const double aside = margin * area.width;
    const double above = margin * area.height;
    cairo_rectangle(context, area.x - aside, area.y - above, area.width + 2 * aside,
                    area.height + 2 * above);
    cairo_clip(context);
    cairo_save(context); // which a change of the clip comes back to
    Painting painting(context, picture, area, glyphs);
    for (const VectorElement& element : picture.elements) {
        painting.paint(element);
    }
    cairo_restore(context);
    cairo_restore(context);
}

void trace(cairo_t* context, const layout::Path& path) {
    cairo_new_path(context);
    const VectorPoint* p = path.points.data();
    for (const VectorPath::Step step : path.steps) {
        switch (step) {
        case VectorPath::Step::move:
            cairo_move_to(context, p->x, p->y);
            ++p;
            break;
        case VectorPath::Step::line:
            cairo_line_to(context, p->x, p->y);
            ++p;
            break;
        case VectorPath::Step::curve:
            cairo_curve_to(context, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
            p += 3;
            break;
        case VectorPath::Step::close:
            cairo_close_path(context);
            break;
        }
    }
}

cairo_surface_t* surfaceOf(const PixelImage& image) {
    cairo_surface_t* surface =
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width, image.height);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    unsigned char* to = cairo_image_surface_get_data(surface);
    const std::size_t row = static_cast<std::size_t>(image.width) * 4;
    for (std::size_t y = 0; y < static_cast<std::size_t>(image.height); ++y) {
        std::copy_n(image.pixels.data() + y * row, row, to + y * stride);
    }
    cairo_surface_mark_dirty(surface);
    return surface;
}

} // namespace qvnd::drawing
