#include "platform/word/layout/ColumnFlow.h"

#include "platform/word/layout/RowComposer.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <optional>
#include <utility>

namespace qvnd::layout {

namespace {

constexpr double rounding = 1; // twips by which a column may be too full

using Columns = std::vector<std::vector<FlowedStrip>>;

// All strips in their order, without heading rows that a later column shows again.
Strips stripsIn(const Columns& columns) {
    Strips strips;
    for (const auto& column : columns) {
        for (const FlowedStrip& flowed : column) {
            const bool isAgain =
                flowed.strip.isHeading && !strips.empty() && flowed.strip.at < strips.back().at;
            if (!isAgain) {
                strips.push_back(flowed.strip);
            }
        }
    }
    return strips;
}

// The strips in so many columns of that height; nothing when they have no room.
std::optional<Columns> inColumns(const Strips& strips, std::size_t count, double height,
                                 bool goesOn, bool addsSpaces) {
    ColumnFlow flow(addsSpaces, [](std::uint32_t, bool) { return NoteRoom{}; });
    flow.begin(height, goesOn, 0);
    Columns columns;
    std::deque<Strip> rest(strips.begin(), strips.end());
    while (!rest.empty()) {
        Strip strip = std::move(rest.front());
        rest.pop_front();
        const bool endsColumn = strip.endsColumn;
        Strips overflow;
        const bool fits = flow.add(std::move(strip), overflow);
        rest.insert(rest.begin(), std::make_move_iterator(overflow.begin()),
                    std::make_move_iterator(overflow.end()));
        const bool isTorn =
            !fits && !flow.isEmpty() && !mayPart(flow.strips().back().strip, rest.front());
        if (flow.used() > height + rounding || columns.size() == count || isTorn) {
            return std::nullopt;
        }
        if (!fits || endsColumn) {
            columns.push_back(flow.take());
            flow.begin(height, true, 0);
        }
    }
    columns.push_back(flow.take());
    return columns.size() <= count ? std::optional(std::move(columns)) : std::nullopt;
}

// Of Strips or SharedStrips.
template <class List>
std::size_t countIn(const List& strips, std::size_t from, double room, bool addsSpaces) {
    double y = 0;
    std::size_t fitting = 0;
    for (std::size_t i = from; i < strips.size(); ++i) {
        y += i > from ? gapBetween(strips[i - 1], strips[i], addsSpaces) : strips[i].before;
        y += strips[i].height;
        if (y - strips[i].spare > room + rounding) {
            break;
        }
        const bool isEnd = i + 1 == strips.size() || mayPart(strips[i], strips[i + 1]);
        fitting = isEnd ? i + 1 - from : fitting;
    }
    return fitting;
}

} // namespace

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

std::size_t countOfFitting(const Strips& strips, std::size_t from, double room, bool addsSpaces) {
    return countIn(strips, from, room, addsSpaces);
}

std::size_t countOfFitting(const SharedStrips& strips, std::size_t from, double room,
                           bool addsSpaces) {
    return countIn(strips, from, room, addsSpaces);
}

void ColumnFlow::begin(double height, bool goesOn, double notesHeight, bool mayStayEmpty) {
    height_ = height;
    mayStayEmpty_ = mayStayEmpty;
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

NoteRoom ColumnFlow::roomOfNotes(const Strip& strip) const {
    NoteRoom sum;
    for (const std::uint32_t note : strip.notes) {
        const NoteRoom room = noteRooms_(note, notesHeight_ + sum.whole == 0);
        sum.least = sum.whole + room.least;
        sum.whole += room.whole;
    }
    return sum;
}

// `free`: below the text. Of the last note only a part may have room.
void ColumnFlow::addNotes(const Strip& strip, double free) {
    const double whole = notesHeight_ + roomOfNotes(strip).whole;
    notesHeight_ = whole <= free + rounding ? whole : std::max(notesHeight_, free);
    notes_.insert(notes_.end(), strip.notes.begin(), strip.notes.end());
}

void ColumnFlow::put(Strip strip) {
    if (strip.lacksContent) {
        strip = completed(std::move(strip));
    }
    const double y = used_ + spaceAbove(strip);
    used_ = y + strip.height;
    addNotes(strip, height_ - used_ + strip.spare);
    strips_.push_back({std::move(strip), y});
}

bool ColumnFlow::add(Strip strip, Strips& overflow) {
    overflow.clear();
    // Headings that leave no room for a row below them are not repeated.
    if (strips_.empty() && goesOn_ && strip.headings &&
        heightOf(*strip.headings, addsSpaces_) < height_) {
        for (Strip heading : *strip.headings) {
            heading.notes.clear(); // they stand on the page of the heading itself
            put(std::move(heading));
        }
    }
    const NoteRoom notes = roomOfNotes(strip);
    const double free = height_ - notesHeight_ - used_ - spaceAbove(strip);
    // Headings stand with the first row that follows them, but not with each other at any price.
    const bool onlyHeadings =
        !mayStayEmpty_ &&
        (strips_.empty() ||
         (!strip.isHeading && std::all_of(strips_.begin(), strips_.end(),
                                          [](const FlowedStrip& s) { return s.strip.isHeading; })));
    if (strip.height - strip.spare <= free - notes.least + rounding) {
        put(std::move(strip));
        return true;
    }
    if (auto parts = partRow(strip, free - notes.whole, onlyHeadings)) {
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

// What may not be parted from the overflow goes along, unless nothing would be left of a column
// that must not stay empty.
void ColumnFlow::takeBack(Strips& overflow) {
    std::size_t keep = strips_.size();
    const Strip* below = &overflow.front();
    while (keep > 0 && !mayPart(strips_[keep - 1].strip, *below)) {
        below = &strips_[--keep].strip;
    }
    if (keep == 0 && !mayStayEmpty_) {
        return;
    }
    Strips back;
    for (std::size_t i = keep; i < strips_.size(); ++i) {
        back.push_back(std::move(strips_[i].strip));
    }
    strips_.resize(keep);
    std::move(overflow.begin(), overflow.end(), std::back_inserter(back));
    overflow = std::move(back);
    const bool isEmpty = strips_.empty();
    used_ = isEmpty ? 0 : strips_.back().y + strips_.back().strip.height;
    notes_.clear();
    notesHeight_ = notesBefore_;
    const double free = height_ - used_ + (isEmpty ? 0 : strips_.back().strip.spare);
    for (const FlowedStrip& flowed : strips_) {
        addNotes(flowed.strip, free);
    }
}

Columns balanced(const Columns& columns, double height, bool goesOn, bool addsSpaces) {
    constexpr double enough = 5; // twips between the lowest columns and those found
    const Strips strips = stripsIn(columns);
    Columns best = columns;
    double tooLow = 0;
    double fits = height;
    while (fits - tooLow > enough) {
        const double tried = (tooLow + fits) / 2;
        if (auto found = inColumns(strips, columns.size(), tried, goesOn, addsSpaces)) {
            best = std::move(*found);
            fits = tried;
        } else {
            tooLow = tried;
        }
    }
    return best;
}

double lowerEnd(const Columns& columns) {
    double end = 0;
    for (const auto& column : columns) {
        if (!column.empty()) {
            const Strip& last = column.back().strip;
            end = std::max(end, column.back().y + last.height + last.after);
        }
    }
    return end;
}

} // namespace qvnd::layout
