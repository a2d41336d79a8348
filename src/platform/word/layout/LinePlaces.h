#pragma once

#include "platform/word/formatting/StyledParagraphs.h"
#include "platform/word/layout/Strips.h"

#include <optional>
#include <vector>

namespace qvnd::layout {

// The page of a line of the main story.
struct LinePlace {
    word::Cp at = 0;   // first character of the line
    int sheet = 0;     // index of the page, from 0
    int number = 1;    // page number by the numbering of the section
    unsigned form = 0; // number form of the section (NFC)
};

// The place of the line that holds a position: the last line that begins no later, else the first
// one; an empty place without lines. `lines` ascend by `at`.
LinePlace placeOf(const std::vector<LinePlace>& lines, word::Cp position);

// Adds the lines of a strip to the text of its page. Heading rows, which are repeated, and notes
// count for none.
void extend(std::optional<word::PageText>& text, const Strip& strip);

// Collects the places of lines while pages are laid out.
class LinePlaces {
public:
    // Adds the lines of a strip, for a row those of its cells, to a page; those of notes are none
    // of the main story. A line that is known stays where it is: pages are laid out again, and
    // heading rows are repeated.
    void add(const Strip& strip, const LinePlace& page);
    // Ascending by their first characters.
    const std::vector<LinePlace>& lines() const { return lines_; }

private:
    std::vector<LinePlace> lines_;
};

} // namespace qvnd::layout
