#pragma once

#include "platform/word/docfile/PropertyLists.h"
#include "platform/word/docfile/Story.h"
#include "platform/word/docfile/TablePlaces.h"

#include <optional>
#include <vector>

namespace qvnd::word {

// Puts the texts of text boxes into a story, each right behind the paragraph of its anchor, those
// of one paragraph in the order in which they were added.
// In front of what ends the paragraph: in a table they stay in the cell, their tables nested in it
// (and a row of exact height may grow, lest it hides them), in a section in the section. A field's
// code that goes on over the paragraph's end is not torn apart: they stand behind the paragraph in
// which the field ends.
class TextBoxPlacing {
public:
    // Both must outlive the placing; the story must not change between add() and apply().
    TextBoxPlacing(Story& story, PropertyLists& lists);

    // `text`: whole paragraphs, the last one outside of tables. Answers whether there is a place;
    // without one the text stays out.
    bool add(Cp anchor, Story text);
    // Linear in the story and the texts.
    void apply();
    // Where a position of the story lies after apply().
    Cp moved(Cp position) const;

private:
    struct Box {
        std::size_t paragraph = 0; // behind which it goes
        Story text;
    };
    struct Code { // of a field, over the end of a paragraph
        Cp begin = 0;
        Cp end = 0; // the separator, else the field's end
        Cp fieldEnd = 0;
    };
    struct Insertion {
        Cp at = 0;
        Cp total = 0; // how much was inserted up to and with this one
    };

    void readCodes();
    std::size_t paragraphAt(Cp position) const;
    std::optional<std::size_t> hostOf(Cp anchor);
    std::size_t behindCode(std::size_t paragraph) const;
    bool isEnded(std::size_t paragraph) const;
    TablePlace placeOf(std::size_t paragraph);
    Story joined(std::size_t paragraph);
    void growRow(std::size_t paragraph, int depth);

    Story& story_;
    PropertyLists& lists_;
    TablePlaces places_;
    std::vector<Cp> ends_;    // of the paragraphs
    std::vector<Code> codes_; // by their begins
    std::vector<Box> boxes_;
    std::size_t next_ = 0; // box to place
    std::vector<Insertion> insertions_;
};

} // namespace qvnd::word
