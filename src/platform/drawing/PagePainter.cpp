#include "platform/drawing/PagePainter.h"

#include "platform/drawing/FontRoom.h"
#include "platform/error/RunTimeError.h"
#include "platform/error/Utf8.h"

#include <cairo-ft.h>
#include <cairo-pdf.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <map>
#include <utility>

namespace qvnd::drawing {

namespace {

constexpr double twipsPerPoint = 20;

struct Freed {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
};
using Context = std::unique_ptr<cairo_t, Freed>;
using Surface = std::unique_ptr<cairo_surface_t, Freed>;
using FontFace = std::unique_ptr<cairo_font_face_t, Freed>;

void setColour(cairo_t* context, std::uint32_t rgb) {
    cairo_set_source_rgb(context, ((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0,
                         (rgb & 0xFF) / 255.0);
}

char32_t characterAt(const std::u16string& text, std::size_t at) {
    const char16_t c = text[at];
    const bool pair = c >= 0xD800 && c < 0xDC00 && at + 1 < text.size();
    return pair ? 0x10000 + ((char32_t{c} - 0xD800) << 10) + (text[at + 1] - 0xDC00) : c;
}

Surface surfaceOf(const PixelImage& image) {
    Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width, image.height));
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

} // namespace

// Paints layers onto a context whose unit is the twip.
class PagePainter::Canvas {
public:
    Canvas(const FontFaces& fonts, ReadPicture readPicture)
        : fonts_(fonts), readPicture_(std::move(readPicture)) {}

    void paint(cairo_t* context, const layout::Layer& layer) {
        for (const layout::Fill& fill : layer.fills) {
            setColour(context, fill.colour);
            cairo_rectangle(context, fill.x, fill.y, fill.width, fill.height);
            cairo_fill(context);
        }
        for (const layout::PlacedPicture& picture : layer.pictures) {
            paint(context, picture);
        }
        for (const layout::Rule& rule : layer.rules) {
            paint(context, rule);
        }
        for (const layout::PlacedText& text : layer.texts) {
            paint(context, text);
        }
    }

private:
    static void paint(cairo_t* context, const layout::Rule& rule) {
        setColour(context, rule.colour.value_or(0));
        cairo_set_line_width(context, rule.width);
        cairo_set_line_cap(context, CAIRO_LINE_CAP_SQUARE);
        const bool across = rule.y1 == rule.y2;
        const int strokes = rule.isDouble ? 2 : 1;
        for (int i = 0; i < strokes; ++i) {
            const double aside = i * 2 * rule.width;
            cairo_move_to(context, rule.x1 + (across ? 0 : aside), rule.y1 + (across ? aside : 0));
            cairo_line_to(context, rule.x2 + (across ? 0 : aside), rule.y2 + (across ? aside : 0));
        }
        cairo_stroke(context);
    }

    void paint(cairo_t* context, const layout::PlacedPicture& picture) {
        const auto image = readPicture_ ? readPicture_(picture.blob) : std::nullopt;
        if (!image || image->width < 1 || image->height < 1) {
            return;
        }
        const Surface surface = surfaceOf(*image);
        if (!surface) {
            return;
        }
        cairo_save(context);
        cairo_translate(context, picture.x, picture.y);
        cairo_scale(context, picture.width / image->width, picture.height / image->height);
        cairo_set_source_surface(context, surface.get(), 0, 0);
        // Enlarged pixels at the picture's edge do not fade into what lies around it.
        cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
        cairo_rectangle(context, 0, 0, image->width, image->height);
        cairo_fill(context);
        cairo_restore(context);
    }

    void paint(cairo_t* context, const layout::PlacedText& text) {
        const DrawnFace drawn = fonts_.drawn(text.face);
        std::string utf8;
        std::vector<cairo_glyph_t> glyphs;
        std::vector<cairo_text_cluster_t> clusters;
        double x = 0;
        for (std::size_t i = 0; i < text.text.size(); ++i) {
            const char32_t c = characterAt(text.text, i);
            const std::size_t units = c >= 0x10000 ? 2 : 1;
            const std::string bytes = toUtf8(std::u16string_view(text.text).substr(i, units));
            glyphs.push_back({fonts_.glyph(text.face, c), x / text.stretch, 0});
            clusters.push_back({static_cast<int>(bytes.size()), 1});
            utf8 += bytes;
            x += text.advances[i];
            i += units - 1;
        }
        cairo_save(context);
        cairo_translate(context, text.x, text.baseline);
        cairo_scale(context, text.stretch, 1);
        setColour(context, text.colour.value_or(0));
        cairo_set_font_face(context, fontFace(text.face, drawn));
        cairo_set_font_size(context, text.size);
        cairo_show_text_glyphs(context, utf8.data(), static_cast<int>(utf8.size()), glyphs.data(),
                               static_cast<int>(glyphs.size()), clusters.data(),
                               static_cast<int>(clusters.size()),
                               static_cast<cairo_text_cluster_flags_t>(0));
        cairo_restore(context);
        underline(context, text, x);
    }

    static void underline(cairo_t* context, const layout::PlacedText& text, double width) {
        constexpr double below = 0.12; // of the size
        constexpr double through = -0.28;
        const double thickness = std::max(10.0, text.size / 18);
        for (const auto& [wanted, part] :
             {std::pair{text.underlined, below}, std::pair{text.struckOut, through}}) {
            if (wanted) {
                const double y = text.baseline + part * text.size;
                paint(context,
                      layout::Rule{text.x, y, text.x + width, y, thickness, false, text.colour});
            }
        }
    }

