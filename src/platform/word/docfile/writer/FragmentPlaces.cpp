#include "platform/word/docfile/writer/FragmentPlaces.h"

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

} // namespace

std::vector<TextRange> FragmentPlaces::missing(const std::vector<StorySlice>& slices) const {
    std::vector<TextRange> result;
    // What the answer holds counts as placed, for a fragment that the document uses twice.
    std::unordered_map<const Story*, Places> planned;
    const std::size_t answered = answeredBefore(slices);
    Cp position = answered == 0 ? 0 : answered_[answered - 1].end;
    for (std::size_t i = answered; i < slices.size(); ++i) {
        const StorySlice& slice = slices[i];
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

std::size_t FragmentPlaces::answeredBefore(const std::vector<StorySlice>& slices) const {
    const auto differs =
        std::mismatch(slices.begin(), slices.end(), answered_.begin(), answered_.end(),
                      [](const StorySlice& slice, const Answered& answered) {
                          return slice.fragment.get() == answered.fragment &&
                                 slice.begin == answered.begin && slice.length == answered.length;
                      });
    return static_cast<std::size_t>(differs.first - slices.begin());
}

const std::vector<Piece>& FragmentPlaces::pieces(const std::vector<StorySlice>& slices) {
    const std::size_t answered = answeredBefore(slices);
    takeBack(answered);
    for (std::size_t i = answered; i < slices.size(); ++i) {
        answer(slices[i]);
    }
    return pieces_;
}

// Only so many answers count any more.
void FragmentPlaces::takeBack(std::size_t answered) {
    answered_.resize(answered);
    pieces_.resize(answered == 0 ? 0 : answered_.back().pieces);
    if (!pieces_.empty()) {
        pieces_.back().length = answered_.back().lastLength;
    }
}

void FragmentPlaces::answer(const StorySlice& slice) {
    const Cp end = slice.begin + slice.length;
    for (Cp at = slice.begin; at < end;) {
        const Places& places = fragments_.at(slice.fragment.get()).places;
        const auto& [begin, place] = *placeFrom(places, at);
        Piece piece;
        piece.fc = place.fc + 2 * (at - begin);
        piece.length = std::min(end, begin + place.length) - at;
        add(piece);
        at += piece.length;
    }
    const Cp start = answered_.empty() ? 0 : answered_.back().end;
    answered_.push_back({slice.fragment.get(), slice.begin, slice.length, start + slice.length,
                         pieces_.size(), pieces_.empty() ? 0 : pieces_.back().length});
}

// Pieces that follow each other in the file are one.
void FragmentPlaces::add(const Piece& piece) {
    if (!pieces_.empty() && pieces_.back().limitFc() == piece.fc) {
        pieces_.back().length += piece.length;
    } else {
        pieces_.push_back(piece);
    }
}

} // namespace qvnd::word
