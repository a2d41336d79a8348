#pragma once

#include "platform/word/docfile/document/DocumentData.h"

#include <vector>

namespace qvnd::word {

class Drawings;

// The floating pictures of the main story by their anchors (PlcSpaMom), ascending. Pictures in
// groups, shapes with text, and what is damaged are left out.
std::vector<FloatingPicture> readFloatingPictures(ByteView anchors, const Drawings& drawings);

} // namespace qvnd::word
