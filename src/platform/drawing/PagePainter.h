#pragma once

#include "platform/drawing/FontFaces.h"
#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/layout/PageModel.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

// One painter for all that pages are painted on: a PDF, a picture, the screen. It is Cairo's, which
// takes the very faces that the layout measured, glyph by glyph with the text that they stand for,
// embeds only the glyphs that are used, and needs no display.
namespace qvnd::drawing {

// A picture ready to be painted: four bytes a pixel, blue, green, red, opacity, the colours
// multiplied by the opacity; rows follow each other without gaps.
struct PixelImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

// Reads the picture that a blob holds, cropped as it says; nothing for one that cannot be drawn.
using ReadPicture = std::function<std::optional<PixelImage>(const word::DataBlob& blob)>;

class PagePainter {
public:
    // Both must outlive the object.
    PagePainter(const FontFaces& fonts, ReadPicture readPicture);
    ~PagePainter();
    PagePainter(const PagePainter&) = delete;
    PagePainter& operator=(const PagePainter&) = delete;

    // The page as a picture on white, `width` pixels wide. Throws RunTimeError (7) for a picture
    // larger than memory allows.
    PixelImage image(const layout::Page& page, int width);

    // Writes pages one after the other; the bytes are handed over as they come.
    class Pdf;
    using WriteBytes = std::function<void(word::ByteView)>;
    std::unique_ptr<Pdf> pdf(WriteBytes write);

private:
    class Canvas;
    std::unique_ptr<Canvas> canvas_;
};

class PagePainter::Pdf {
public:
    virtual ~Pdf() = default;
    virtual void add(const layout::Page& page) = 0;
    // Writes the rest. Throws what `write` threw.
    virtual void finish() = 0;
};

// The picture as a PNG file.
word::Bytes pngOf(const PixelImage& image);

} // namespace qvnd::drawing
