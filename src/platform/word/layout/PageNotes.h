#pragma once

#include "platform/word/layout/ColumnFlow.h"
#include "platform/word/layout/NoteStrips.h"

#include <vector>

namespace qvnd::layout {

// A note from one of its lines on.
struct NotePart {
    std::uint32_t note = 0;
    std::size_t from = 0;
};

// The foot of a page that its notes stand in, the line above them included; twips.
struct NoteArea {
    double left = 0;
    double top = 0;
    double bottom = 0;
};

// The footnotes at the foot of pages of one width. A note that has no room goes on at the foot of
// the next page.
class PageNotes {
public:
    // `notes` must outlive the object. `addsSpaces`: see gapBetween().
    PageNotes(NoteStrips& notes, LineSetting setting, bool addsSpaces)
        : notes_(notes), setting_(std::move(setting)), addsSpaces_(addsSpaces) {}

    // `first`: it stands below the line above the notes.
    NoteRoom roomOf(std::uint32_t note, bool first);
    // The height of all of them with the line above; 0 for none.
    double heightOf(const std::vector<NotePart>& parts);
    // Puts them into the area, at least a line of the first; what has no room comes back.
    std::vector<NotePart> place(const std::vector<NotePart>& parts, const NoteArea& area,
                                Layer& layer);

private:
    struct Range {
        std::size_t from = 0;
        std::size_t end = 0;
    };
    double placeLines(const Strips& strips, Range lines, double x, double y, Layer& layer) const;

    NoteStrips& notes_;
    LineSetting setting_;
    bool addsSpaces_;
};

} // namespace qvnd::layout
