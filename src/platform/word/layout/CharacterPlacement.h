#pragma once

#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/layout/PageModel.h"
#include "platform/word/layout/StoryReader.h"

namespace qvnd::layout {

// A character and its position on a line, in twips from the upper left corner of the line's strip.
struct CharacterPlace {
    const TextItem& item;
    double x = 0;
    double foot = 0;     // baseline of the line
    double width = 0;    // including the space added after it
    bool goesOn = false; // appended to the text run of the previous character
};

// Adds a character and its background to the layer of a line.
void addCharacter(const CharacterPlace& place, FontMetrics& fonts, Layer& layer);

// Two full-width punctuation marks side by side lose the empty half between them, by which the
// first one becomes narrower.
void compressPair(TextItem& mark, const TextItem& next);

// Whether a line may break between two adjacent items.
bool mayBreakBetween(const TextItem& before, const TextItem& after,
                     const word::ResolvedParagraph& format);

// Whether a justified line may be stretched between two adjacent items.
bool mayStretchBetween(const TextItem& before, const TextItem& after);

// The space between two adjacent characters, one Chinese and one Latin or a digit, in twips; 0
// between others and where the paragraph wants none. `part`: of the smaller font size.
double gapBetweenScripts(const TextItem& a, const TextItem& b,
                         const word::ResolvedParagraph& format, double part);

} // namespace qvnd::layout
