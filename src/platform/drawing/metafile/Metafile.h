#pragma once

#include "platform/drawing/metafile/VectorPicture.h"
#include "platform/word/docfile/document/DocumentTables.h"

#include <optional>

namespace qvnd::drawing {

// The metafile (EMF or WMF) that a blob of a document holds, as it is cropped. Nothing for a blob
// that holds none, for a metafile whose head is damaged, and for one of which nothing is drawn. A
// record that is damaged ends the picture: what stood before it is shown.
std::optional<VectorPicture> readMetafile(const word::DataBlob& blob);

// The same of the bytes of a metafile. [MS-EMF] 2.3, [MS-WMF] 2.3; records of EMF+ are passed over,
// for files that hold them hold the same drawing in others. Nothing of it grows beyond 256 MB of
// pixels, and all the rest is bounded by the size of the file.
std::optional<VectorPicture> readEmf(word::ByteView file);
// With or without the placeable header.
std::optional<VectorPicture> readWmf(word::ByteView file);

} // namespace qvnd::drawing
