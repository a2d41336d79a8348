#include "platform/drawing/VectorPainter.h"

#include "platform/drawing/CairoImage.h"
#include "platform/word/layout/CharacterClasses.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace qvnd::drawing {

namespace {

// Twips, of which the page has its measures.
constexpr double finestLine = 5;
constexpr double pixel = 15; // of a screen of 96 dpi
constexpr double hatchDistance = 8 * pixel;
constexpr double farthest = 1e6; // from the page's corner
constexpr double largestText = 1e5;
// How far the cells of usual faces reach from the baseline, in parts of the size. Those of a
// stand-in may be far higher, and would cover what lies beside the text.
constexpr double cellAbove = 0.9;
constexpr double cellBelow = 0.22;

constexpr double margin = 0.02;                    // of the area, that outlines may reach beyond it
constexpr double mostDashes = 20'000;              // of one outline
constexpr std::size_t mostClipPoints = 10'000'000; // of all clips that are set for one drawing

double lengthOf(const VectorPath& path) {
    double length = 0;
    for (std::size_t i = 1; i < path.points.size(); ++i) {
        length += std::hypot(path.points[i].x - path.points[i - 1].x,
                             path.points[i].y - path.points[i - 1].y);
    }
    return length;
}

class Painting {
public:
    Painting(cairo_t* context, const VectorPicture& picture, const layout::PageArea& area,
             GlyphPainter& glyphs)
        : context_(context), glyphs_(glyphs), scaleX_((area.right - area.left) / picture.width),
          scaleY_((area.bottom - area.top) / picture.height),
          originX_(area.left - picture.left * scaleX_), originY_(area.top - picture.top * scaleY_) {
    }

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
        return {std::clamp(originX_ + p.x * scaleX_, -farthest, farthest),
                std::clamp(originY_ + p.y * scaleY_, -farthest, farthest)};
    }
    VectorPath onPage(VectorPath path) const {
        for (VectorPoint& point : path.points) {
            point = onPage(point);
        }
        return path;
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
            trace(context_, onPage(clip->path));
            if (clip->isOutside) {
                double left = 0;
                double top = 0;
                double right = 0;
                double bottom = 0;
                cairo_clip_extents(context_, &left, &top, &right, &bottom);
                cairo_rectangle(context_, left, top, right - left, bottom - top);
            }
            cairo_set_fill_rule(context_, ruleOf(clip->winding && !clip->isOutside));
            cairo_clip(context_);
        }
    }

    // A drawing that goes to and fro between large clips ends before it takes minutes.
    bool isTooCostly() const { return clipPoints_ > mostClipPoints; }

    void show(const VectorShape& shape) {
        const VectorPath path = onPage(shape.path);
        trace(context_, path);
        cairo_set_operator(context_, operatorOf(shape.blend));
        cairo_set_fill_rule(context_, ruleOf(shape.winding));
        if (shape.fill) {
            setColour(context_, *shape.fill);
            cairo_fill_preserve(context_);
        }
        if (shape.tile) {
            fillWithTiles(shape.tile);
        }
        if (shape.hatch) {
            hatch(path, *shape.hatch);
        }
        if (shape.pen) {
            stroke(path, *shape.pen);
        }
        cairo_new_path(context_);
    }

    void fillWithTiles(const std::shared_ptr<const PixelImage>& tile) {
        if (tile != tile_) {
            tile_ = tile;
            tileSurface_ = surfaceOf(*tile);
        }
        if (tileSurface_) {
            cairo_matrix_t toTile;
            cairo_matrix_init(&toTile, 1 / pixel, 0, 0, 1 / pixel, -originX_ / pixel,
                              -originY_ / pixel);
            cairo_set_source_surface(context_, tileSurface_.get(), 0, 0);
            cairo_pattern_set_matrix(cairo_get_source(context_), &toTile);
            cairo_pattern_set_extend(cairo_get_source(context_), CAIRO_EXTEND_REPEAT);
            cairo_fill_preserve(context_);
        }
    }

    // Of the current path, which stays. The lines stand in the middle of pixels where a pixel is
    // one of the screen's.
    void hatch(const VectorPath& path, const VectorHatch& hatch) {
        cairo_save(context_);
        cairo_clip(context_);
        double left = 0;
        double top = 0;
        double right = 0;
        double bottom = 0;
        cairo_clip_extents(context_, &left, &top, &right, &bottom);
        const auto firstFrom = [](double from) {
            return std::floor(from / hatchDistance) * hatchDistance + pixel / 2;
        };
        const auto line = [this](double x1, double y1, double x2, double y2) {
            cairo_move_to(context_, x1, y1);
            cairo_line_to(context_, x2, y2);
        };
        const double high = bottom - top;
        for (double y = firstFrom(top); hatch.level && y < bottom; y += hatchDistance) {
            line(left, y, right, y);
        }
        for (double x = firstFrom(left); hatch.upright && x < right; x += hatchDistance) {
            line(x, top, x, bottom);
        }
        for (double x = firstFrom(left - high); x < right; x += hatchDistance) {
            if (hatch.falling) {
                line(x, top, x + high, bottom);
            }
            if (hatch.rising) {
                line(x, bottom, x + high, top);
            }
        }
        setColour(context_, hatch.colour);
        cairo_set_line_width(context_, pixel);
        cairo_set_dash(context_, nullptr, 0, 0);
        cairo_stroke(context_);
        cairo_restore(context_);
        trace(context_, path);
    }

    // The current path.
    void stroke(const VectorPath& path, const VectorPen& pen) {
        const double width =
            std::max(finestLine, pen.width * std::sqrt(std::abs(scaleX_ * scaleY_)));
        setColour(context_, pen.colour);
        cairo_set_line_width(context_, std::min(width, farthest));
        cairo_set_line_cap(context_, pen.isRound ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
        cairo_set_line_join(context_, pen.isRound ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
        const double dash = std::max(width, 2 * finestLine);
        std::vector<double> dashes;
        for (const double part : pen.dashes) {
            dashes.push_back(part * dash);
        }
        const bool isDashed = lengthOf(path) < mostDashes * dash;
        cairo_set_dash(context_, dashes.data(), isDashed ? static_cast<int>(dashes.size()) : 0, 0);
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
        if (size > largestText) {
            return;
        }
        const std::vector<Part> parts = partsOf(text, size);
        double length = 0;
        for (const Part& part : parts) {
            length = std::accumulate(part.advances.begin(), part.advances.end(), length);
        }
        length = std::clamp(length, -farthest, farthest);
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
        if (text.background) {
            setColour(context_, *text.background);
            cairo_rectangle(context_, 0, -cellAbove * size, length, (cellAbove + cellBelow) * size);
            cairo_fill(context_);
        }
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
        const CairoSurface surface = surfaceOf(image.image);
        if (!surface) {
            return;
        }
        const VectorPoint from = image.corner;
        const VectorPoint corner = onPage(from);
        const VectorPoint right = onPage({from.x + image.across.x, from.y + image.across.y});
        const VectorPoint below = onPage({from.x + image.down.x, from.y + image.down.y});
        const double width = image.image.width;
        const double height = image.image.height;
        cairo_matrix_t matrix;
        cairo_matrix_init(&matrix, (right.x - corner.x) / width, (right.y - corner.y) / width,
                          (below.x - corner.x) / height, (below.y - corner.y) / height, corner.x,
                          corner.y);
        cairo_matrix_t inverse = matrix;
        if (cairo_matrix_invert(&inverse) == CAIRO_STATUS_SUCCESS) {
            cairo_transform(context_, &matrix);
            cairo_set_operator(context_, operatorOf(image.blend));
            cairo_set_source_surface(context_, surface.get(), 0, 0);
            cairo_pattern_set_extend(cairo_get_source(context_), CAIRO_EXTEND_PAD);
            cairo_rectangle(context_, 0, 0, width, height);
            cairo_clip(context_);
            cairo_paint_with_alpha(context_, image.opacity);
        }
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
    std::shared_ptr<const PixelImage> tile_;
    CairoSurface tileSurface_; // of `tile_`
    const VectorClip* clip_ = nullptr;
    std::size_t clipPoints_ = 0;
};

} // namespace

void paint(cairo_t* context, const VectorPicture& picture, const layout::PageArea& area,
           GlyphPainter& glyphs) {
    const double width = area.right - area.left;
    const double height = area.bottom - area.top;
    if (picture.width <= 0 || picture.height <= 0 || width <= 0 || height <= 0) {
        return;
    }
    cairo_save(context);
    const double aside = margin * width;
    const double above = margin * height;
    cairo_rectangle(context, area.left - aside, area.top - above, width + 2 * aside,
                    height + 2 * above);
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

PixelImage imageOf(const VectorPicture& picture, int width, int height, FontFaces& fonts) {
    return paintedImage(width, height, [&](cairo_t* context) {
        GlyphPainter glyphs(fonts);
        cairo_scale(context, 1 / pixel, 1 / pixel);
        paint(context, picture, {0, 0, width * pixel, height * pixel}, glyphs);
    });
}

} // namespace qvnd::drawing
