#include "platform/word/docfile/text/HeaderStory.h"

#include "platform/word/docfile/format/Plc.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

namespace {

bool anyText(std::span<const SlicedText> stories) {
    return std::any_of(stories.begin(), stories.end(),
                       [](const SlicedText& story) { return !story.empty(); });
}

class HeaderEncoding {
public:
    explicit HeaderEncoding(const std::shared_ptr<const Story>& mark) : mark_(slicesOf(mark)) {}

    void add(std::span<const SlicedText> stories) {
        for (const SlicedText& story : stories) {
            positions_.push_back(end_);
            if (!story.empty()) {
                append(result_.text, story);
                append(result_.text, mark_);
                end_ += lengthOf(story) + lengthOf(mark_);
            }
        }
    }
    EncodedHeaders finish() {
        append(result_.text, mark_);
        positions_.insert(positions_.end(), {end_, end_ + 2});
        result_.plcfHdd = encodePlc(positions_, {});
        return std::move(result_);
    }

private:
    SlicedText mark_;
    EncodedHeaders result_;
    std::vector<std::uint32_t> positions_;
    Cp end_ = 0;
};

// The set of stories whose first position has that index; each ends where the next position is.
// Nothing where the table is too short: its last position ends none. A story that begins before
// `end`, where another one ended, is damaged: stories of a sound file do not overlap.
std::optional<HeaderPlaces> placesAt(const std::vector<std::uint32_t>& positions, std::size_t at,
                                     Cp length, Cp& end, int* damage) {
    if (at + headersPerSection >= positions.size()) {
        return std::nullopt;
    }
    HeaderPlaces places;
    for (std::size_t i = 0; i < headersPerSection; ++i) {
        const Cp start = positions[at + i];
        const Cp limit = positions[at + i + 1];
        const bool inside = start <= limit && limit <= length && (start >= end || start == limit);
        if (damage != nullptr && !inside) {
            ++*damage;
        }
        if (inside && limit > start) {
            places[i] = HeaderPlace{start, limit - start - 1};
            end = limit;
        }
    }
    return places;
}

} // namespace

EncodedHeaders encodeHeaders(const std::array<SlicedText, separatorStories>& separators,
                             std::span<const HeaderSet> sections,
                             const std::shared_ptr<const Story>& mark) {
    const bool anyHeader = std::any_of(sections.begin(), sections.end(), anyText);
    if (!anyHeader && !anyText(separators)) {
        return {};
    }
    HeaderEncoding encoding(mark);
    encoding.add(separators);
    for (const HeaderSet& set : sections) {
        encoding.add(set);
    }
    return encoding.finish();
}

HeaderPlaces decodeSeparators(ByteView plcfHdd, Cp length, int* damage) {
    Cp end = 0;
    return placesAt(decodePlc(plcfHdd, 0).positions, 0, length, end, damage)
        .value_or(HeaderPlaces{});
}

std::vector<HeaderPlaces> decodeHeaders(ByteView plcfHdd, Cp length, std::size_t sections,
                                        int* damage) {
    const std::vector<std::uint32_t> positions = decodePlc(plcfHdd, 0).positions;
    std::vector<HeaderPlaces> result;
    Cp end = 0;
    for (std::size_t at = separatorStories; result.size() < sections; at += headersPerSection) {
        const auto places = placesAt(positions, at, length, end, damage);
        if (!places) {
            break;
        }
        result.push_back(*places);
    }
    return result;
}

} // namespace qvnd::word
