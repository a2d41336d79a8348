#pragma once

#include "platform/word/docfile/DocumentTables.h"
#include "platform/word/docfile/Story.h"

#include <vector>

namespace qvnd::word {

class Drawings;

// A picture that floats over the main story: a shape that shows a picture and nothing else.
struct FloatingPicture {
    Cp at = 0;           // its anchor, U+0008
    DataBlob inlineForm; // the same picture in the same size, as one that stands in a line
};

// The floating pictures of the main story by their anchors (PlcSpaMom), ascending. Pictures in
// groups, shapes with text, and what is damaged are left out.
std::vector<FloatingPicture> readFloatingPictures(ByteView anchors, const Drawings& drawings);

} // namespace qvnd::word
