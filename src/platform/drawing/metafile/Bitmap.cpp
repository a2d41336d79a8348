#include "platform/drawing/metafile/Bitmap.h"

#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

namespace qvnd::drawing::metafile {

namespace {

constexpr std::int64_t mostPixels = std::int64_t{64} << 20;
// In runs two bytes say up to 255 pixels, and the end of a row many that nothing is said of.
constexpr std::size_t mostPixelsOfAByte = 128;
constexpr std::size_t pixelsInAnyCase = std::size_t{1} << 20;
constexpr std::uint32_t oldHead = 12; // BITMAPCOREHEADER
constexpr std::uint32_t head = 40;    // BITMAPINFOHEADER, the least of the newer ones
constexpr std::uint32_t plain = 0;    // compressions, [MS-WMF] 2.1.1.7
constexpr std::uint32_t runsOfBytes = 1;
constexpr std::uint32_t runsOfHalfBytes = 2;
constexpr std::uint32_t bitFields = 3;

bool isKnownDepth(unsigned depth) {
    return depth == 1 || depth == 4 || depth == 8 || depth == 16 || depth == 24 || depth == 32;
}

bool isInRuns(std::uint32_t compression, unsigned depth) {
    return (compression == runsOfBytes && depth == 8) ||
           (compression == runsOfHalfBytes && depth == 4);
}

// Pixels of one row, from below, that a bitmap in runs says at once.
struct PixelRun {
    std::int64_t x = 0;
    std::int64_t row = 0;
    int length = 0;
    word::ByteView indexes; // of colours, a byte or half a byte each
    bool repeats = false;   // one byte says all of them
    bool halves = false;

    std::size_t index(std::size_t i) const {
        if (!halves) {
            return indexes[repeats ? 0 : i];
        }
        const std::uint8_t both = indexes[repeats ? 0 : i / 2];
        return i % 2 == 0 ? both >> 4 : both & 0x0F;
    }
};

void putPixel(std::uint32_t colour, std::uint8_t opacity, std::uint8_t* to) {
    for (const unsigned shift : {0U, 8U, 16U}) { // no colour is above its opacity
        *to++ = std::min(static_cast<std::uint8_t>(colour >> shift), opacity);
    }
    *to = opacity;
}

// Walks over the pixels of a bitmap in runs. It ends where the bytes do.
class PixelRuns {
public:
    PixelRuns(word::ByteView bytes, bool halves) : bytes_(bytes), halves_(halves) {}

    std::optional<PixelRun> next() {
        while (bytes_.size() - std::min(at_, bytes_.size()) >= 2) {
            const std::uint8_t count = bytes_[at_];
            const std::uint8_t what = bytes_[at_ + 1];
            at_ += 2;
            if (count > 0) {
                return run(count, bytes_.subspan(at_ - 1, 1), true);
            }
            if (what > moved) {
                return ownPixels(what);
            }
            if (what == endOfBitmap || !moveOn(what)) {
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

private:
    static constexpr std::uint8_t endOfRow = 0;
    static constexpr std::uint8_t endOfBitmap = 1;
    static constexpr std::uint8_t moved = 2; // by the two bytes that follow

    PixelRun run(int length, word::ByteView indexes, bool repeats) {
        const PixelRun result{x_, row_, length, indexes, repeats, halves_};
        x_ += length;
        return result;
    }

    std::optional<PixelRun> ownPixels(std::uint8_t count) {
        const std::size_t size = halves_ ? (count + 1U) / 2 : count;
        if (size > bytes_.size() - at_) {
            return std::nullopt;
        }
        const word::ByteView indexes = bytes_.subspan(at_, size);
        at_ += size + size % 2;
        return run(count, indexes, false);
    }

    bool moveOn(std::uint8_t what) {
        if (what == endOfRow) {
            x_ = 0;
            ++row_;
            return true;
        }
        if (bytes_.size() - at_ < 2) {
            return false;
        }
        x_ += bytes_[at_];
        row_ += bytes_[at_ + 1];
        at_ += 2;
        return true;
    }

    word::ByteView bytes_;
    bool halves_;
    std::size_t at_ = 0;
    std::int64_t x_ = 0;
    std::int64_t row_ = 0;
};

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
        bitmap.inRuns_ = isInRuns(compression, bitmap.depth_);
        const bool isKnown =
            isKnownDepth(bitmap.depth_) &&
            (compression == plain || (compression == bitFields && bitmap.depth_ >= 16) ||
             (bitmap.inRuns_ && height > 0));
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
    const auto height = static_cast<std::size_t>(height_);
    const bool isWhole = inRuns_ ? static_cast<std::size_t>(width_) * height <=
                                       pixelsInAnyCase + pixels.size() * mostPixelsOfAByte
                                 : stride_ * height <= pixels.size();
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
        putPixel(colour, opacity, to);
        to += 4;
    }
}

// Pixels that no run says stay clear: what is below them shows.
void Bitmap::putRuns(const BitmapPart& part, PixelImage& image) const {
    PixelRuns runs(pixels_, depth_ == 4);
    while (const std::optional<PixelRun> run = runs.next()) {
        const std::int64_t y = height_ - 1 - run->row - part.y;
        if (y < 0 || y >= part.height) {
            continue;
        }
        const std::int64_t first = std::max<std::int64_t>(run->x, part.x);
        const std::int64_t end = std::min(run->x + run->length, std::int64_t{part.x} + part.width);
        for (std::int64_t x = first; x < end; ++x) {
            const std::size_t index = run->index(static_cast<std::size_t>(x - run->x));
            const auto at = static_cast<std::size_t>((y * part.width + x - part.x) * 4);
            putPixel(index < colours_.size() ? colours_[index] : 0, 0xFF, &image.pixels[at]);
        }
    }
}

std::optional<BitmapPart> Bitmap::inside(const BitmapPart& part) const {
    const std::int64_t right = std::min<std::int64_t>(std::int64_t{part.x} + part.width, width_);
    const std::int64_t bottom = std::min<std::int64_t>(std::int64_t{part.y} + part.height, height_);
    const int x = std::max(part.x, 0);
    const int y = std::max(part.y, 0);
    if (right <= x || bottom <= y) {
        return std::nullopt;
    }
    return BitmapPart{x, y, static_cast<int>(right - x), static_cast<int>(bottom - y)};
}

PixelImage Bitmap::image(const BitmapPart& part, bool hasOpacity) const {
    PixelImage image{part.width, part.height, {}};
    const std::size_t row = static_cast<std::size_t>(part.width) * 4;
    image.pixels.resize(row * static_cast<std::size_t>(part.height));
    if (inRuns_) {
        putRuns(part, image);
        return image;
    }
    for (int i = 0; i < part.height; ++i) {
        const int from = bottomUp_ ? height_ - 1 - (part.y + i) : part.y + i;
        putRow(pixels_.data() + static_cast<std::size_t>(from) * stride_, part, hasOpacity,
               image.pixels.data() + static_cast<std::size_t>(i) * row);
    }
    return image;
}

} // namespace qvnd::drawing::metafile
