#include "platform/word/docfile/format/OfficeArt.h"

namespace qvnd::word::art {

RecordHeader readHeader(LittleEndianReader& reader) {
    const unsigned versionAndInstance = reader.u16();
    const std::uint16_t type = reader.u16();
    return {versionAndInstance & 0xF, versionAndInstance >> 4, type, reader.u32()};
}

void writeRecord(LittleEndianWriter& writer, unsigned version, unsigned instance,
                 std::uint16_t type, ByteView content) {
    writer.u16(version | (instance << 4));
    writer.u16(type);
    writer.u32(static_cast<std::uint32_t>(content.size()));
    writer.bytes(content);
}

} // namespace qvnd::word::art
