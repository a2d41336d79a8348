#include "platform/drawing/GlyphPainter.h"

#include "platform/drawing/GlyphMask.h"
#include "platform/drawing/GlyphOutlines.h"
#include "platform/error/Utf8.h"

#include <cairo-ft.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

#include <cmath>
#include <vector>

namespace qvnd::drawing {

namespace {

constexpr double sameWidth = 0.01; // parts of a width by which two may differ and are one

// Cairo keeps glyphs by the address of their face, longer than it is asked to.
void keepOwner(cairo_font_face_t* face, const std::shared_ptr<const void>& owner) {
    using Owner = std::shared_ptr<const void>;
    static const cairo_user_data_key_t key{};
    auto kept = std::make_unique<Owner>(owner);
    const auto drop = [](void* data) { delete static_cast<Owner*>(data); };
    if (cairo_font_face_set_user_data(face, &key, kept.get(), drop) == CAIRO_STATUS_SUCCESS) {
        static_cast<void>(kept.release());
    }
}

bool hasCffOutlines(FT_Face face) {
    constexpr FT_ULong cffTable = FT_MAKE_TAG('C', 'F', 'F', ' ');
    FT_ULong size = 0;
    return FT_Load_Sfnt_Table(face, cffTable, 0, nullptr, &size) == 0;
}

// What is done to the glyphs of a face. Cairo 1.16 cuts CFF outlines down by a reading of their
// subroutines that misses some: characters would be blank in the PDF. A face that is changed in any
// way is written by its outlines instead; a bit that stands for no change changes nothing else.
unsigned synthesisOf(const DrawnFace& drawn) {
    constexpr unsigned bold = CAIRO_FT_SYNTHESIZE_BOLD;
    constexpr unsigned oblique = CAIRO_FT_SYNTHESIZE_OBLIQUE;
    constexpr unsigned nothing = 1U << 2;
    return (drawn.embolden ? bold : 0) | (drawn.slant ? oblique : 0) |
           (hasCffOutlines(drawn.face) ? nothing : 0);
}

bool paintsPixels(cairo_t* context) {
    return cairo_surface_get_type(cairo_get_group_target(context)) == CAIRO_SURFACE_TYPE_IMAGE;
}

} // namespace

char32_t characterAt(std::u16string_view text, std::size_t at) {
    const char16_t c = text[at];
    const bool pair = c >= 0xD800 && c < 0xDC00 && at + 1 < text.size();
    return pair ? 0x10000 + ((char32_t{c} - 0xD800) << 10) + (text[at + 1] - 0xDC00) : c;
}

// Glyphs that Cairo shows by one call: those of one width.
class GlyphPainter::Batch {
public:
    Batch(cairo_t* context, double size, Ink ink) : context_(context), size_(size), ink_(ink) {}

    void add(unsigned glyph, double x, double width, const std::string& utf8) {
        if (std::abs(width - width_) > sameWidth * width_) {
            show();
            width_ = width;
        }
        glyphs_.push_back({glyph, x, 0});
        clusters_.push_back({static_cast<int>(utf8.size()), 1});
        utf8_ += utf8;
    }

    void show() {
        if (glyphs_.empty()) {
            return;
        }
        cairo_matrix_t matrix;
        cairo_matrix_init_scale(&matrix, size_ * width_, size_);
        cairo_set_font_matrix(context_, &matrix);
        if (ink_ != Ink::text) {
            paintOutlines();
        } else {
            cairo_show_text_glyphs(context_, utf8_.data(), static_cast<int>(utf8_.size()),
                                   glyphs_.data(), static_cast<int>(glyphs_.size()),
                                   clusters_.data(), static_cast<int>(clusters_.size()),
                                   static_cast<cairo_text_cluster_flags_t>(0));
        }
        glyphs_.clear();
        clusters_.clear();
        utf8_.clear();
    }

private:
    void paintOutlines() {
        cairo_new_path(context_);
        cairo_glyph_path(context_, glyphs_.data(), static_cast<int>(glyphs_.size()));
        if (ink_ == Ink::edges) {
            cairo_stroke(context_);
        } else {
            cairo_set_fill_rule(context_, CAIRO_FILL_RULE_WINDING);
            cairo_fill(context_);
        }
    }

    cairo_t* context_;
    double size_;
    Ink ink_;
    double width_ = 1;
    std::string utf8_;
    std::vector<cairo_glyph_t> glyphs_;
    std::vector<cairo_text_cluster_t> clusters_;
};

GlyphPainter::GlyphPainter(FontFaces& fonts)
    : fonts_(fonts), outlines_(std::make_unique<GlyphOutlines>(fonts)),
      mask_(std::make_unique<GlyphMask>()) {}

GlyphPainter::~GlyphPainter() {
    for (const auto& [id, face] : faces_) {
        cairo_font_face_destroy(face);
    }
}

void GlyphPainter::show(cairo_t* context, const GlyphRun& run) {
    // Cairo writes the place of a text as its distance from the one before, rounded, so that errors
    // add up over a page, unless the size is another one: one that differs by less than is written.
    constexpr double unseen = 1e-9;
    isOdd_ = !isOdd_;
    cairo_set_font_face(context, fontFace(run.face));
    const bool fillsPixels = run.ink != Ink::edges && paintsPixels(context);
    Batch batch(context, isOdd_ ? run.size * (1 + unseen) : run.size,
                fillsPixels ? Ink::areas : run.ink);
    double x = 0;
    for (std::size_t i = 0; i < run.text.size(); ++i) {
        const char32_t c = characterAt(run.text, i);
        const std::size_t units = c >= 0x10000 ? 2 : 1;
        const double room = fonts_.advance(run.face, c);
        const double own = fonts_.drawnAdvance(run.face, c);
        const bool isTooWide = room > 0 && own > room * (1 + sameWidth);
        const double aside = own > 0 && room > own * (1 + sameWidth) ? (room - own) / 2 : 0;
        const Glyph glyph{fonts_.glyph(run.face, c), x + aside * run.size * run.stretch,
                          run.stretch * (isTooWide ? room / own : 1)};
        if (!fillsPixels || !addToMask(context, run, glyph)) {
            batch.add(glyph.number, glyph.x, glyph.width, toUtf8(run.text.substr(i, units)));
        }
        x += run.advances[i];
        i += units - 1;
    }
    mask_->paint(context);
    batch.show();
}

// Cairo moves a glyph that it keeps as pixels to the nearest whole pixel, so that small letters run
// into each other. Glyphs that have no outline are left to it.
bool GlyphPainter::addToMask(cairo_t* context, const GlyphRun& run, const Glyph& glyph) {
    const GlyphOutline* outline = outlines_->of(run.face, glyph.number);
    if (outline == nullptr) {
        return false;
    }
    cairo_matrix_t toPixels;
    cairo_get_matrix(context, &toPixels);
    cairo_matrix_t place;
    cairo_matrix_init(&place, run.size * glyph.width, 0, 0, -run.size, glyph.x, 0);
    cairo_matrix_multiply(&place, &place, &toPixels);
    mask_->add(*outline, place);
    return true;
}

cairo_font_face_t* GlyphPainter::fontFace(layout::FaceId id) {
    cairo_font_face_t*& face = faces_[id];
    if (face == nullptr) {
        const DrawnFace drawn = fonts_.drawn(id);
        face = cairo_ft_font_face_create_for_ft_face(drawn.face, 0);
        keepOwner(face, drawn.owner);
        cairo_ft_font_face_set_synthesize(face, synthesisOf(drawn));
    }
    return face;
}

} // namespace qvnd::drawing
