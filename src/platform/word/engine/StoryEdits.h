#pragma once

#include "platform/word/docfile/document/Story.h"

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace qvnd::word {

// Replacements in a story, collected first and made together in one pass.
class StoryEdits {
public:
    // Right behind the last removal, both become one: there may be one for each character.
    void remove(Cp at, Cp length = 1);
    // New text takes the properties of the first character that it replaces. A replacement that
    // lies within an earlier one, or overlaps its end, counts only where it reaches beyond.
    void replace(Cp at, Cp length, const std::u16string& text);

    bool empty() const { return edits_.empty(); }
    // Makes the edits. moved() then translates positions of the text before them.
    void applyTo(Story& story);
    // Where the position lies after the edits; one within a replaced part lies at its end.
    // Valid after applyTo().
    Cp moved(Cp position) const;

private:
    struct Edit { // small: there may be one for every second character
        Cp at = 0;
        Cp length = 0;
        std::uint32_t text = 0; // its place in texts_
        Cp newEnd = 0;          // of the replacement, after all edits
    };
    Cp lengthOf(const Edit& edit) const { return static_cast<Cp>(texts_[edit.text].size()); }

    void settle();
    const Edit* lastBefore(Cp position) const;
    bool removed(Cp position) const;
    std::u16string editedText(const std::u16string& text) const;

    std::deque<Edit> edits_; // which never takes twice its size while it grows
    std::vector<std::u16string> texts_{u""};
    std::unordered_map<std::u16string, std::uint32_t> textPlaces_{{u"", 0}};
};

} // namespace qvnd::word
