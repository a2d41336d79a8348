#pragma once

#include "platform/word/docfile/ImageFile.h"

namespace qvnd::word {

// An entry of a picture store with the picture in it (OfficeArtFBSE with OfficeArtBlip,
// [MS-ODRAW] 2.2.32 and 2.2.23), used once.
Bytes encodeBlip(const ImageFile& image);

} // namespace qvnd::word
