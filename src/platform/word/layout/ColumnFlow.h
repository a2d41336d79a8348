#pragma once

#include "platform/word/layout/Strips.h"

#include <functional>
#include <utility>
#include <vector>

namespace qvnd::layout {

// A strip and its position in a column.
struct FlowedStrip {
    Strip strip;
    double y = 0; // of its top edge, from the top of the column region
};

// The height of a note at the foot of a page, in twips. For the first note of a page it includes
// the separator line. `least` is the height of the smallest part that must be on the page of the
// note's reference.
struct NoteRoom {
    double whole = 0;
    double least = 0;
};

// Fills one column from top to bottom and determines where it ends. It keeps the rules for widows
// and orphans, for paragraphs and rows that stay together, and for those that stay with the next
// one. Notes that the strips refer to reduce the height of the column.
class ColumnFlow {
public:
    using NoteRooms = std::function<NoteRoom(std::uint32_t note, bool first)>;

    // `addsSpaces`: see gapBetween().
    ColumnFlow(bool addsSpaces, NoteRooms noteRooms)
        : addsSpaces_(addsSpaces), noteRooms_(std::move(noteRooms)) {}

    // Starts an empty column of that height. `goesOn`: it continues text from another column, so
    // the space above its first strip is dropped. `notesHeight`: height of the notes of the columns
    // beside it. `mayStayEmpty`: text stands above the column on its page, so what has no room in
    // it goes to the next page. Other columns take at least one strip.
    void begin(double height, bool goesOn, double notesHeight, bool mayStayEmpty = false);

    // Adds a strip at the bottom. Returns false when the column is full; `overflow` then receives
    // the strips that the next column begins with.
    bool add(Strip strip, Strips& overflow);

    // The space above a strip if it were added next.
    double spaceAbove(const Strip& strip) const;
    bool isEmpty() const { return strips_.empty(); }
    const std::vector<FlowedStrip>& strips() const { return strips_; }
    // The strips of the full column; begin() starts the next one.
    std::vector<FlowedStrip> take() { return std::move(strips_); }
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
    bool mayStayEmpty_ = false;
    double used_ = 0;
    double notesBefore_ = 0;
    double notesHeight_ = 0;
    std::vector<FlowedStrip> strips_;
    std::vector<std::uint32_t> notes_;
};

// Whether a column may end between two adjacent strips.
bool mayPart(const Strip& above, const Strip& below);
// The number of strips from `from` on that fit into that height and after which a column may end.
std::size_t countOfFitting(const Strips& strips, std::size_t from, double room, bool addsSpaces);
std::size_t countOfFitting(const SharedStrips& strips, std::size_t from, double room,
                           bool addsSpaces);

// Balances columns: distributes their strips in order so that the columns are as short as possible.
// Columns are balanced above a continuous section break. `height`: maximum height of a column;
// `goesOn`: see ColumnFlow::begin().
std::vector<std::vector<FlowedStrip>> balanced(const std::vector<std::vector<FlowedStrip>>& columns,
                                               double height, bool goesOn, bool addsSpaces);

// The end of the longest column, including the space below its last strip, which the text of a
// section on the same page keeps.
double lowerEnd(const std::vector<std::vector<FlowedStrip>>& columns);

} // namespace qvnd::layout
