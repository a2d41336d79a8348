#pragma once

#include "platform/word/docfile/document/FrameSpot.h"
#include "platform/word/docfile/document/PropertyLists.h"
#include "platform/word/docfile/document/Story.h"

namespace qvnd::word {

// Makes paragraphs, those of tables included, one frame at that spot, which grows with its text.
// A frame belongs to the paragraph behind it.
void putInFrame(Story& text, const FrameSpot& spot, PropertyLists& lists);

} // namespace qvnd::word
