#pragma once

#include "platform/drawing/PixelImage.h"
#include "platform/word/docfile/container/Bytes.h"

#include <cstddef>
#include <optional>

namespace qvnd::drawing::metafile {

// A part of a bitmap, in pixels from its upper left corner.
struct BitmapPart {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// A device-independent bitmap as metafiles keep them: its head with the colours that it names, and
// its pixels (BITMAPINFO, [MS-WMF] 2.2.2.9). One to 32 bits a pixel, and runs of four or eight.
class Bitmap {
public:
    // `pixels` is empty where they follow the head. Nothing for a bitmap that is damaged, too large
    // (more than 64 million pixels; in runs more than a million and 128 for each byte that it
    // brings), or of another kind. Views into both are kept.
    static std::optional<Bitmap> read(word::ByteView head, word::ByteView pixels);

    int width() const { return width_; }
    int height() const { return height_; }
    bool isBottomUp() const { return bottomUp_; }
    // As much of the part as lies within the bitmap; nothing where none of it does.
    std::optional<BitmapPart> inside(const BitmapPart& part) const;
    // A part within the bitmap as an image. `hasOpacity`: the fourth byte of 32 bits is the pixel's
    // opacity, the colours multiplied by it. Pixels that no run says are clear.
    PixelImage image(const BitmapPart& part, bool hasOpacity) const;

private:
    struct Mask {
        std::uint32_t bits = 0;
        std::uint8_t of(std::uint32_t pixel) const;
    };

    void readColours(word::LittleEndianReader& reader, std::size_t count, std::size_t bytes);
    void usePixels(word::ByteView pixels);
    void putRuns(const BitmapPart& part, PixelImage& image) const;
    void putRow(const std::uint8_t* row, const BitmapPart& part, bool hasOpacity,
                std::uint8_t* to) const;
    std::uint32_t colourAt(const std::uint8_t* row, int x) const;

    int width_ = 0;
    int height_ = 0;
    unsigned depth_ = 0;
    bool bottomUp_ = true;
    bool inRuns_ = false;                // always from below
    std::vector<std::uint32_t> colours_; // 0xRRGGBB
    Mask red_{0xFF0000};
    Mask green_{0xFF00};
    Mask blue_{0xFF};
    word::ByteView pixels_;
    std::size_t stride_ = 0;
};

} // namespace qvnd::drawing::metafile
