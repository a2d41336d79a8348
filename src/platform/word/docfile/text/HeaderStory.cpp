#include "platform/word/docfile/text/HeaderStory.h"

#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/text/Fields.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr char16_t paragraphMark = 0x0D;

void appendMark(Story& story) {
    story.text.push_back(paragraphMark);
    story.characters.push_back({1, PropertyListId::empty});
    story.paragraphs.push_back({1, 0, PropertyListId::empty});
}

void append(Story& story, const Story& part) {
    appendMarks(story.fields, part.fields, 0, part.size(), story.size());
    appendMarks(story.anchors, part.anchors, 0, part.size(), story.size());
    story.text += part.text;
    story.characters.insert(story.characters.end(), part.characters.begin(), part.characters.end());
    story.paragraphs.insert(story.paragraphs.end(), part.paragraphs.begin(), part.paragraphs.end());
}

bool anyHeader(std::span<const HeaderSet> sections) {
    return std::any_of(sections.begin(), sections.end(), [](const HeaderSet& set) {
        return std::any_of(set.begin(), set.end(), [](const auto& story) { return bool(story); });
    });
}

} // namespace

EncodedHeaders encodeHeaders(std::span<const HeaderSet> sections) {
    EncodedHeaders result;
    if (!anyHeader(sections)) {
        return result;
    }
    std::vector<std::uint32_t> positions(separatorStories, 0);
    for (const HeaderSet& set : sections) {
        for (const std::optional<Story>& header : set) {
            positions.push_back(result.story.size());
            if (header) {
                append(result.story, *header);
                appendMark(result.story);
            }
        }
    }
    positions.push_back(result.story.size());
    appendMark(result.story);
    positions.push_back(result.story.size() + 1);
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
