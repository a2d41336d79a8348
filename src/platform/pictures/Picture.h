#pragma once

#include "platform/drawing/FontFaces.h"
#include "platform/drawing/metafile/VectorPicture.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

namespace qvnd::pictures {

// A picture of a file: bmp, jpg, gif (its first frame), png, wmf (placeable or plain) or emf, told
// apart by its bytes and not by its name. A metafile is painted anew for each size, so it stays
// sharp. A plain WMF that never says how large its window is shows no area and is none. Needs no
// display.
class Picture {
public:
    Picture() = default;
    // Null when the bytes are no picture of these kinds, or a damaged one.
    static Picture fromData(const QByteArray& bytes);
    // Null also when the file cannot be read, or is longer than `largestFile`.
    static Picture fromFile(const QString& path);
    static constexpr qint64 largestFile = 64 * 1024 * 1024;

    bool isNull() const { return image_.isNull() && !drawing_; }

    // The picture stretched to that many pixels, a metafile on white; null when the picture is null
    // or there is no pixel. Throws RunTimeError (5) where a font cannot be read, and (7) for an
    // image larger than memory allows.
    QImage image(QSize pixels, drawing::FontFaces& fonts) const;

private:
    QImage image_;
    std::optional<drawing::VectorPicture> drawing_;
};

} // namespace qvnd::pictures
