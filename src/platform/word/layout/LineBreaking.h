#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/layout/FormatLookup.h"

#include <vector>

namespace qvnd::word {

// A stretch of characters of one size.
struct SizedText {
    const char16_t* text = nullptr;
    Cp length = 0;
    const CharacterSize* size = nullptr;
};

// The heights of the lines that a paragraph takes at `width` (all in twips): at least one line.
// Field codes, hidden text and marks take no room; a picture is as high as it is, no wider than
// the line.
std::vector<int> lineHeights(const std::vector<SizedText>& paragraph, const ParagraphPlace& place,
                             int width);

} // namespace qvnd::word
