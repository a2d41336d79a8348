#include "platform/word/docfile/FragmentPlaces.h"

#include <algorithm>
#include <iterator>

namespace qvnd::word {

namespace {

// The first place that ends behind `at`.
template <typename Places>
auto placeFrom(const Places& places, Cp at) {
    auto found = places.upper_bound(at);
    if (found != places.begin()) {
        const auto before = std::prev(found);
        found = before->first + before->second.length > at ? before : found;
    }
    return found;
}

template <typename Places>
bool covers(const Places& places, Cp begin, Cp end) {
    auto next = placeFrom(places, begin);
    for (Cp at = begin; at < end; ++next) {
        if (next == places.end() || next->first > at) {
            return false;
        }
        at = next->first + next->second.length;
    }
    return true;
}

void appendPiece(std::vector<Piece>& pieces, std::uint32_t fc, Cp length) {
    if (!pieces.empty() && pieces.back().limitFc() == fc) {
        pieces.back().length += length;
        return;
    }
    Piece piece;
    piece.fc = fc;
    piece.length = length;
    pieces.push_back(piece);
}

} // namespace

std::vector<TextRange> FragmentPlaces::missing(const std::vector<StorySlice>& slices) const {
    std::vector<TextRange> result;
    // What the answer holds counts as placed, for a fragment that the document uses twice.
    std::unordered_map<const Story*, Places> planned;
    Cp position = 0;
    for (const StorySlice& slice : slices) {
        const auto known = fragments_.find(slice.fragment.get());
        const bool used = known != fragments_.end();
        if (!used || !covers(known->second.places, slice.begin, slice.begin + slice.length)) {
            const auto plan =
                planned.try_emplace(slice.fragment.get(), used ? known->second.places : Places{});
            addMissing(result, plan.first->second, slice, position);
        }
        position += slice.length;
    }
    return result;
}

void FragmentPlaces::addMissing(std::vector<TextRange>& ranges, Places& places,
                                const StorySlice& slice, Cp position) {
    const Cp end = slice.begin + slice.length;
    for (Cp at = slice.begin; at < end;) {
        const auto next = placeFrom(places, at);
        if (next != places.end() && next->first <= at) {
            at = next->first + next->second.length;
            continue;
        }
        const Cp limit = next == places.end() ? end : std::min(end, next->first);
        ranges.push_back({slice.fragment, at, limit - at, position + (at - slice.begin)});
        places[at] = {limit - at, 0};
        at = limit;
    }
}

void FragmentPlaces::add(const TextRange& range, std::uint32_t fc) {
    Fragment& fragment = fragments_[range.story.get()];
    fragment.story = range.story;
    fragment.places[range.begin] = {range.length, fc};
}

std::vector<Piece> FragmentPlaces::pieces(const std::vector<StorySlice>& slices) const {
    std::vector<Piece> result;
    for (const StorySlice& slice : slices) {
        if (slice.length == 0) {
            continue;
        }
        const Places& places = fragments_.at(slice.fragment.get()).places;
        const Cp end = slice.begin + slice.length;
        for (Cp at = slice.begin; at < end;) {
            const auto& [begin, place] = *placeFrom(places, at);
            const Cp limit = std::min(end, begin + place.length);
            appendPiece(result, place.fc + 2 * (at - begin), limit - at);
            at = limit;
        }
    }
    return result;
}

} // namespace qvnd::word
