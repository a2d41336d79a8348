#include "platform/drawing/metafile/BitmapRecords.h"

#include <cstdint>
#include <utility>

namespace qvnd::drawing::metafile {

namespace {

constexpr std::size_t mostPixelBytes = std::size_t{256} << 20; // of one metafile

// Ternary raster operations, [MS-WMF] 2.1.1.31.
constexpr std::uint32_t sourceAnd = 0x008800C6;
constexpr std::uint32_t sourcePaint = 0x00EE0086;
constexpr std::uint32_t sourceInvert = 0x00660046;
constexpr std::uint32_t notSourceCopy = 0x00330008;
constexpr std::uint32_t patternCopy = 0x00F00021;
constexpr std::uint32_t patternInvert = 0x005A0049;
constexpr std::uint32_t targetInvert = 0x00550009;
constexpr std::uint32_t nothing = 0x00AA0029;
constexpr std::uint32_t blackness = 0x00000042;
constexpr std::uint32_t whiteness = 0x00FF0062;

VectorBlend blendOf(std::uint32_t operation) {
    switch (operation) {
    case sourceAnd:
        return VectorBlend::darken;
    case sourcePaint:
        return VectorBlend::lighten;
    case sourceInvert:
    case patternInvert:
    case targetInvert:
        return VectorBlend::invert;
    default:
        return VectorBlend::cover;
    }
}

bool takesNoSource(std::uint32_t operation) {
    return operation == patternCopy || operation == patternInvert || operation == targetInvert ||
           operation == nothing || operation == blackness || operation == whiteness;
}

void invert(PixelImage& image) {
    for (std::size_t i = 0; i < image.pixels.size(); i += 4) {
        for (std::size_t part = i; part < i + 3; ++part) { // no colour is above its opacity
            image.pixels[part] =
                static_cast<std::uint8_t>(image.pixels[i + 3] - image.pixels[part]);
        }
    }
}

} // namespace

std::optional<PixelImage> BitmapRecords::imageOf(const Bitmap& bitmap, const BitmapPart& part,
                                                 bool hasOpacity) {
    const std::optional<BitmapPart> inside = bitmap.inside(part);
    if (!inside) {
        return std::nullopt;
    }
    const std::size_t bytes =
        static_cast<std::size_t>(inside->width) * static_cast<std::size_t>(inside->height) * 4;
    if (bytes > mostPixelBytes - pixelBytes_) {
        return std::nullopt;
    }
    pixelBytes_ += bytes;
    return bitmap.image(*inside, hasOpacity);
}

std::optional<PixelImage> BitmapRecords::whole(word::ByteView head, word::ByteView pixels) {
    const auto bitmap = Bitmap::read(head, pixels);
    return bitmap ? imageOf(*bitmap, {0, 0, bitmap->width(), bitmap->height()}, false)
                  : std::nullopt;
}

void BitmapRecords::draw(const BitmapPlace& place, word::ByteView head, word::ByteView pixels) {
    if (head.empty() || takesNoSource(place.operation)) {
        fill(place.to, place.extent, place.operation);
        return;
    }
    const auto bitmap = Bitmap::read(head, pixels);
    if (!bitmap) {
        return;
    }
    BitmapPart part = place.part;
    if (place.partFromBelow && bitmap->isBottomUp()) {
        const std::int64_t above = std::int64_t{bitmap->height()} - part.y - part.height;
        if (!std::in_range<int>(above)) {
            return; // far outside of the bitmap
        }
        part.y = static_cast<int>(above);
    }
    auto image = imageOf(*bitmap, part, place.hasOpacity);
    if (!image) {
        return;
    }
    if (place.operation == notSourceCopy) {
        invert(*image);
    }
    context_.image({std::move(*image), {}, {}, {}, blendOf(place.operation), place.opacity},
                   place.to, place.extent);
}

void BitmapRecords::fill(VectorPoint to, VectorPoint extent, std::uint32_t operation) {
    const VectorPoint end{to.x + extent.x, to.y + extent.y};
    if (operation == patternCopy || operation == patternInvert) {
        context_.fillRectangle(to, end, context_.state().brush, blendOf(operation));
    } else if (operation == targetInvert) {
        context_.fillRectangle(to, end, BrushObject{0xFFFFFF}, blendOf(operation));
    } else if (operation == blackness || operation == whiteness) {
        context_.fillRectangle(to, end, operation == blackness ? 0 : 0xFFFFFF);
    }
}

} // namespace qvnd::drawing::metafile
