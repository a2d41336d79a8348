#pragma once

#include "platform/drawing/metafile/Bitmap.h"
#include "platform/drawing/metafile/DeviceContext.h"

namespace qvnd::drawing::metafile {

// Where a bitmap of a record goes and which part of it, in logical units and in pixels.
struct BitmapPlace {
    VectorPoint to;
    VectorPoint extent;
    BitmapPart part;
    bool partFromBelow = false; // of a bitmap that is kept from below, as StretchDIBits has it
    bool hasOpacity = false;    // each pixel has its own
    double opacity = 1;         // of all pixels
    std::uint32_t operation = sourceCopy;

    static constexpr std::uint32_t sourceCopy = 0x00CC0020; // [MS-WMF] 2.1.1.31
};

// Draws records of bitmaps, and of raster operations without one.
class BitmapRecords {
public:
    // Must outlive the object.
    explicit BitmapRecords(DeviceContext& context) : context_(context) {}

    // `pixels` is empty where they follow the head.
    void draw(const BitmapPlace& place, word::ByteView head, word::ByteView pixels);
    // A rectangle by an operation that takes no source; nothing by any other.
    void fill(VectorPoint to, VectorPoint extent, std::uint32_t operation);
    // All of a bitmap; nothing for one that cannot be read.
    std::optional<PixelImage> whole(word::ByteView head, word::ByteView pixels);

private:
    // Nothing where the metafile has had all the memory that it may have.
    std::optional<PixelImage> imageOf(const Bitmap& bitmap, const BitmapPart& part,
                                      bool hasOpacity);

    DeviceContext& context_;
    std::size_t pixelBytes_ = 0;
};

} // namespace qvnd::drawing::metafile
