#pragma once

#include "platform/word/layout/PageModel.h"
#include "platform/word/layout/StoryReader.h"

namespace qvnd::layout {

// A character in its place on a line; twips, from the upper left corner of the line's strip.
struct CharacterPlace {
    const TextItem& item;
    double x = 0;
    double foot = 0;     // of the line
    double width = 0;    // with what is added behind it
    bool goesOn = false; // in the text of the character before
};

// Adds a character to a line's layer, with its background.
void addCharacter(const CharacterPlace& place, FontMetrics& fonts, Layer& layer);

} // namespace qvnd::layout
