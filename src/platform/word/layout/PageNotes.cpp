#include "platform/word/layout/PageNotes.h"

#include <algorithm>
#include <limits>

namespace qvnd::layout {

namespace {

constexpr double separatorHeight = 200;       // of the line above the notes, twips
constexpr double officeSeparatorHeight = 124; // a tenth of a centimetre above and below it
constexpr double separatorLength = 2880;
constexpr double separatorWidth = 10;

// What a note takes below its last line. In the office suite nothing is kept below it, neither the
// space behind its paragraph nor what a multiple adds to the line.
double belowLast(const Strip& last, const LineSetting& setting) {
    return setting.options.officeLines ? -last.spare : last.after;
}

double separatorOf(const LineSetting& setting) {
    return setting.options.officeLines ? officeSeparatorHeight : separatorHeight;
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
    const double above = first ? separatorOf(setting_) : 0;
    const double whole = heightFrom(strips, 0, std::numeric_limits<double>::max());
    return {above + whole, above + std::min(whole, leastHeightOf(strips, addsSpaces_))};
}

double PageNotes::heightFrom(const Strips& strips, std::size_t from, double most) const {
    double height = 0;
    std::size_t at = from;
    for (; at < strips.size() && height <= most; ++at) {
        height +=
            at > from ? gapBetween(strips[at - 1], strips[at], addsSpaces_) : strips[at].before;
        height += strips[at].height;
    }
    const bool isWhole = from < strips.size() && at == strips.size();
    return isWhole ? height + belowLast(strips.back(), setting_) : height;
}

double PageNotes::heightOf(const std::vector<NotePart>& parts, double most) {
    double height = parts.empty() ? 0 : separatorOf(setting_);
    for (const NotePart& part : parts) {
        const Strips& strips = notes_.strips(part.note, setting_);
        height += heightFrom(strips, part.from, most - height);
        if (height > most) {
            break;
        }
    }
    return height;
}

double PageNotes::heightWithin(const std::vector<NotePart>& parts, double room) {
    constexpr double leastText = 480;
    return std::min(heightOf(parts, room - leastText), room - leastText);
}

std::vector<NotePart> PageNotes::place(std::vector<NotePart> parts, const NoteArea& area,
                                       Layer& layer) {
    std::stable_partition(parts.begin(), parts.end(),
                          [&](const NotePart& part) { return !notes_.isEndnoteAtFoot(part.note); });
    double y = area.top + separatorOf(setting_);
    const double rule = area.top + separatorOf(setting_) / 2;
    layer.rules.push_back({area.left, rule, area.left + separatorLength, rule, separatorWidth, {}});
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
        } else {
            notes_.forget(part.note);
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
