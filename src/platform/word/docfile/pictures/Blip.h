#pragma once

#include "platform/word/docfile/pictures/ImageFile.h"

namespace qvnd::word {

// An entry of a picture store with the picture in it (OfficeArtFBSE with OfficeArtBlip,
// [MS-ODRAW] 2.2.32 and 2.2.23), used once.
Bytes encodeBlip(const ImageFile& image);

// What such an entry, or a blip by itself, keeps. `data` is a view into it; that of a metafile is
// as it is kept, mostly deflated. The size is not told by either. Nothing for an entry without a
// picture in it, a kind that is not known, and one that is damaged.
struct StoredImage {
    ImageKind kind = ImageKind::png;
    ByteView data;
};
std::optional<StoredImage> decodeBlip(ByteView record);

} // namespace qvnd::word
