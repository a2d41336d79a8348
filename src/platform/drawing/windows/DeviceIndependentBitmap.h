#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <QImage>

namespace qvnd::drawing {

// Pictures of pixels inside a metafile (DeviceIndependentBitmap, [MS-WMF] 2.2.2.9): a header with
// its colour table, and the pixels. A null image for one that is damaged, not known, or claims more
// pixels than it brings.

// Header and pixels apart, as an EMF keeps them.
QImage dibImage(word::ByteView header, word::ByteView pixels);
// The pixels straight behind the colour table, as a WMF keeps them.
QImage packedDibImage(word::ByteView dib);

} // namespace qvnd::drawing
