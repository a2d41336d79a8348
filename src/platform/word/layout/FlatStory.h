#pragma once

#include "platform/word/docfile/document/DocumentData.h"

#include <vector>

namespace qvnd::word {

// The main story of a document under work in one piece, for walking through it in order. Paragraphs
// are whole again where slices had cut them: style and properties are those of the part that bears
// the mark.
Story flatten(const std::vector<StorySlice>& slices);

} // namespace qvnd::word
