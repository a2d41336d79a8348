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

// What a note takes at the foot of a page, in twips, with what stands above the first of a page:
// all of it, or the least part that may stand on the page of its reference.
struct NoteRoom {
    double whole = 0;
    double least = 0;
};

// Fills one column from top to bottom and finds where it ends: widows, paragraphs and rows that
// stay whole or with what follows them. The notes that strips refer to take their room from the
// column's foot.
class ColumnFlow {
public:
    using NoteRooms = std::function<NoteRoom(std::uint32_t note, bool first)>;

    // `addsSpaces`: see gapBetween().
    ColumnFlow(bool addsSpaces, NoteRooms noteRooms)
        : addsSpaces_(addsSpaces), noteRooms_(std::move(noteRooms)) {}

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
    NoteRoom roomOfNotes(const Strip& strip) const;
    void addNotes(const Strip& strip, double free);
    void put(Strip strip);
    void takeBack(Strips& overflow);

    bool addsSpaces_;
    NoteRooms noteRooms_;
    double height_ = 0;
    bool goesOn_ = false;
    double used_ = 0;
    double notesBefore_ = 0;
    double notesHeight_ = 0;
    std::vector<FlowedStrip> strips_;
    std::vector<std::uint32_t> notes_;
};

// Whether a column may end between two strips that follow each other.
bool mayPart(const Strip& above, const Strip& below);
// How many strips from `from` on have that room and may be parted from the others.
std::size_t countOfFitting(const Strips& strips, std::size_t from, double room, bool addsSpaces);

// The strips of columns, filled from the first to the last one, in columns as low as they can be:
// above what ends a section in the middle of a page, all columns end at about the same height.
// `height`: that they have at most; `goesOn`: as for ColumnFlow::begin().
std::vector<std::vector<FlowedStrip>> balanced(const std::vector<std::vector<FlowedStrip>>& columns,
                                               double height, bool goesOn, bool addsSpaces);

} // namespace qvnd::layout
