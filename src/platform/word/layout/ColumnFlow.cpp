#include "platform/word/layout/ColumnFlow.h"

#include "platform/word/layout/RowComposer.h"

#include <algorithm>
#include <utility>

namespace qvnd::layout {

namespace {

constexpr double rounding = 1; // twips by which a column may be too full

// Whether a column may end between two strips that follow each other.
bool mayPart(const Strip& above, const Strip& below) {
    if (above.isHeading) {
        return false;
    }
    const bool oneParagraph = above.paragraph == below.paragraph && above.line + 1 == below.line;
    if (!oneParagraph) {
        return !above.keepsWithNext || below.startsPage;
    }
    if (above.keepsLines) {
        return false;
    }
    const bool orphan = below.line == 1;
    const bool widow = below.line + 1 == below.lines;
    return !below.controlsWidows || (!orphan && !widow);
}

} // namespace

void ColumnFlow::begin(double height, bool goesOn, double notesHeight) {
    height_ = height;
    goesOn_ = goesOn;
    used_ = 0;
    notesBefore_ = notesHeight_ = notesHeight;
    strips_.clear();
    notes_.clear();
}

double ColumnFlow::spaceAbove(const Strip& strip) const {
    if (strips_.empty()) {
        return goesOn_ && !strip.startsPage ? 0 : strip.before;
    }
    return gapBetween(strips_.back().strip, strip, addsSpaces_);
}

double ColumnFlow::heightOfNotes(const Strip& strip) const {
    double height = 0;
    for (const std::uint32_t note : strip.notes) {
        height += noteHeight_(note, notesHeight_ + height == 0);
    }
    return height;
}

void ColumnFlow::put(Strip strip) {
    const double y = used_ + spaceAbove(strip);
    notesHeight_ += heightOfNotes(strip);
    notes_.insert(notes_.end(), strip.notes.begin(), strip.notes.end());
    used_ = y + strip.height;
    strips_.push_back({std::move(strip), y});
}

bool ColumnFlow::add(Strip strip, Strips& overflow) {
    overflow.clear();
    if (strips_.empty() && goesOn_ && strip.headings) {
        for (const Strip& heading : *strip.headings) {
            put(heading);
        }
    }
    const double room = height_ - notesHeight_ - heightOfNotes(strip) - used_ - spaceAbove(strip);
    const bool onlyHeadings = std::all_of(strips_.begin(), strips_.end(),
                                          [](const FlowedStrip& s) { return s.strip.isHeading; });
    if (strip.height - strip.spare <= room + rounding) {
        put(std::move(strip));
        return true;
    }
    if (auto parts = partRow(strip, room)) {
        put(std::move(parts->head));
        overflow.push_back(std::move(parts->rest));
        return false;
    }
    if (onlyHeadings) {
        put(std::move(strip)); // higher than the page: it stands there as it is
        return true;
    }
    overflow.push_back(std::move(strip));
    takeBack(overflow);
    return false;
}

// What may not be parted from the overflow goes along, unless nothing would be left.
void ColumnFlow::takeBack(Strips& overflow) {
    std::size_t keep = strips_.size();
    const Strip* below = &overflow.front();
    while (keep > 0 && !mayPart(strips_[keep - 1].strip, *below)) {
        below = &strips_[--keep].strip;
    }
    if (keep == 0) {
        return;
    }
    Strips back;
    for (std::size_t i = keep; i < strips_.size(); ++i) {
        back.push_back(std::move(strips_[i].strip));
    }
    strips_.resize(keep);
    std::move(overflow.begin(), overflow.end(), std::back_inserter(back));
    overflow = std::move(back);
    used_ = strips_.back().y + strips_.back().strip.height;
    notes_.clear();
    notesHeight_ = notesBefore_;
    for (const FlowedStrip& flowed : strips_) {
        notesHeight_ += heightOfNotes(flowed.strip);
        notes_.insert(notes_.end(), flowed.strip.notes.begin(), flowed.strip.notes.end());
    }
}

} // namespace qvnd::layout
