#pragma once

#include "platform/word/docfile/pictures/Picture.h"

#include <QImage>

namespace qvnd::pictures {

// The picture in the brightness and contrast in which its document shows it, as a pale one behind
// the text.
QImage lit(const QImage& image, const word::Picture& picture);

} // namespace qvnd::pictures
