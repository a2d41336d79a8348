#pragma once

#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/layout/LineComposer.h"
#include "platform/word/layout/PageModel.h"
#include "platform/word/layout/StoryReader.h"

#include <cstddef>
#include <span>
#include <vector>

namespace qvnd::layout {

// A character and its position on a line, in twips from the upper left corner of the line's strip.
struct CharacterPlace {
    const TextItem& item;
    double x = 0;
    double foot = 0;     // baseline of the line
    double width = 0;    // including the space added after it
    bool goesOn = false; // appended to the text run of the previous character
    std::size_t run = 1; // of a character that begins a run: the number of its characters
};

// Adds a character, its background and the border around it to the layer of a line.
void addCharacter(const CharacterPlace& place, FontMetrics& fonts, Layer& layer);

// Whether an item is text that goes on in the look of the item before it.
bool continuesText(const TextItem& before, const TextItem& item);
// The number of items, the first one among them, that go on in its text.
std::size_t runOf(std::span<const TextItem> items);

// Gives the characters of each ligature of their face the room of the ligature, in the parts that
// they have of it. Each is painted for itself, so that a reader of a PDF finds the letters.
// Letters with space between them have no ligatures.
void joinLigatures(std::vector<TextItem>& items, FontMetrics& fonts);

// Moves pairs of Latin letters together or apart as their face says, where the text is kerned.
void kern(std::vector<TextItem>& items, FontMetrics& fonts);

// The room behind each item, in twips: that between Chinese and Latin text. Gives characters their
// room on the document grid, and takes the empty half between two full-width punctuation marks side
// by side from the first one where the document compresses them.
std::vector<double> gapsBehind(std::vector<TextItem>& items, const word::ResolvedParagraph& format,
                               const LineSetting& setting);

// Whether a line may break between two adjacent items.
bool mayBreakBetween(const TextItem& before, const TextItem& after,
                     const word::ResolvedParagraph& format);

// Whether a justified line may be stretched between two adjacent items.
bool mayStretchBetween(const TextItem& before, const TextItem& after);

} // namespace qvnd::layout
