#pragma once

#include "platform/word/engine/FontChange.h"
#include "platform/word/engine/WorkingStory.h"

#include <string_view>

namespace qvnd::word {

// The insertion point or selection of one story, and what text typed there will look like.
struct Insertion {
    Cp start = 0;
    Cp end = 0;
    bool movesStart = false; // extending moves `start`, else `end`
    PropertyListId typing = PropertyListId::empty;

    bool isPoint() const { return start == end; }
};

// Edits a story at its insertion point. Typing takes the properties of the insertion point; they
// are read anew with every move of it: those of the character in front, at a paragraph's start
// those of the character behind. The story's last paragraph mark is never deleted.
class StoryEditor {
public:
    StoryEditor(WorkingStory& story, DocumentTables& tables, Insertion& insertion)
        : story_(story), tables_(tables), at_(insertion) {}

    void select(Cp start, Cp end);
    void moveLeftExtending();
    void moveRightExtending();

    // A line break in the text ends the paragraph; other control characters but tabs are dropped.
    void typeText(std::u16string_view text);
    // A character that stands for something, with properties made from those of the insertion
    // point, which stay in force behind it.
    void typeCharacter(char16_t character, const PropertyChange& properties);
    // At the end of a paragraph the new one gets the style that follows. A page break in front of
    // the paragraph stays with its first part.
    void typeParagraph();
    // What is typed next begins a new page, in a paragraph of its own. At the very start of the
    // story an empty page stays in front; where a page begins already nothing is added.
    void breakPage();
    // Deletes the selection, or up to `count` characters forward.
    void erase(Cp count);
    // Deletes the selection, whose look is that of what is typed in its place.
    void eraseSelection();

    // On a point the font is that of what is typed next; in an empty paragraph also that of its
    // mark, so that it lasts.
    void changeFont(const FontChange& change);
    // Of all paragraphs that the selection touches.
    void changeParagraphs(const LookChange& change);
    // A paragraph style takes direct formatting away that more than half of a paragraph has
    // (dropCommonLooks()); a character style goes to the selected characters.
    void applyStyle(StyleIndex style);

    // Reads the look of what is typed next from the text.
    void readTyping();

private:
    Cp clamped(Cp position) const { return std::min(position, story_.size()); }
    bool isEmptyParagraph(Cp at) const;
    void typeLine(std::u16string_view line);
    void eraseWhole(Cp start, Cp end);
    void applyParagraphStyle(StyleIndex style);

    WorkingStory& story_;
    DocumentTables& tables_;
    Insertion& at_;
};

} // namespace qvnd::word
