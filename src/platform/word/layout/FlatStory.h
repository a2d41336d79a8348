#pragma once

#include "platform/word/docfile/document/DocumentData.h"

#include <vector>

namespace qvnd::word {

// The main story of a document under work in one piece, for walking through it in order.
struct FlatStory {
    std::u16string text;
    std::vector<CharacterRun> characters;
    // Paragraphs whole again where slices had cut them: style and properties are those of the
    // part that bears the mark.
    std::vector<ParagraphRun> paragraphs;
};

FlatStory flatten(const std::vector<StorySlice>& slices);

} // namespace qvnd::word
