#pragma once

#include "platform/word/docfile/document/Story.h"

#include <string>
#include <vector>

namespace qvnd::word {

// Replacements in a story, collected first and made together in one pass.
class StoryEdits {
public:
    // Right behind the last removal, both become one: there may be one for each character.
    void remove(Cp at, Cp length = 1);
    // New text takes the properties of the first character that it replaces. A replacement that
    // lies within an earlier one, or overlaps its end, counts only where it reaches beyond.
    void replace(Cp at, Cp length, std::u16string text);

    bool empty() const { return edits_.empty(); }
    // Makes the edits. moved() then translates positions of the text before them.
    void applyTo(Story& story);
    // Where the position lies after the edits; one within a replaced part lies at its end.
    // Valid after applyTo().
    Cp moved(Cp position) const;

private:
    struct Edit {
        Cp at = 0;
        Cp length = 0;
        std::u16string text;
        Cp newEnd = 0; // of the replacement, after all edits
    };

    void settle();
    const Edit* lastBefore(Cp position) const;
    bool removed(Cp position) const;

    std::vector<Edit> edits_;
};

} // namespace qvnd::word
