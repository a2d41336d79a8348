#pragma once

#include "platform/word/layout/ColumnFlow.h"
#include "platform/word/layout/NoteStrips.h"

#include <vector>

namespace qvnd::layout {

// The part of a note from one of its lines on.
struct NotePart {
    std::uint32_t note = 0;
    std::size_t from = 0;
};

// The area of the notes at the foot of a page, including the separator line, in twips.
struct NoteArea {
    double left = 0;
    double top = 0;
    double bottom = 0;
};

// Places footnotes at the foot of pages with columns of one width. A note that does not fit
// continues on the next page.
class PageNotes {
public:
    // `notes` must outlive the object. `addsSpaces`: see gapBetween().
    PageNotes(NoteStrips& notes, LineSetting setting, bool addsSpaces)
        : notes_(notes), setting_(std::move(setting)), addsSpaces_(addsSpaces) {}

    // The height of a note. `first`: it is the first of its page, so the separator line is
    // included.
    NoteRoom roomOf(std::uint32_t note, bool first);
    // The height of all parts including the separator line; 0 without parts. Counting stops above
    // `most`.
    double heightOf(const std::vector<NotePart>& parts, double most);
    // That of parts that go on from the page before, which leave some room to the text of theirs.
    double heightWithin(const std::vector<NotePart>& parts, double room);
    // Places the parts into the area, footnotes above endnotes, at least one line of the first
    // part. Returns the parts that do not fit.
    std::vector<NotePart> place(std::vector<NotePart> parts, const NoteArea& area, Layer& layer);

private:
    struct Range {
        std::size_t from = 0;
        std::size_t end = 0;
    };
    // Of the lines from `from` on. Counting stops above `most`.
    double heightFrom(const Strips& strips, std::size_t from, double most) const;
    double placeLines(const Strips& strips, Range lines, double x, double y, Layer& layer) const;

    NoteStrips& notes_;
    LineSetting setting_;
    bool addsSpaces_;
};

} // namespace qvnd::layout
