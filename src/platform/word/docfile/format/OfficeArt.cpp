#include "platform/word/docfile/format/OfficeArt.h"

namespace qvnd::word::art {

namespace {

constexpr int deepest = 16;

bool nest(ByteView bytes, int depth) {
    LittleEndianReader reader(bytes, "OfficeArt");
    while (!reader.atEnd()) {
        if (reader.remaining() < headerSize) {
            return false;
        }
        const RecordHeader header = readHeader(reader);
        if (header.length > reader.remaining()) {
            return false;
        }
        const ByteView content = reader.view(header.length);
        if (header.version == container && (depth == deepest || !nest(content, depth + 1))) {
            return false;
        }
    }
    return true;
}

} // namespace

bool recordsAreWhole(ByteView bytes, std::uint16_t firstType) {
    if (bytes.size() < headerSize) {
        return false;
    }
    LittleEndianReader reader(bytes, "OfficeArt");
    return readHeader(reader).type == firstType && nest(bytes, 0);
}

RecordHeader readHeader(LittleEndianReader& reader) {
    const unsigned versionAndInstance = reader.u16();
    const std::uint16_t type = reader.u16();
    return {versionAndInstance & 0xF, versionAndInstance >> 4, type, reader.u32()};
}

void writeHeader(LittleEndianWriter& writer, unsigned version, unsigned instance,
                 std::uint16_t type, std::size_t length) {
    writer.u16(version | (instance << 4));
    writer.u16(type);
    writer.u32(static_cast<std::uint32_t>(length));
}

void writeRecord(LittleEndianWriter& writer, unsigned version, unsigned instance,
                 std::uint16_t type, ByteView content) {
    writeHeader(writer, version, instance, type, content.size());
    writer.bytes(content);
}

} // namespace qvnd::word::art
