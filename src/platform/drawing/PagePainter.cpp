#include "platform/drawing/PagePainter.h"

#include "platform/drawing/CairoImage.h"
#include "platform/drawing/FontRoom.h"
#include "platform/drawing/GlyphPainter.h"
#include "platform/drawing/TextPainter.h"
#include "platform/drawing/VectorPainter.h"
#include "platform/drawing/metafile/Metafile.h"
#include "platform/error/RunTimeError.h"

#include <cairo-pdf.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <list>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace qvnd::drawing {

namespace {

constexpr double twipsPerPoint = 20;
constexpr std::uint32_t paper = 0xFFFFFF;

// The pictures that were painted last, so that one that stands on every page is read once.
class RecentPictures {
public:
    // A picture as a surface; no surface for one that cannot be read.
    struct Picture {
        word::DataBlob blob;
        CairoSurface surface;
        int width = 0;
        int height = 0;

        std::size_t bytes() const { return std::size_t{4} * width * height; }
    };

    explicit RecentPictures(ReadPicture read) : read_(std::move(read)) {}

    const Picture& of(const word::DataBlob& blob) {
        const auto known = std::find_if(pictures_.begin(), pictures_.end(),
                                        [&](const Picture& p) { return p.blob == blob; });
        if (known != pictures_.end()) {
            pictures_.splice(pictures_.begin(), pictures_, known);
            return pictures_.front();
        }
        pictures_.push_front(read(blob));
        bytes_ += pictures_.front().bytes();
        while (pictures_.size() > 1 && (bytes_ > mostBytes || pictures_.size() > mostPictures)) {
            bytes_ -= pictures_.back().bytes();
            pictures_.pop_back();
        }
        return pictures_.front();
    }

private:
    static constexpr std::size_t mostBytes = 32U << 20U;
    static constexpr std::size_t mostPictures = 64;

    Picture read(const word::DataBlob& blob) const {
        Picture picture{blob, nullptr, 0, 0};
        const auto image = read_ ? read_(blob) : std::nullopt;
        if (image && image->width >= 1 && image->height >= 1) {
            picture.surface = surfaceOf(*image);
            picture.width = picture.surface ? image->width : 0;
            picture.height = picture.surface ? image->height : 0;
        }
        return picture;
    }

    ReadPicture read_;
    std::list<Picture> pictures_; // the latest first
    std::size_t bytes_ = 0;
};

} // namespace

// Paints layers onto a context whose unit is the twip.
class PagePainter::Canvas {
public:
    Canvas(FontFaces& fonts, ReadPicture readPicture)
        : glyphs_(fonts), pictures_(std::move(readPicture)) {}

    // Plane by plane, and each plane kind by kind.
    void paint(cairo_t* context, const layout::Layer& layer) {
        std::vector<OnPlane> items;
        add(layer.fills, items);
        add(layer.textArt, items);
        add(layer.outlines, items);
        add(layer.pictures, items);
        add(layer.rules, items);
        add(layer.texts, items);
        std::stable_sort(items.begin(), items.end(),
                         [](const OnPlane& a, const OnPlane& b) { return a.plane < b.plane; });
        for (const OnPlane& each : items) {
            std::visit([&](const auto* item) { paint(context, *item); }, each.item);
        }
    }

private:
    struct OnPlane {
        layout::Plane plane = 0;
        std::variant<const layout::Fill*, const layout::TextArt*, const layout::Outline*,
                     const layout::PlacedPicture*, const layout::Rule*, const layout::PlacedText*>
            item;
    };

    template <class Item>
    static void add(const std::vector<Item>& kind, std::vector<OnPlane>& items) {
        items.reserve(items.size() + kind.size());
        for (const Item& item : kind) {
            items.push_back({item.plane, &item});
        }
    }

    static void paint(cairo_t* context, const layout::Fill& fill) {
        setColour(context, fill.colour);
        cairo_rectangle(context, fill.x, fill.y, fill.width, fill.height);
        cairo_fill(context);
    }

    static void paint(cairo_t* context, const layout::Rule& rule) {
        setColour(context, rule.colour.value_or(0));
        cairo_set_line_width(context, rule.width);
        cairo_set_line_cap(context, CAIRO_LINE_CAP_SQUARE);
        cairo_move_to(context, rule.x1, rule.y1);
        cairo_line_to(context, rule.x2, rule.y2);
        cairo_stroke(context);
    }

    void paint(cairo_t* context, const layout::TextArt& art) {
        cairo_save(context);
        cairo_translate(context, art.x + art.width / 2, art.y + art.height / 2);
        cairo_rotate(context, art.angle);
        cairo_scale(context, art.width / art.ownWidth, art.height / art.ownHeight);
        cairo_translate(context, -art.ownWidth / 2, -art.ownHeight / 2);
        cairo_push_group(context);
        for (const layout::PlacedText& text : art.texts) {
            paint(context, text);
        }
        cairo_pop_group_to_source(context);
        cairo_paint_with_alpha(context, art.opacity);
        cairo_restore(context);
    }