    // Cairo keeps glyphs by the address of their face, longer than it is asked to.
    static void keepOwner(cairo_font_face_t* face, const std::shared_ptr<const void>& owner) {
        using Owner = std::shared_ptr<const void>;
        static const cairo_user_data_key_t key{};
        auto kept = std::make_unique<Owner>(owner);
        const auto drop = [](void* data) { delete static_cast<Owner*>(data); };
        if (cairo_font_face_set_user_data(face, &key, kept.get(), drop) == CAIRO_STATUS_SUCCESS) {
            static_cast<void>(kept.release());
        }
    }

    cairo_font_face_t* fontFace(layout::FaceId id, const DrawnFace& drawn) {
        FontFace& face = faces_[id];
        if (!face) {
            face.reset(cairo_ft_font_face_create_for_ft_face(drawn.face, 0));
            keepOwner(face.get(), drawn.owner);
            const unsigned bold = CAIRO_FT_SYNTHESIZE_BOLD;
            const unsigned oblique = CAIRO_FT_SYNTHESIZE_OBLIQUE;
            cairo_ft_font_face_set_synthesize(face.get(), (drawn.embolden ? bold : 0) |
                                                              (drawn.slant ? oblique : 0));
        }
        return face.get();
    }

    const FontFaces& fonts_;
    ReadPicture readPicture_;
    std::map<layout::FaceId, FontFace> faces_;
};

namespace {

// Measures stay as the layout has them: no hints, no rounding.
void keepMeasures(cairo_t* context) {
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_set_font_options(context, options);
    cairo_font_options_destroy(options);
}

} // namespace

PagePainter::PagePainter(const FontFaces& fonts, ReadPicture readPicture)
    : canvas_(std::make_unique<Canvas>(fonts, std::move(readPicture))) {}
PagePainter::~PagePainter() = default;

PixelImage PagePainter::image(const layout::Page& page, int width) {
    const double scale = width / page.width;
    PixelImage image;
    image.width = std::max(1, width);
    image.height = std::max(1, static_cast<int>(std::lround(page.height * scale)));
    const Surface surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width, image.height));
    const Context context(cairo_create(surface.get()));
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) {
        throw RunTimeError(7, u"页面图片太大，内存不够。");
    }
    setColour(context.get(), 0xFFFFFF);
    cairo_paint(context.get());
    keepMeasures(context.get());
    cairo_scale(context.get(), scale, scale);
    canvas_->paint(context.get(), page.layer);
    cairo_surface_flush(surface.get());
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
    const unsigned char* from = cairo_image_surface_get_data(surface.get());
    for (std::size_t y = 0; y < static_cast<std::size_t>(image.height); ++y) {
        image.pixels.insert(image.pixels.end(), from + y * stride,
                            from + y * stride + static_cast<std::size_t>(image.width) * 4);
    }
    return image;
}

namespace {

// Hands bytes over; what the receiver throws waits until Cairo has returned.
struct ByteSink {
    PagePainter::WriteBytes write;
    std::exception_ptr failure;

    static cairo_status_t take(void* sink, const unsigned char* data, unsigned int length) {
        auto& self = *static_cast<ByteSink*>(sink);
        try {
            self.write(word::ByteView(data, length));
            return CAIRO_STATUS_SUCCESS;
        } catch (...) {
            self.failure = std::current_exception();
            return CAIRO_STATUS_WRITE_ERROR;
        }
    }
    void rethrow() const {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }
};

template <class Paint>
class PdfFile : public PagePainter::Pdf {
public:
    PdfFile(Paint paint, PagePainter::WriteBytes write)
        : paint_(std::move(paint)),
          room_(std::move(write)), sink_{[this](word::ByteView bytes) { room_.take(bytes); },
                                         nullptr},
          surface_(cairo_pdf_surface_create_for_stream(&ByteSink::take, &sink_, 1, 1)),
          context_(cairo_create(surface_.get())) {
        // Later versions hide what FontRoom changes in compressed streams.
        cairo_pdf_surface_restrict_to_version(surface_.get(), CAIRO_PDF_VERSION_1_4);
        keepMeasures(context_.get());
    }

    void add(const layout::Page& page) override {
        cairo_pdf_surface_set_size(surface_.get(), page.width / twipsPerPoint,
                                   page.height / twipsPerPoint);
        cairo_save(context_.get());
        cairo_scale(context_.get(), 1 / twipsPerPoint, 1 / twipsPerPoint);
        paint_(context_.get(), page.layer);
        cairo_restore(context_.get());
        cairo_show_page(context_.get());
        sink_.rethrow();
    }

    void finish() override {
        cairo_surface_finish(surface_.get());
        sink_.rethrow();
        room_.finish();
        if (cairo_surface_status(surface_.get()) != CAIRO_STATUS_SUCCESS) {
            throw RunTimeError(75, u"PDF 没有写成。");
        }
    }

private:
    Paint paint_;
    FontRoom room_;
    ByteSink sink_;
    Surface surface_;
    Context context_;
};

} // namespace

std::unique_ptr<PagePainter::Pdf> PagePainter::pdf(WriteBytes write) {
    auto paint = [canvas = canvas_.get()](cairo_t* context, const layout::Layer& layer) {
        canvas->paint(context, layer);
    };
    return std::make_unique<PdfFile<decltype(paint)>>(paint, std::move(write));
}

word::Bytes pngOf(const PixelImage& image) {
    word::Bytes bytes;
    const Surface surface = surfaceOf(image);
    if (!surface) {
        throw RunTimeError(7, u"页面图片太大，内存不够。");
    }
    ByteSink sink{
        [&bytes](word::ByteView part) { bytes.insert(bytes.end(), part.begin(), part.end()); },
        nullptr};
    cairo_surface_write_to_png_stream(surface.get(), &ByteSink::take, &sink);
    sink.rethrow();
    return bytes;
}

} // namespace qvnd::drawing
