#pragma once

#include "platform/word/docfile/pictures/Picture.h"

namespace qvnd::word {

// The picture as a file that other programs read: PNG, JPEG or BMP. Empty for a metafile and for a
// damaged picture.
Bytes pictureFile(const Picture& picture);

// Parts of the whole that are cut off at each side, as the shape's crop properties say ([MS-ODRAW]
// 2.3.23.1 to 2.3.23.4): 0 nothing, at most 0.95.
struct PictureCrop {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    bool operator==(const PictureCrop&) const = default;
};
PictureCrop cropOf(const Picture& picture);

} // namespace qvnd::word
