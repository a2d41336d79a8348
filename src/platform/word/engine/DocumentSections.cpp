#include "platform/word/engine/DocumentSections.h"

#include <algorithm>

namespace qvnd::word {

namespace {

bool isSame(const SlicedText& one, const SlicedText& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const StorySlice& a, const StorySlice& b) {
                          return a.fragment == b.fragment && a.begin == b.begin &&
                                 a.length == b.length;
                      });
}

} // namespace

DocumentSections::DocumentSections(std::vector<SectionRun>& runs, std::vector<HeaderSet>& headers)
    : origins_(runs.size()), runs_(runs), headers_(headers) {
    headers_.resize(runs_.size());
    for (const SectionRun& run : runs_) {
        size_ += run.length;
    }
}

// From the end, where most of the work is done.
DocumentSections::Place DocumentSections::placeOf(Cp at) const {
    Place place{runs_.size() - 1, size_ - runs_.back().length};
    while (place.start > at) {
        --place.index;
        place.start -= runs_[place.index].length;
    }
    return place;
}

std::size_t DocumentSections::indexAt(Cp at) const { return placeOf(at).index; }

Cp DocumentSections::start(std::size_t index) const {
    Cp start = size_;
    for (std::size_t i = runs_.size(); i > index; --i) {
        start -= runs_[i - 1].length;
    }
    return start;
}

void DocumentSections::setProperties(std::size_t index, PropertyListId properties) {
    runs_[index].properties = properties;
}

std::size_t DocumentSections::headerOwner(std::size_t index, HeaderKind kind) const {
    const auto at = static_cast<std::size_t>(kind);
    bool returned = false;
    for (; index > 0; --index) {
        const Origin origin = origins_[index][at];
        returned = returned || origin == Origin::returned;
        const bool own = !headers_[index][at].empty() && origin != Origin::returned;
        if (own && !(returned && origin == Origin::brought)) {
            break;
        }
    }
    return index;
}

void DocumentSections::bringHeader(std::size_t index, std::size_t behind, HeaderKind kind,
                                   SlicedText header) {
    const auto at = static_cast<std::size_t>(kind);
    SlicedText& own = headers_[index][at];
    if (headers_[behind][at].empty()) {
        const bool ofDocument = !own.empty() && origins_[index][at] == Origin::document;
        headers_[behind][at] = ofDocument ? std::move(own) : SlicedText{};
        origins_[behind][at] = ofDocument ? Origin::document : Origin::returned;
    }
    own = std::move(header);
    origins_[index][at] = Origin::brought;
}

void DocumentSections::fillReturned(const SlicedText& blank) {
    for (std::size_t kind = 0; kind < HeaderSet().size(); ++kind) {
        std::size_t owner = 0; // headerOwner() of a returned section, for all in one go
        for (std::size_t index = 0; index < headers_.size(); ++index) {
            SlicedText& own = headers_[index][kind];
            if (origins_[index][kind] == Origin::returned) {
                const SlicedText& shown =
                    headers_[owner][kind].empty() ? blank : headers_[owner][kind];
                if (!isSame(own, shown)) {
                    own = SlicedText(shown);
                }
            } else if (!own.empty() && origins_[index][kind] == Origin::document) {
                owner = index;
            }
        }
    }
}

void DocumentSections::cut(Cp at, PropertyListId front) {
    const Place place = placeOf(at);
    const Cp frontLength = at - place.start;
    if (frontLength == 0) {
        return;
    }
    const auto offset = static_cast<std::ptrdiff_t>(place.index);
    runs_[place.index].length -= frontLength;
    runs_.insert(runs_.begin() + offset, SectionRun{frontLength, front});
    headers_.insert(headers_.begin() + offset + 1, HeaderSet{});
    origins_.insert(origins_.begin() + offset + 1, Origins{});
}

void DocumentSections::inserted(Cp at, Cp length) {
    runs_[placeOf(at).index].length += length;
    size_ += length;
}

void DocumentSections::replaced(const std::function<Cp(Cp)>& moved) {
    Cp end = 0;
    Cp newStart = 0;
    for (SectionRun& run : runs_) {
        end += run.length;
        const Cp newEnd = moved(end);
        run.length = newEnd - newStart;
        newStart = newEnd;
    }
    size_ = newStart;
}

void DocumentSections::erased(Cp start, Cp end) {
    Place place = placeOf(start);
    Cp left = end - start;
    Cp offset = start - place.start;
    while (left > 0) {
        SectionRun& run = runs_[place.index];
        const Cp taken = std::min(run.length - offset, left);
        const bool losesBreak = offset + taken == run.length && place.index + 1 < runs_.size();
        run.length -= taken;
        left -= taken;
        size_ -= taken;
        if (losesBreak) {
            // What is left of it belongs to the next section, whose headers stay those shown.
            offset = run.length;
            runs_[place.index + 1].length += run.length;
            const auto index = static_cast<std::ptrdiff_t>(place.index);
            for (std::size_t kind = 0; kind < headers_[place.index].size(); ++kind) {
                auto& next = headers_[place.index + 1][kind];
                if (next.empty()) {
                    next = std::move(headers_[place.index][kind]);
                    origins_[place.index + 1][kind] = origins_[place.index][kind];
                }
            }
            runs_.erase(runs_.begin() + index);
            headers_.erase(headers_.begin() + index);
            origins_.erase(origins_.begin() + index);
        }
    }
}

} // namespace qvnd::word
