#include "platform/word/docfile/pictures/Blip.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/pictures/Md4.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::int64_t emuPerTwip = 635;

struct BlipForm {
    std::uint16_t type;
    unsigned instance;   // one digest
    std::uint8_t number; // MSOBLIPTYPE
    bool metafile;
};

BlipForm formOf(const ImageFile& image) {
    switch (image.kind) {
    case ImageKind::png:
        return {art::blipPng, 0x6E0, 6, false};
    case ImageKind::jpeg:
        return {art::blipJpeg, image.cmyk ? 0x6E2U : 0x46AU, 5, false};
    case ImageKind::dib:
        return {art::blipDib, 0x7A8, 7, false};
    case ImageKind::emf:
        return {art::blipEmf, 0x3D4, 2, true};
    case ImageKind::wmf:
        break;
    }
    return {art::blipWmf, 0x216, 3, true};
}

std::uint32_t adler32(ByteView data) {
    constexpr std::uint32_t modulus = 65521;
    constexpr std::size_t safeRun = 5552; // sums stay within 32 bits
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (std::size_t at = 0; at < data.size(); at += safeRun) {
        for (const std::uint8_t byte : data.subspan(at, std::min(safeRun, data.size() - at))) {
            a += byte;
            b += a;
        }
        a %= modulus;
        b %= modulus;
    }
    return (b << 16) | a;
}

// The zlib format with stored blocks. Readers take a metafile to be deflated whatever its header
// says, so it is wrapped rather than marked as uncompressed.
Bytes wrapDeflated(ByteView data) {
    constexpr std::size_t longestBlock = 65535;
    LittleEndianWriter writer;
    writer.u8(0x78);
    writer.u8(0x01);
    std::size_t at = 0;
    do {
        const ByteView block = data.subspan(at, std::min(longestBlock, data.size() - at));
        at += block.size();
        writer.u8(at == data.size() ? 1 : 0);
        writer.u16(static_cast<unsigned>(block.size()));
        writer.u16(static_cast<unsigned>(~block.size()) & 0xFFFF);
        writer.bytes(block);
    } while (at < data.size());
    const std::uint32_t sum = adler32(data);
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        writer.u8((sum >> shift) & 0xFF);
    }
    return writer.take();
}

void writeMetafileHeader(LittleEndianWriter& writer, const ImageFile& image, std::size_t kept) {
    constexpr std::int32_t twipsPerPoint = 20;
    writer.u32(static_cast<std::uint32_t>(image.data.size()));
    writer.u32(0); // rcBounds, in points
    writer.u32(0);
    writer.u32(static_cast<std::uint32_t>(std::max(image.width / twipsPerPoint, 1)));
    writer.u32(static_cast<std::uint32_t>(std::max(image.height / twipsPerPoint, 1)));
    writer.u32(static_cast<std::uint32_t>(image.width * emuPerTwip));
    writer.u32(static_cast<std::uint32_t>(image.height * emuPerTwip));
    writer.u32(static_cast<std::uint32_t>(kept));
    writer.u8(0);    // deflate
    writer.u8(0xFE); // no filter
}

Bytes blipContent(const ImageFile& image, const BlipForm& form,
                  const std::array<std::uint8_t, 16>& digest) {
    LittleEndianWriter writer;
    writer.bytes(digest);
    if (form.metafile) {
        const Bytes kept = wrapDeflated(image.data);
        writeMetafileHeader(writer, image, kept.size());
        writer.bytes(kept);
    } else {
        writer.u8(0xFF); // tag
        writer.bytes(image.data);
    }
    return writer.take();
}

std::optional<ImageKind> kindOf(std::uint16_t type) {
    switch (type) {
    case art::blipPng:
        return ImageKind::png;
    case art::blipJpeg:
    case art::blipJpegOfCmyk:
        return ImageKind::jpeg;
    case art::blipDib:
        return ImageKind::dib;
    case art::blipEmf:
        return ImageKind::emf;
    case art::blipWmf:
        return ImageKind::wmf;
    default:
        return std::nullopt;
    }
}

// The instances that tell of a second digest are odd ones.
ByteView pictureIn(ByteView blip, const art::RecordHeader& header, bool metafile) {
    constexpr std::size_t digestSize = 16;
    constexpr std::size_t metafileHeadSize = 34;
    LittleEndianReader reader(blip, "OfficeArtBlip");
    reader.skip((header.instance & 1) != 0 ? 2 * digestSize : digestSize);
    reader.skip(metafile ? metafileHeadSize : 1);
    return reader.view(reader.remaining());
}

// Behind the head of an entry stand its name and the blip.
ByteView blipOf(ByteView entry) {
    constexpr std::size_t nameSizeAt = 33;
    constexpr std::size_t headSize = 36;
    LittleEndianReader reader(entry, "OfficeArtFBSE");
    reader.seek(nameSizeAt);
    const std::size_t nameSize = reader.u8();
    reader.seek(headSize);
    reader.skip(nameSize);
    return reader.view(reader.remaining());
}

} // namespace

std::optional<StoredImage> decodeBlip(ByteView record) {
    try {
        LittleEndianReader reader(record, "OfficeArtBStoreContainerFileBlock");
        const art::RecordHeader header = art::readHeader(reader);
        const ByteView content =
            reader.view(std::min<std::size_t>(header.length, reader.remaining()));
        if (header.type == art::fbse) {
            const ByteView blip = blipOf(content);
            const bool nested = blip.size() > 4 && (blip[2] | (blip[3] << 8)) == art::fbse;
            return nested ? std::nullopt : decodeBlip(blip);
        }
        const auto kind = kindOf(header.type);
        if (!kind) {
            return std::nullopt;
        }
        const bool metafile = *kind == ImageKind::emf || *kind == ImageKind::wmf;
        return StoredImage{*kind, pictureIn(content, header, metafile)};
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

Bytes encodeBlip(const ImageFile& image) {
    constexpr unsigned macPict = 4;
    const BlipForm form = formOf(image);
    const auto digest = md4(image.data);
    LittleEndianWriter blip;
    art::writeRecord(blip, 0, form.instance, form.type, blipContent(image, form, digest));
    LittleEndianWriter entry;
    entry.u8(form.number);
    entry.u8(form.metafile ? macPict : form.number);
    entry.bytes(digest);
    entry.u16(0xFF); // tag
    entry.u32(static_cast<std::uint32_t>(blip.position()));
    entry.u32(1); // cRef
    entry.u32(0); // foDelay
    entry.zeros(4);
    entry.bytes(blip.data());
    LittleEndianWriter record;
    art::writeRecord(record, 2, form.number, art::fbse, entry.data());
    return record.take();
}

} // namespace qvnd::word