    static void paint(cairo_t* context, const layout::Outline& outline) {
        trace(context, outline.path);
        if (outline.fill) {
            setColour(context, *outline.fill);
            cairo_fill_preserve(context);
        }
        if (outline.hasLine) {
            const double dash = 4 * outline.lineWidth;
            setColour(context, outline.lineColour.value_or(0));
            cairo_set_line_width(context, outline.lineWidth);
            cairo_set_line_cap(context, CAIRO_LINE_CAP_BUTT);
            cairo_set_dash(context, &dash, outline.isDashed ? 1 : 0, 0);
            cairo_stroke_preserve(context);
            cairo_set_dash(context, nullptr, 0, 0);
        }
        cairo_new_path(context);
    }

    // Nothing is painted below that height up to cairo_restore().
    static void endAt(cairo_t* context, std::optional<double> height) {
        constexpr double everywhere = 1e6; // twips
        if (height) {
            cairo_rectangle(context, -everywhere, -everywhere, 2 * everywhere,
                            everywhere + *height);
            cairo_clip(context);
        }
    }

    void paint(cairo_t* context, const layout::PlacedPicture& picture) {
        cairo_save(context);
        endAt(context, picture.endsAt);
        turn(context, picture);
        const RecentPictures::Picture& read = pictures_.of(picture.blob);
        if (read.surface) {
            paint(context, picture, read);
        } else if (const auto drawing = readMetafile(picture.blob)) {
            const layout::PageArea area{picture.x, picture.y, picture.x + picture.width,
                                        picture.y + picture.height};
            drawing::paint(context, *drawing, area, glyphs_);
        }
        cairo_restore(context);
    }

    static void turn(cairo_t* context, const layout::PlacedPicture& picture) {
        if (picture.turn == layout::ShapeTurn{}) {
            return;
        }
        const double x = picture.x + picture.width / 2;
        const double y = picture.y + picture.height / 2;
        cairo_translate(context, x, y);
        cairo_rotate(context, picture.turn.angle);
        cairo_scale(context, picture.turn.flippedAcross ? -1 : 1,
                    picture.turn.flippedDown ? -1 : 1);
        cairo_translate(context, -x, -y);
    }

    static void paint(cairo_t* context, const layout::PlacedPicture& picture,
                      const RecentPictures::Picture& image) {
        if (picture.width <= 0 || picture.height <= 0) {
            return;
        }
        cairo_save(context);
        cairo_translate(context, picture.x, picture.y);
        cairo_scale(context, picture.width / image.width, picture.height / image.height);
        cairo_set_source_surface(context, image.surface.get(), 0, 0);
        // Enlarged pixels at the picture's edge do not fade into what lies around it.
        cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
        cairo_rectangle(context, 0, 0, image.width, image.height);
        cairo_fill(context);
        cairo_restore(context);
    }

    void paint(cairo_t* context, const layout::PlacedText& text) {
        cairo_save(context);
        endAt(context, text.endsAt);
        texts_.paint(context, text);
        cairo_restore(context);
    }

    GlyphPainter glyphs_;
    TextPainter texts_{glyphs_};
    RecentPictures pictures_;
};

PagePainter::PagePainter(FontFaces& fonts, ReadPicture readPicture)
    : canvas_(std::make_unique<Canvas>(fonts, std::move(readPicture))) {}
PagePainter::~PagePainter() = default;

PixelImage PagePainter::image(const layout::Page& page, int width) {
    const double scale = width / page.width;
    const auto height = static_cast<int>(std::lround(page.height * scale));
    return paintedImage(width, height, [&](cairo_t* context) {
        cairo_scale(context, scale, scale);
        canvas_->paint(context, page.layer);
    });
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
        // Metafiles combine what they draw with the paper; on no paper it would be black.
        setColour(context_.get(), paper);
        cairo_paint(context_.get());
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
    CairoSurface surface_;
    CairoContext context_;
};

} // namespace

std::unique_ptr<PagePainter::Pdf> PagePainter::pdf(WriteBytes write) {
    auto paint = [canvas = canvas_.get()](cairo_t* context, const layout::Layer& layer) {
        canvas->paint(context, layer);
    };
    return std::make_unique<PdfFile<decltype(paint)>>(paint, std::move(write));
}

bool isPaintedMetafile(const word::DataBlob& blob) { return readMetafile(blob).has_value(); }

word::Bytes pngOf(const PixelImage& image) {
    word::Bytes bytes;
    const CairoSurface surface = surfaceOf(image);
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
