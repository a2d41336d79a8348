#include "platform/word/docfile/format/ShapeProperties.h"

#include <algorithm>
#include <map>

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

std::vector<ShapeProperties::Entry> ShapeProperties::entries() const {
    constexpr std::size_t propertySize = 6;
    std::vector<Entry> result;
    std::size_t complexAt = propertySize * properties_.size();
    for (const Property& property : properties_) {
        const bool complex = (property.opid & isComplex) != 0;
        Entry entry;
        entry.opid = property.opid & number;
        entry.namesBlip = (property.opid & isBlip) != 0 && !complex;
        entry.value = property.value;
        entry.valueAt = propertySize * result.size() + 2;
        entry.complexAt = complexAt;
        entry.complexSize = property.complex.size();
        complexAt += property.complex.size();
        result.push_back(entry);
    }
    return result;
}

void ShapeProperties::inherit(const ShapeProperties& defaults) {
    std::map<unsigned, std::size_t> places; // the first of a number counts
    for (std::size_t i = 0; i < properties_.size(); ++i) {
        places.try_emplace(properties_[i].opid & number, i);
    }
    for (const Property& property : defaults.properties_) {
        if ((property.opid & (isBlip | isComplex)) != 0) {
            continue;
        }
        const auto [place, isNew] = places.try_emplace(property.opid & number, properties_.size());
        if (isNew) {
            properties_.push_back({property.opid, property.value, {}});
        } else if (isFlags(property.opid)) {
            const std::uint32_t own = properties_[place->second].value;
            const std::uint32_t counting = property.value & ~own & 0xFFFF0000U;
            const std::uint32_t values = counting >> countsShift;
            properties_[place->second] = {
                property.opid, (own & ~values) | counting | (property.value & values), {}};
        }
    }
    std::stable_sort(
        properties_.begin(), properties_.end(),
        [](const Property& a, const Property& b) { return (a.opid & number) < (b.opid & number); });
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
