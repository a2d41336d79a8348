#pragma once

#include "platform/drawing/PagePainter.h"

namespace qvnd::pictures {

// The raster picture (PNG, JPEG, bitmap) that a blob of a document holds, cropped and lit as it
// says, for the painter of pages. Nothing for a metafile, a damaged picture, and one that would
// take more memory than Qt allows to one.
std::optional<drawing::PixelImage> pageImage(const word::DataBlob& blob);

// The same, no finer than that many dots an inch at the size that the picture says it is shown in:
// for the screen, where a photograph of a camera would be read for nothing.
std::optional<drawing::PixelImage> pageImageAt(const word::DataBlob& blob, int dotsPerInch);

} // namespace qvnd::pictures
