#pragma once

#include "platform/word/docfile/objects/EmbeddedObjects.h"
#include "platform/word/docfile/pictures/Picture.h"

#include <optional>

namespace qvnd::word {

// The picture that an embedded object keeps of itself, as documents of Word 6 to 97 show it: the
// metafile of its stream "\3META", at the size of its stream "\3PIC". Neither is specified
// ([MS-DOC] 2.1.4 names the storage alone); from such files: "\3META" has a head of 8 bytes
// (mapping mode, size in hundredths of millimetres, a handle) before a metafile without the
// placeable header, and "\3PIC" tells at 0x14 the natural size in twips, at 0x2C how it is scaled,
// in tenths of a percent, each as a width and a height of 32 bits. Nothing for an object without a
// metafile, and for one whose metafile shows no area.
std::optional<Picture> pictureOfObject(const EmbeddedObject& object);

} // namespace qvnd::word
