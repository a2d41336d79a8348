#include "platform/drawing/windows/DeviceIndependentBitmap.h"

#include "platform/word/docfile/container/FormatError.h"

#include <QByteArray>

#include <algorithm>
#include <cstdlib>

namespace qvnd::drawing {

namespace {

using word::ByteView;
using word::LittleEndianReader;

constexpr std::uint32_t coreHeader = 12;
constexpr std::uint32_t infoHeader = 40;
constexpr std::uint32_t plain = 0;
constexpr std::uint32_t bitFields = 3;
constexpr std::int64_t mostPixels = 64'000'000;

struct DibHeader {
    std::uint32_t size = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
    unsigned bits = 0;
    std::uint32_t compression = plain;
    std::uint32_t colours = 0;

    // Header, masks and colour table.
    std::size_t length() const {
        const std::size_t entry = size == coreHeader ? 3 : 4;
        const std::size_t masks = compression == bitFields && size == infoHeader ? 12 : 0;
        const std::size_t listed =
            colours == 0 && bits <= 8 ? std::size_t{1} << bits : std::min(colours, 256U);
        return size + masks + (bits <= 8 || size != coreHeader ? listed * entry : 0);
    }
    // What the pixels take when each of them is kept.
    std::int64_t pixelBytes() const { return (width * bits + 31) / 32 * 4 * std::abs(height); }
};

DibHeader readHeader(ByteView bytes) {
    LittleEndianReader reader(bytes, "DIB");
    DibHeader header;
    header.size = reader.u32();
    if (header.size == coreHeader) {
        header.width = reader.u16();
        header.height = reader.u16();
        reader.skip(2);
        header.bits = reader.u16();
        return header;
    }
    header.width = reader.i32();
    header.height = reader.i32();
    reader.skip(2);
    header.bits = reader.u16();
    header.compression = reader.u32();
    reader.skip(12);
    header.colours = reader.u32();
    return header;
}

bool isSane(const DibHeader& header, std::size_t pixelBytes) {
    if (header.width <= 0 || header.height == 0 || header.bits > 32 || header.width > mostPixels ||
        std::abs(header.height) > mostPixels ||
        header.width * std::abs(header.height) > mostPixels) {
        return false;
    }
    const bool eachIsKept = header.compression == plain || header.compression == bitFields;
    return !eachIsKept || header.pixelBytes() <= static_cast<std::int64_t>(pixelBytes);
}

void append(QByteArray& file, ByteView bytes) {
    file.append(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

// As a picture file (BITMAPFILEHEADER in front), which Qt reads in all its kinds.
QImage asFile(ByteView header, ByteView pixels) {
    constexpr std::uint32_t fileHeader = 14;
    const auto start = static_cast<std::uint32_t>(fileHeader + header.size());
    word::LittleEndianWriter head;
    head.u16(0x4D42);
    head.u32(static_cast<std::uint32_t>(start + pixels.size()));
    head.u32(0);
    head.u32(start);
    QByteArray file;
    append(file, head.data());
    append(file, header);
    append(file, pixels);
    return QImage::fromData(file, "BMP");
}

} // namespace

QImage dibImage(ByteView header, ByteView pixels) {
    try {
        const DibHeader read = readHeader(header);
        if (!isSane(read, pixels.size()) || read.length() > header.size()) {
            return {};
        }
        return asFile(header.first(read.length()), pixels);
    } catch (const word::FormatError&) {
        return {};
    }
}

QImage packedDibImage(ByteView dib) {
    try {
        const std::size_t length = readHeader(dib).length();
        return length > dib.size() ? QImage() : dibImage(dib.first(length), dib.subspan(length));
    } catch (const word::FormatError&) {
        return {};
    }
}

} // namespace qvnd::drawing
