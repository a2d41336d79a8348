#pragma once

#include "platform/drawing/FontFaces.h"
#include "platform/drawing/PixelImage.h"
#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/layout/PageModel.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

// One painter for all that pages are painted on: a PDF, a picture, the screen. It is Cairo's, which
// takes the very faces that the layout measured, glyph by glyph with the text that they stand for,
// embeds only the glyphs that are used, and needs no display.
namespace qvnd::drawing {

// Reads the raster picture that a blob holds, cropped as it says; nothing for one that cannot be
// drawn. What it does not know may be a metafile, which the painter reads itself.
using ReadPicture = std::function<std::optional<PixelImage>(const word::DataBlob& blob)>;

class PagePainter {
public:
    // Both must outlive the object.
    PagePainter(FontFaces& fonts, ReadPicture readPicture);
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

// Whether the blob holds a metafile that is painted.
bool isPaintedMetafile(const word::DataBlob& blob);

// The picture as a PNG file.
word::Bytes pngOf(const PixelImage& image);

} // namespace qvnd::drawing
