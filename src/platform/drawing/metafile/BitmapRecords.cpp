#include "platform/drawing/metafile/BitmapRecords.h"

namespace qvnd::drawing::metafile {

namespace {

constexpr std::size_t mostPixelBytes = std::size_t{256} << 20; // of one metafile

constexpr std::uint32_t sourceAnd = 0x008800C6;
constexpr std::uint32_t sourcePaint = 0x00EE0086;
constexpr std::uint32_t sourceInvert = 0x00660046;
constexpr std::uint32_t patternCopy = 0x00F00021;
constexpr std::uint32_t blackness = 0x00000042;
constexpr std::uint32_t whiteness = 0x00FF0062;

VectorBlend blendOf(std::uint32_t operation) {
    switch (operation) {
    case sourceAnd:
        return VectorBlend::darken;
    case sourcePaint:
        return VectorBlend::lighten;
    case sourceInvert:
        return VectorBlend::invert;
    default:
        return VectorBlend::cover;
    }
}

} // namespace

void BitmapRecords::draw(const BitmapPlace& place, word::ByteView head, word::ByteView pixels) {
    if (head.empty()) {
        fill(place.to, place.extent, place.operation);
        return;
    }
    const auto bitmap = Bitmap::read(head, pixels);
    if (!bitmap) {
        return;
    }
    BitmapPart part = place.part;
    if (place.partFromBelow && bitmap->isBottomUp()) {
        part.y = bitmap->height() - part.y - part.height;
    }
    auto image = bitmap->image(part, place.hasOpacity);
    if (!image || pixelBytes_ + image->pixels.size() > mostPixelBytes) {
        return;
    }
    pixelBytes_ += image->pixels.size();
    context_.image(std::move(*image), place.to, place.extent, blendOf(place.operation));
}

void BitmapRecords::fill(VectorPoint to, VectorPoint extent, std::uint32_t operation) {
    const VectorPoint end{to.x + extent.x, to.y + extent.y};
    const auto brush = context_.state().brush.colour;
    if (operation == patternCopy && brush) {
        context_.fillRectangle(to, end, *brush);
    } else if (operation == blackness || operation == whiteness) {
        context_.fillRectangle(to, end, operation == blackness ? 0 : 0xFFFFFF);
    }
}

} // namespace qvnd::drawing::metafile
