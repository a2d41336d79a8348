#include "platform/word/docfile/format/Plc.h"

namespace qvnd::word {

Plc decodePlc(ByteView bytes, std::size_t dataSize) {
    Plc plc;
    plc.dataSize = dataSize;
    if (bytes.size() < 4) {
        return plc;
    }
    const std::size_t count = (bytes.size() - 4) / (4 + dataSize);
    LittleEndianReader reader(bytes, "PLC");
    plc.positions.resize(count + 1);
    for (std::uint32_t& position : plc.positions) {
        position = reader.u32();
    }
    plc.data = reader.view(count * dataSize);
    return plc;
}

Bytes encodePlc(const std::vector<std::uint32_t>& positions, ByteView data) {
    LittleEndianWriter writer;
    writer.u32s(positions);
    writer.bytes(data);
    return writer.take();
}

} // namespace qvnd::word
