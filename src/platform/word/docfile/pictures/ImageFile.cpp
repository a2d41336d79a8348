#include "platform/word/docfile/pictures/ImageFile.h"

#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace qvnd::word {

namespace {

constexpr double twipsPerInch = 1440;
constexpr double plainResolution = 96; // dots an inch, for files that name none
constexpr double metresPerInch = 0.0254;
constexpr double largestTwips = 1'000'000'000;

using Size = std::optional<std::pair<std::int32_t, std::int32_t>>;

bool startsWith(ByteView file, std::initializer_list<std::uint8_t> magic) {
    return file.size() >= magic.size() && std::equal(magic.begin(), magic.end(), file.begin());
}

std::uint32_t bigEndian(LittleEndianReader& reader, std::size_t size) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        value = (value << 8) | reader.u8();
    }
    return value;
}

// A resolution that nobody means (a scanner's 1 dpi, a broken field) counts as none.
double sensible(double dotsPerInch) {
    return dotsPerInch >= 10 && dotsPerInch <= 10000 ? dotsPerInch : plainResolution;
}

std::int32_t inTwips(double units, double unitsPerInch) {
    const double twips = std::round(std::abs(units) * twipsPerInch / unitsPerInch);
    return static_cast<std::int32_t>(std::clamp(twips, 0.0, largestTwips));
}

struct Resolution {
    double x = plainResolution;
    double y = plainResolution;
};

Size sizeInTwips(double width, double height, Resolution dots) {
    return std::pair(inTwips(width, dots.x), inTwips(height, dots.y));
}

// --- PNG ------------------------------------------------------------------------------------

Resolution pngResolution(LittleEndianReader& reader) {
    constexpr std::uint32_t pHYs = 0x70485973;
    constexpr std::uint32_t idat = 0x49444154;
    while (reader.remaining() >= 8) {
        const std::size_t length = bigEndian(reader, 4);
        const std::uint32_t type = bigEndian(reader, 4);
        if (type == idat || length + 4 > reader.remaining()) {
            break;
        }
        if (type == pHYs && length == 9) {
            const double x = bigEndian(reader, 4);
            const double y = bigEndian(reader, 4);
            const bool perMetre = reader.u8() == 1;
            return perMetre ? Resolution{sensible(x * metresPerInch), sensible(y * metresPerInch)}
                            : Resolution{};
        }
        reader.skip(length + 4);
    }
    return {};
}

Size pngSize(ByteView file) {
    LittleEndianReader reader(file, "PNG");
    reader.skip(16);
    const double width = bigEndian(reader, 4);
    const double height = bigEndian(reader, 4);
    reader.skip(9); // the rest of IHDR and its checksum
    return sizeInTwips(width, height, pngResolution(reader));
}

// --- JPEG -----------------------------------------------------------------------------------

Resolution jfifResolution(LittleEndianReader segment) {
    constexpr std::array<std::uint8_t, 5> jfif{'J', 'F', 'I', 'F', 0};
    if (segment.remaining() < 12) {
        return {};
    }
    const ByteView name = segment.view(jfif.size());
    segment.skip(2); // version
    const unsigned unit = segment.u8();
    const double x = bigEndian(segment, 2);
    const double y = bigEndian(segment, 2);
    if (!std::equal(jfif.begin(), jfif.end(), name.begin()) || unit == 0 || unit > 2) {
        return {};
    }
    const double perInch = unit == 2 ? 2.54 : 1.0;
    return {sensible(x * perInch), sensible(y * perInch)};
}

