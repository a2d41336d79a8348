#pragma once

#include "platform/drawing/PagePainter.h"

namespace qvnd::pictures {

// The raster picture (PNG, JPEG, bitmap) that a blob of a document holds, cropped as it says, for
// the painter of pages. Nothing for a metafile, a damaged picture, and one that would take more
// memory than Qt allows to one.
std::optional<drawing::PixelImage> pageImage(const word::DataBlob& blob);

} // namespace qvnd::pictures
