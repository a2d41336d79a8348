#include "platform/word/docfile/text/HeaderStory.h"

#include "platform/word/docfile/format/Plc.h"

#include <algorithm>

namespace qvnd::word {

namespace {

bool anyHeader(std::span<const HeaderSet> sections) {
    return std::any_of(sections.begin(), sections.end(), [](const HeaderSet& set) {
        return std::any_of(set.begin(), set.end(),
                           [](const SlicedText& header) { return !header.empty(); });
    });
}

} // namespace

EncodedHeaders encodeHeaders(std::span<const HeaderSet> sections,
                             const std::shared_ptr<const Story>& mark) {
    EncodedHeaders result;
    if (!anyHeader(sections)) {
        return result;
    }
    std::vector<std::uint32_t> positions(separatorStories, 0);
    Cp end = 0;
    for (const HeaderSet& set : sections) {
        for (const SlicedText& header : set) {
            positions.push_back(end);
            if (!header.empty()) {
                append(result.text, header);
                append(result.text, slicesOf(mark));
                end += lengthOf(header) + mark->size();
            }
        }
    }
    append(result.text, slicesOf(mark));
    positions.insert(positions.end(), {end, end + 2});
    result.plcfHdd = encodePlc(positions, {});
    return result;
}

std::vector<HeaderPlaces> decodeHeaders(ByteView plcfHdd, Cp length, std::size_t sections,
                                        int* damage) {
    const std::vector<std::uint32_t> positions = decodePlc(plcfHdd, 0).positions;
    std::vector<HeaderPlaces> result;
    int left = 0;
    // Each story ends where the next position is; the last position ends none.
    for (std::size_t at = separatorStories; result.size() < sections; at += headersPerSection) {
        if (at + headersPerSection >= positions.size()) {
            break;
        }
        HeaderPlaces places;
        for (std::size_t i = 0; i < headersPerSection; ++i) {
            const Cp start = positions[at + i];
            const Cp limit = positions[at + i + 1];
            const bool inside = start <= limit && limit <= length;
            left += inside ? 0 : 1;
            if (inside && limit > start) {
                places[i] = HeaderPlace{start, limit - start - 1};
            }
        }
        result.push_back(places);
    }
    if (damage != nullptr) {
        *damage += left;
    }
    return result;
}

} // namespace qvnd::word