bool isFrame(unsigned marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

Size jpegSize(ByteView file, bool& cmyk) {
    constexpr unsigned app0 = 0xE0;
    LittleEndianReader reader(file, "JPEG");
    reader.skip(2);
    Resolution dots;
    while (true) {
        while (reader.u8() != 0xFF) {
        }
        unsigned marker = reader.u8();
        while (marker == 0xFF) {
            marker = reader.u8();
        }
        const std::size_t length = bigEndian(reader, 2);
        const ByteView content = reader.view(std::max<std::size_t>(length, 2) - 2);
        LittleEndianReader segment(content, "JPEG");
        if (marker == app0) {
            dots = jfifResolution(segment);
        } else if (isFrame(marker)) {
            segment.skip(1);
            const double height = bigEndian(segment, 2);
            const double width = bigEndian(segment, 2);
            cmyk = segment.u8() == 4;
            return sizeInTwips(width, height, dots);
        }
    }
}

// --- BMP ------------------------------------------------------------------------------------

Size dibSize(ByteView dib) {
    constexpr std::uint32_t coreHeader = 12;
    LittleEndianReader reader(dib, "BMP");
    if (reader.u32() == coreHeader) {
        const double width = reader.u16();
        return sizeInTwips(width, reader.u16(), {});
    }
    const double width = reader.i32();
    const double height = reader.i32();
    reader.skip(12);
    const double x = reader.i32() * metresPerInch;
    const double y = reader.i32() * metresPerInch;
    return sizeInTwips(width, height, {sensible(x), sensible(y)});
}

// --- metafiles ------------------------------------------------------------------------------

Size emfSize(ByteView file) {
    constexpr std::size_t frameAt = 24; // rclFrame, in hundredths of a millimetre
    constexpr double perInch = 2540;
    LittleEndianReader reader(file, "EMF");
    reader.seek(frameAt);
    const double left = reader.i32();
    const double top = reader.i32();
    const double right = reader.i32();
    return std::pair(inTwips(right - left, perInch), inTwips(reader.i32() - top, perInch));
}

bool isPlaceable(ByteView file) { return startsWith(file, {0xD7, 0xCD, 0xC6, 0x9A}); }

Size placeableSize(ByteView file) {
    LittleEndianReader reader(file, "WMF");
    reader.skip(6);
    const double left = reader.i16();
    const double top = reader.i16();
    const double right = reader.i16();
    const double bottom = reader.i16();
    const double perInch = std::max<double>(reader.u16(), 1);
    return std::pair(inTwips(right - left, perInch), inTwips(bottom - top, perInch));
}

// A bare WMF has no size but the extent of its window, in units of nobody knows what: pixels.
Size windowExtent(ByteView metafile) {
    constexpr unsigned setWindowExt = 0x020C;
    LittleEndianReader reader(metafile, "WMF");
    reader.skip(18);
    while (reader.remaining() >= 6) {
        const std::size_t words = reader.u32();
        const unsigned function = reader.u16();
        if (words < 3) {
            break;
        }
        if (function == setWindowExt) {
            const double height = reader.i16();
            return sizeInTwips(reader.i16(), height, {});
        }
        reader.skip((words - 3) * 2);
    }
    return std::nullopt;
}

// --- which --------------------------------------------------------------------------------------

bool isEmf(ByteView file) {
    constexpr std::array<std::uint8_t, 4> signature{' ', 'E', 'M', 'F'};
    constexpr std::size_t signatureAt = 40;
    return startsWith(file, {1, 0, 0, 0}) && file.size() >= signatureAt + 4 &&
           std::equal(signature.begin(), signature.end(), file.begin() + signatureAt);
}

bool isBareWmf(ByteView file) {
    return startsWith(file, {1, 0, 9, 0, 0, 3}) || startsWith(file, {2, 0, 9, 0, 0, 3}) ||
           startsWith(file, {1, 0, 9, 0, 0, 1});
}

Size examine(ByteView file, ImageFile& image) {
    constexpr std::size_t bitmapFileHeader = 14;
    constexpr std::size_t placeableHeader = 22;
    image.data = file;
    if (startsWith(file, {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'})) {
        image.kind = ImageKind::png;
        return pngSize(file);
    }
    if (startsWith(file, {0xFF, 0xD8, 0xFF})) {
        image.kind = ImageKind::jpeg;
        return jpegSize(file, image.cmyk);
    }
    if (startsWith(file, {'B', 'M'}) && file.size() > bitmapFileHeader) {
        image.kind = ImageKind::dib;
        image.data = file.subspan(bitmapFileHeader);
        return dibSize(image.data);
    }
    if (isEmf(file)) {
        image.kind = ImageKind::emf;
        return emfSize(file);
    }
    image.kind = ImageKind::wmf;
    if (isPlaceable(file) && file.size() > placeableHeader) {
        image.data = file.subspan(placeableHeader);
        return placeableSize(file);
    }
    return isBareWmf(file) ? windowExtent(file) : std::nullopt;
}

} // namespace

std::optional<ImageFile> recogniseImage(ByteView file) {
    try {
        ImageFile image;
        const Size size = examine(file, image);
        if (!size || size->first == 0 || size->second == 0) {
            return std::nullopt;
        }
        image.width = size->first;
        image.height = size->second;
        return image;
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

} // namespace qvnd::word
