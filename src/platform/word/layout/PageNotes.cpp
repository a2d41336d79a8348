#include "platform/word/layout/PageNotes.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

constexpr double separatorHeight = 200; // of the line above the notes, twips
constexpr double separatorLength = 2880;
constexpr double separatorWidth = 10;

// What a note takes below its last line. In the office suite nothing is kept below it, neither the
// space behind its paragraph nor what a multiple adds to the line.
double belowLast(const Strip& last, const LineSetting& setting) {
    return setting.options.officeLines ? -last.spare : last.after;
}

// The height of the first lines that may be parted from the others.
double leastHeightOf(const Strips& strips, bool addsSpaces) {
    double height = 0;
    for (std::size_t i = 0; i < strips.size(); ++i) {
        height += i > 0 ? gapBetween(strips[i - 1], strips[i], addsSpaces) : strips[i].before;
        height += strips[i].height;
        if (i + 1 < strips.size() && mayPart(strips[i], strips[i + 1])) {
            break;
        }
    }
    return height;
}

} // namespace

NoteRoom PageNotes::roomOf(std::uint32_t note, bool first) {
    const Strips& strips = notes_.strips(note, setting_);
    const double above = first ? separatorHeight : 0;
    const double whole = heightFrom(strips, 0);
    return {above + whole, above + std::min(whole, leastHeightOf(strips, addsSpaces_))};
}

// Of the lines from `from` on.
double PageNotes::heightFrom(const Strips& strips, std::size_t from) const {
    if (from >= strips.size()) {
        return 0;
    }
    const Strips rest(strips.begin() + static_cast<std::ptrdiff_t>(from), strips.end());
    const Strip& last = rest.back();
    return layout::heightOf(rest, addsSpaces_) - last.after + belowLast(last, setting_);
}

double PageNotes::heightOf(const std::vector<NotePart>& parts) {
    double height = parts.empty() ? 0 : separatorHeight;
    for (const NotePart& part : parts) {
        const Strips& strips = notes_.strips(part.note, setting_);
        height += heightFrom(strips, part.from);
    }
    return height;
}

std::vector<NotePart> PageNotes::place(const std::vector<NotePart>& parts, const NoteArea& area,
                                       Layer& layer) {
    double y = area.top + separatorHeight;
    const double rule = area.top + separatorHeight / 2;
    layer.rules.push_back(
        {area.left, rule, area.left + separatorLength, rule, separatorWidth, false, {}});
    std::vector<NotePart> carried;
    std::size_t least = 1;
    for (const NotePart& part : parts) {
        const Strips& strips = notes_.strips(part.note, setting_);
        const double room = carried.empty() ? area.bottom - y : 0;
        const std::size_t count = countOfFitting(strips, part.from, room, addsSpaces_);
        const std::size_t end = std::min(strips.size(), part.from + std::max(count, least));
        least = 0;
        y = placeLines(strips, {part.from, end}, area.left, y, layer);
        if (end < strips.size()) {
            carried.push_back({part.note, end});
        }
    }
    return carried;
}

// The place below them.
double PageNotes::placeLines(const Strips& strips, Range lines, double x, double y,
                             Layer& layer) const {
    for (std::size_t i = lines.from; i < lines.end; ++i) {
        y += i > lines.from ? gapBetween(strips[i - 1], strips[i], addsSpaces_) : strips[i].before;
        layer.append(strips[i].layer, x, y);
        y += strips[i].height;
    }
    return lines.end > lines.from ? y + belowLast(strips[lines.end - 1], setting_) : y;
}

} // namespace qvnd::layout
