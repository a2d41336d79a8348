#include "platform/word/docfile/format/ShapeProperties.h"

#include <algorithm>

namespace qvnd::word::art {

namespace {

constexpr unsigned number = 0x3FFF;
constexpr unsigned isBlip = 0x4000;
constexpr unsigned isComplex = 0x8000;
constexpr unsigned countsShift = 16;

} // namespace

ShapeProperties::ShapeProperties(ByteView content, unsigned count) {
    LittleEndianReader reader(content, "OfficeArtFOPT");
    for (unsigned i = 0; i < count; ++i) {
        const std::uint16_t opid = reader.u16();
        properties_.push_back({opid, reader.u32(), {}});
    }
    for (Property& property : properties_) {
        if ((property.opid & isComplex) != 0) {
            const ByteView data = reader.view(property.value);
            property.complex.assign(data.begin(), data.end());
        }
    }
}

std::optional<std::uint32_t> ShapeProperties::value(std::uint16_t opid) const {
    for (const Property& property : properties_) {
        if ((property.opid & number) == opid) {
            return property.value;
        }
    }
    return std::nullopt;
}

void ShapeProperties::set(std::uint16_t opid, std::uint32_t value) {
    const auto place = std::find_if(properties_.begin(), properties_.end(), [&](const Property& p) {
        return (p.opid & number) >= (opid & number);
    });
    if (place != properties_.end() && (place->opid & number) == (opid & number)) {
        *place = {opid, value, {}};
    } else {
        properties_.insert(place, {opid, value, {}});
    }
}

void ShapeProperties::setBlip(std::uint16_t opid, std::uint32_t value) {
    set(static_cast<std::uint16_t>(opid | isBlip), value);
}

void ShapeProperties::setFlag(std::uint16_t opid, std::uint32_t flag, bool on) {
    const std::uint32_t before = value(opid).value_or(0) & ~flag;
    set(opid, before | (on ? flag : 0) | (flag << countsShift));
}

Bytes ShapeProperties::encode() const {
    LittleEndianWriter writer;
    for (const Property& property : properties_) {
        writer.u16(property.opid);
        writer.u32(property.value);
    }
    for (const Property& property : properties_) {
        writer.bytes(property.complex);
    }
    return writer.take();
}

} // namespace qvnd::word::art
