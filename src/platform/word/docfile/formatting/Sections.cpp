#include "platform/word/docfile/formatting/Sections.h"

#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sprm.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::size_t sedSize = 12;
constexpr std::uint32_t noSepx = 0xFFFFFFFF;

} // namespace

Bytes encodeSepx(ByteView properties) {
    const Bytes list = cutSprms(properties, longestSepx).list;
    LittleEndianWriter writer;
    writer.u16(static_cast<unsigned>(list.size()));
    writer.bytes(list);
    return writer.take();
}

ByteView decodeSepx(ByteView wordDocument, std::uint32_t offset) {
    LittleEndianReader reader(wordDocument, "Sepx");
    reader.seek(offset);
    const int size = reader.i16();
    return reader.view(static_cast<std::size_t>(std::max(size, 0)));
}

Bytes encodeSections(std::span<const SectionPlace> sections) {
    std::vector<std::uint32_t> positions{0};
    LittleEndianWriter seds;
    for (const SectionPlace& section : sections) {
        positions.push_back(positions.back() + section.length);
        seds.u16(0);
        seds.u32(section.sepx.value_or(noSepx));
        seds.u16(0);
        seds.u32(noSepx);
    }
    return encodePlc(positions, seds.data());
}

std::vector<SectionPlace> decodeSections(ByteView plcfSed, Cp mainLength, int* damage) {
    const Plc plc = decodePlc(plcfSed, sedSize);
    std::vector<SectionPlace> sections;
    Cp at = 0;
    int left = 0;
    for (std::size_t i = 0; i < plc.count(); ++i) {
        LittleEndianReader sed(plc.element(i), "Sed");
        sed.skip(2);
        const std::uint32_t sepx = sed.u32();
        const Cp limit = std::min(plc.positions[i + 1], mainLength);
        if (limit <= at) {
            ++left;
            continue;
        }
        sections.push_back({limit - at, sepx == noSepx ? std::nullopt : std::optional(sepx), i});
        at = limit;
    }
    if (sections.empty()) {
        sections.push_back({});
    }
    left += at < mainLength ? 1 : 0;
    sections.back().length += mainLength - at;
    if (damage != nullptr) {
        *damage += left;
    }
    return sections;
}

} // namespace qvnd::word
