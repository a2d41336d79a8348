#include "platform/drawing/metafile/Bitmap.h"

#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

namespace qvnd::drawing::metafile {

namespace {

constexpr std::int64_t mostPixels = std::int64_t{64} << 20;
constexpr std::uint32_t oldHead = 12; // BITMAPCOREHEADER
constexpr std::uint32_t head = 40;    // BITMAPINFOHEADER, the least of the newer ones
constexpr std::uint32_t plain = 0;    // compressions
constexpr std::uint32_t bitFields = 3;

bool isKnownDepth(unsigned depth) {
    return depth == 1 || depth == 4 || depth == 8 || depth == 16 || depth == 24 || depth == 32;
}

} // namespace

std::uint8_t Bitmap::Mask::of(std::uint32_t pixel) const {
    if (bits == 0) {
        return 0;
    }
    const std::uint32_t most = bits >> std::countr_zero(bits);
    const std::uint32_t value = (pixel & bits) >> std::countr_zero(bits);
    return static_cast<std::uint8_t>(std::uint64_t{value} * 255 / most);
}

std::optional<Bitmap> Bitmap::read(word::ByteView bytes, word::ByteView pixels) {
    try {
        word::LittleEndianReader reader(bytes, "BITMAPINFO");
        Bitmap bitmap;
        const std::uint32_t headSize = reader.u32();
        const bool isOld = headSize == oldHead;
        if (!isOld && headSize < head) {
            return std::nullopt;
        }
        const std::int64_t width = isOld ? reader.u16() : reader.i32();
        const std::int64_t height = isOld ? reader.u16() : reader.i32();
        reader.skip(2); // planes
        bitmap.depth_ = reader.u16();
        const std::uint32_t compression = isOld ? plain : reader.u32();
        std::size_t used = 0;
        if (!isOld) {
            reader.skip(12);
            used = reader.u32();
            reader.skip(4);
        }
        const bool isKnown =
            isKnownDepth(bitmap.depth_) &&
            (compression == plain || (compression == bitFields && bitmap.depth_ >= 16));
        if (!isKnown || width < 1 || height == 0 || width * std::abs(height) > mostPixels) {
            return std::nullopt;
        }
        bitmap.width_ = static_cast<int>(width);
        bitmap.height_ = static_cast<int>(std::abs(height));
        bitmap.bottomUp_ = height > 0;
        if (bitmap.depth_ == 16) {
            bitmap.red_ = {0x7C00};
            bitmap.green_ = {0x3E0};
            bitmap.blue_ = {0x1F};
        }
        if (compression == bitFields) { // behind the head, or as its next fields
            bitmap.red_ = {reader.u32()};
            bitmap.green_ = {reader.u32()};
            bitmap.blue_ = {reader.u32()};
        }
        if (headSize > reader.position()) {
            reader.seek(headSize);
        }
        const std::size_t all = bitmap.depth_ <= 8 ? std::size_t{1} << bitmap.depth_ : 0;
        bitmap.readColours(reader, used > 0 ? std::min(used, std::max<std::size_t>(all, 256)) : all,
                           isOld ? 3 : 4);
        bitmap.usePixels(pixels.empty() ? reader.view(reader.remaining()) : pixels);
        return bitmap.pixels_.empty() ? std::nullopt : std::optional(std::move(bitmap));
    } catch (const word::FormatError&) {
        return std::nullopt;
    }
}

void Bitmap::readColours(word::LittleEndianReader& reader, std::size_t count, std::size_t bytes) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t blue = reader.u8();
        const std::uint32_t green = reader.u8();
        const std::uint32_t red = reader.u8();
        colours_.push_back((red << 16) | (green << 8) | blue);
        reader.skip(bytes - 3);
    }
}

void Bitmap::usePixels(word::ByteView pixels) {
    stride_ = (static_cast<std::size_t>(width_) * depth_ + 31) / 32 * 4;
    const bool isWhole = stride_ * static_cast<std::size_t>(height_) <= pixels.size();
    pixels_ = isWhole ? pixels : word::ByteView();
}

std::uint32_t Bitmap::colourAt(const std::uint8_t* row, int x) const {
    const auto at = static_cast<std::size_t>(x);
    if (depth_ <= 8) {
        const unsigned perByte = 8 / depth_;
        const unsigned shift = (perByte - 1 - static_cast<unsigned>(at % perByte)) * depth_;
        const unsigned index = (row[at / perByte] >> shift) & ((1U << depth_) - 1);
        return index < colours_.size() ? colours_[index] : 0;
    }
    if (depth_ == 24) {
        const std::uint8_t* p = row + at * 3;
        return (std::uint32_t{p[2]} << 16) | (std::uint32_t{p[1]} << 8) | p[0];
    }
    const std::size_t bytes = depth_ / 8;
    std::uint32_t pixel = 0;
    for (std::size_t i = 0; i < bytes; ++i) {
        pixel |= std::uint32_t{row[at * bytes + i]} << (8 * i);
    }
    return (std::uint32_t{red_.of(pixel)} << 16) | (std::uint32_t{green_.of(pixel)} << 8) |
           blue_.of(pixel);
}

void Bitmap::putRow(const std::uint8_t* row, const BitmapPart& part, bool hasOpacity,
                    std::uint8_t* to) const {
    for (int x = part.x; x < part.x + part.width; ++x) {
        const std::uint32_t colour = colourAt(row, x);
        const std::uint8_t opacity =
            hasOpacity && depth_ == 32 ? row[static_cast<std::size_t>(x) * 4 + 3] : 0xFF;
        for (const unsigned shift : {0U, 8U, 16U}) { // no colour is above its opacity
            *to++ = std::min(static_cast<std::uint8_t>(colour >> shift), opacity);
        }
        *to++ = opacity;
    }
}

std::optional<PixelImage> Bitmap::image(BitmapPart part, bool hasOpacity) const {
    const std::int64_t right = std::min<std::int64_t>(std::int64_t{part.x} + part.width, width_);
    const std::int64_t bottom = std::min<std::int64_t>(std::int64_t{part.y} + part.height, height_);
    part.x = std::max(part.x, 0);
    part.y = std::max(part.y, 0);
    if (right <= part.x || bottom <= part.y) {
        return std::nullopt;
    }
    part.width = static_cast<int>(right - part.x);
    part.height = static_cast<int>(bottom - part.y);
    PixelImage image{part.width, part.height, {}};
    const std::size_t row = static_cast<std::size_t>(part.width) * 4;
    image.pixels.resize(row * static_cast<std::size_t>(part.height));
    for (int i = 0; i < part.height; ++i) {
        const int from = bottomUp_ ? height_ - 1 - (part.y + i) : part.y + i;
        putRow(pixels_.data() + static_cast<std::size_t>(from) * stride_, part, hasOpacity,
               image.pixels.data() + static_cast<std::size_t>(i) * row);
    }
    return image;
}

} // namespace qvnd::drawing::metafile
