#pragma once

#include "platform/word/docfile/document/FrameSpot.h"
#include "platform/word/docfile/document/PropertyLists.h"
#include "platform/word/docfile/document/Story.h"
#include "platform/word/docfile/text/TablePlaces.h"

#include <optional>
#include <vector>

namespace qvnd::word {

// Puts the texts of text boxes into a story, in the order in which they were added: as a frame in
// front of the paragraph of the anchor, where that can be; else as text of its own right behind
// that paragraph.
// No frame can stand in a table, in front of the first paragraph (which may be told to begin a
// page; the second one takes it then), and in a field's code.
// Text stands in front of what ends the paragraph: in a table it stays in the cell, its tables
// nested in it (and a row of exact height may grow, lest it hides them), in a section in the
// section. A field's code that goes on over the paragraph's end is not torn apart: the text stands
// behind the paragraph in which the field ends.
class TextBoxPlacing {
public:
    // Both must outlive the placing; the story must not change between add() and apply().
    TextBoxPlacing(Story& story, PropertyLists& lists);

    enum class Form : std::uint8_t { none, frame, text };

    // `text`: whole paragraphs, the last one outside of tables; without `spot` it is no frame.
    // Form::none: there is no place, and the text stays out.
    Form add(Cp anchor, Story text, const std::optional<FrameSpot>& spot = std::nullopt);
    // Linear in the story and the texts.
    void apply();
    // Where a position of the story lies after apply(): in front of what was put there.
    Cp moved(Cp position) const;

private:
    struct Box {
        std::size_t paragraph = 0; // in front of which a frame goes, behind which text goes
        Form form = Form::text;
        Story text;
    };
    struct Code { // of a field, over the end of a paragraph
        Cp begin = 0;
        Cp end = 0; // the separator, else the field's end
        Cp fieldEnd = 0;
    };
    struct Insertion {
        Cp at = 0;
        Cp total = 0; // how much was put in up to and with this one
    };

    void readCodes();
    template <class Mark>
    void moveMarks(const std::vector<Mark>& marks, std::vector<Mark>& result) const;
    Cp movedCharacter(Cp at) const;
    Cp startOf(std::size_t paragraph) const { return paragraph == 0 ? 0 : ends_[paragraph - 1]; }
    std::size_t paragraphAt(Cp position) const;
    std::optional<std::size_t> hostOf(Cp anchor);
    std::size_t behindCode(std::size_t paragraph) const;
    bool isEnded(std::size_t paragraph) const;
    TablePlace placeOf(std::size_t paragraph);
    std::optional<std::size_t> frameHostOf(Cp anchor, const Story& text);
    bool addText(Cp anchor, Story text);
    Story joined(std::size_t paragraph, Form form);
    void insert(Story& result, Cp at, const Story& text);
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
