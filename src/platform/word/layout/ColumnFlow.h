#pragma once

#include "platform/word/layout/Strips.h"

#include <functional>
#include <vector>

namespace qvnd::layout {

// A strip in its place in a column.
struct FlowedStrip {
    Strip strip;
    double y = 0; // of its top, from the top of the column's region
};

// Fills one column from top to bottom and finds where it ends: widows, paragraphs and rows that
// stay whole or with what follows them. The notes that strips refer to take their room from the
// column's foot.
class ColumnFlow {
public:
    // The height that a note takes, with what stands above the first of a page.
    using NoteHeight = std::function<double(std::uint32_t note, bool first)>;

    // `addsSpaces`: see gapBetween().
    ColumnFlow(bool addsSpaces, NoteHeight noteHeight)
        : addsSpaces_(addsSpaces), noteHeight_(std::move(noteHeight)) {}

    // An empty column of that height. `goesOn`: with text that did not fit before, so that space
    // above its first strip falls away; `notesHeight`: what notes of columns beside it take.
    void begin(double height, bool goesOn, double notesHeight);

    // Puts a strip below the others. When it does not fit, the column is full: `overflow` gets what
    // the next column begins with, and the answer is false.
    bool add(Strip strip, Strips& overflow);

    // The space that a strip put next would have above it.
    double spaceAbove(const Strip& strip) const;
    bool isEmpty() const { return strips_.empty(); }
    const std::vector<FlowedStrip>& strips() const { return strips_; }
    double used() const { return used_; }
    double notesHeight() const { return notesHeight_; }
    const std::vector<std::uint32_t>& notes() const { return notes_; }

private:
    double heightOfNotes(const Strip& strip) const;
    void put(Strip strip);
    void takeBack(Strips& overflow);

    bool addsSpaces_;
    NoteHeight noteHeight_;
    double height_ = 0;
    bool goesOn_ = false;
    double used_ = 0;
    double notesBefore_ = 0;
    double notesHeight_ = 0;
    std::vector<FlowedStrip> strips_;
    std::vector<std::uint32_t> notes_;
};

} // namespace qvnd::layout
